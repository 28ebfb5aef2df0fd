#include "desktop/ProgramTest.h"
#include "desktop/TaskBar.h"

// What the program keeps: profiles, the tree, its place on the screen, its options.

namespace {

class State : public ProgramTest {};

TEST_F(State, NewProfile_IsThereAgainWithItsClips) {
    StartWithProfile();
    nxclip_.WaitForStatus(L"Aktive Ablage: Profil");
    SnapOf(PrivateOffers());
    nxclip_.Tree().Select(L"Profil");
    MakeFolder(L"Ordner");
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Clip [Clip]\n  Ordner [Structure]\n");
    nxclip_.Restart();
    EXPECT_EQ(TreeOutline(), L"Profil [Camera] open\n  Clip [Clip]\n  Ordner [Structure]\n");
    nxclip_.Tree().Select(L"Profil\\Clip");
    WaitFor("the formats", [&] { return nxclip_.List().Count() == 2; });
    EXPECT_EQ(nxclip_.List().Names(),
              (std::vector<std::wstring>{L"NXClip Desktop Test", L"Rich Text Format"}));
    // The next clip gets the next number, not the first one's file.
    SnapOf({{Private(), "der zweite"}});
    EXPECT_EQ(ReadClipFile(ClipFileAt(2)).front().bytes, "der zweite");
}

TEST_F(State, Geometry_ComesBackAsItWas) {
    WriteSetting(L"Settings", L"ShowInTray", L"0");
    nxclip_.Start();
    SetWindowPos(nxclip_.Main().Handle(), nullptr, 120, 80, 640, 480, SWP_NOZORDER | SWP_NOACTIVATE);
    const RECT place = nxclip_.Main().Rectangle();
    EXPECT_EQ(place.left, 120);
    EXPECT_EQ(place.right - place.left, 640);
    const RECT tree = nxclip_.Tree().window().Rectangle();
    nxclip_.Quit();
    // 15 twips a pixel at 96 dpi.
    EXPECT_EQ(ReadSetting(L"Settings", L"MainLeft"), L"1800");
    EXPECT_EQ(ReadSetting(L"Settings", L"MainTop"), L"1200");
    EXPECT_EQ(ReadSetting(L"Settings", L"MainWidth"), L"9600");
    EXPECT_EQ(ReadSetting(L"Settings", L"MainHeight"), L"7200");
    EXPECT_EQ(ReadSetting(L"Settings", L"MainState"), L"0");

    nxclip_.Start();
    const RECT again = nxclip_.Main().Rectangle();
    EXPECT_TRUE(EqualRect(&place, &again));
    const RECT treeAgain = nxclip_.Tree().window().Rectangle();
    EXPECT_TRUE(EqualRect(&tree, &treeAgain));

    // As an icon it keeps what was stored last, the splitter excepted.
    WriteSetting(L"Settings", L"MainLeft", L"4711");
    WriteSetting(L"Settings", L"Splitter", L"1");
    nxclip_.Main().Post(WM_SYSCOMMAND, SC_MINIMIZE);
    WaitFor("the icon", [&] { return nxclip_.Main().Minimised(); });
    nxclip_.Quit();
    EXPECT_EQ(ReadSetting(L"Settings", L"MainLeft"), L"4711");
    EXPECT_NE(ReadSetting(L"Settings", L"Splitter"), L"1");
}

TEST_F(State, Maximised_ComesBackToItsPlaceAlsoFromTheIcon) {
    WriteSetting(L"Settings", L"ShowInTray", L"0");
    for (const auto& [key, value] :
         {std::pair{L"MainLeft", L"1800"}, std::pair{L"MainTop", L"1200"}, std::pair{L"MainWidth", L"9600"},
          std::pair{L"MainHeight", L"7200"}, std::pair{L"MainState", L"2"}})
        WriteSetting(L"Settings", key, value);
    nxclip_.Start();
    const HWND main = nxclip_.Main().Handle();
    WaitFor("the whole screen", [&] { return IsZoomed(main) != 0; });
    nxclip_.Quit();
    WriteSetting(L"Settings", L"StartAsIcon", L"1");
    nxclip_.Start();
    const HWND icon = nxclip_.Main().Handle();
    WaitFor("the icon", [&] { return nxclip_.Main().Minimised(); });
    nxclip_.Command(m_tray_restore);
    WaitFor("the whole screen", [&] { return IsZoomed(icon) != 0; });
    ShowWindow(icon, SW_RESTORE);
    WaitFor("the normal place", [&] { return IsZoomed(icon) == 0; });
    const RECT place = nxclip_.Main().Rectangle();
    EXPECT_EQ(place.left, 120);
    EXPECT_EQ(place.top, 80);
    EXPECT_EQ(place.right - place.left, 640);
    nxclip_.Main().Post(WM_SYSCOMMAND, SC_MAXIMIZE);
    WaitFor("the whole screen", [&] { return IsZoomed(icon) != 0; });
    nxclip_.Quit();
    EXPECT_EQ(ReadSetting(L"Settings", L"MainState"), L"2");
    EXPECT_EQ(ReadSetting(L"Settings", L"MainLeft"), L"1800");
    EXPECT_EQ(ReadSetting(L"Settings", L"MainWidth"), L"9600");
}

TEST_F(State, Tray_WindowHidesBehindAnIconOnlyAndTheIconTellsTheState) {
    TaskBar bar(false);
    if (!bar.CanBeLookedInto()) GTEST_SKIP() << "the desktop has a task bar of its own";
    WriteSetting(L"Settings", L"StartAsIcon", L"1");
    nxclip_.Start();
    WaitFor("another try", [&] { return bar.refused > 2; });
    EXPECT_TRUE(nxclip_.Main().Visible()) << "nothing else leads to it";
    bar.takes = true;
    WaitFor("the window to hide", [&] { return !nxclip_.Main().Visible(); });
    EXPECT_EQ(bar.tip, L"NXClip - automatische Erfassung aus");

    nxclip_.Command(m_tray_restore);
    nxclip_.SetAutoDetect(true);
    WaitFor("its tip", [&] { return bar.tip == L"NXClip - automatische Erfassung ein"; });
    nxclip_.Command(mnuViewOptions);
    const Window options = nxclip_.WaitForDialog(L"Optionen");
    WaitFor("its tip", [&] { return bar.tip == L"NXClip - Erfassung wartet auf ein offenes Fenster"; });
    options.Press(cb_cancel);
    Driver::WaitUntilGone(options);
    nxclip_.ToolBar().Click(tbbLock);
    WaitFor("its tip", [&] { return bar.tip == L"NXClip - Erfassung gesperrt"; });
}

TEST_F(State, IconAfterSnap_LeavesAHiddenWindowHidden) {
    const TaskBar bar;
    WriteSetting(L"Settings", L"IconAfterSnap", L"1");
    StartWithProfile();
    ShowWindow(nxclip_.Main().Handle(), SW_MINIMIZE);
    WaitFor("the window to hide", [&] { return !nxclip_.Main().Visible(); });
    SnapOf(PrivateOffers());
    nxclip_.Main().Send(WM_NULL);
    EXPECT_FALSE(nxclip_.Main().Visible());
}

}  // namespace
