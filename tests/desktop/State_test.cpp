#include "desktop/Input.h"
#include "desktop/ProgramTest.h"
#include "desktop/TaskBar.h"

// What the program keeps: profiles, the tree, its place on the screen, its options.

namespace {

class State : public ProgramTest {};

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

TEST_F(State, Killed_ForgetsNothingThatLeadsToTheClips) {
    StartWithProfile();
    MakeFolder(L"Ordner");
    nxclip_.Command(m_struct_active);
    nxclip_.Command(mnuViewOptions);
    const Window options = nxclip_.WaitForDialog(L"Optionen");
    options.SetText(tbInfo, L"Merke");
    options.Press(cb_ok);
    Driver::WaitUntilGone(options);
    SetWindowPos(nxclip_.Main().Handle(), nullptr, 120, 80, 640, 480, SWP_NOZORDER);
    // Both have rested then.
    WaitFor("the place to be stored", [] { return ReadSetting(L"Settings", L"MainLeft") == L"1800"; });
    WaitFor("the container to be stored",
            [] { return ReadSetting(L"Settings", L"ActiveContainer") == L"2"; });
    nxclip_.Program().Terminate();
    nxclip_.Start();
    nxclip_.WaitForTree(L"Profil [Profile] open\n  Ordner [Camera]\n");
    EXPECT_EQ(ReadSetting(L"Settings", L"UserInfo"), L"Merke");
}

TEST_F(State, SessionEnd_EndsAnOpenMenuAndTheProcess) {
    StartWithProfile();
    BringToFront(nxclip_.Main());
    RightClick(nxclip_.Tree().PlaceOf(L"Profil"));
    nxclip_.WaitForPopUpMenu();
    nxclip_.Main().Post(WM_ENDSESSION, TRUE);
    EXPECT_EQ(nxclip_.Program().WaitForEnd(), 0u) << "an invisible one would let no other start";
}

// The system ends the process when the message has been answered, though the mouse still holds the splitter.
TEST_F(State, SessionEnd_IsAnsweredWhenEverythingIsStored) {
    StartWithProfile();
    SetWindowPos(nxclip_.Main().Handle(), nullptr, 120, 80, 640, 480, SWP_NOZORDER);
    nxclip_.Main().Control(imgSplitter).Send(WM_LBUTTONDOWN, MK_LBUTTON);
    nxclip_.Main().Send(WM_ENDSESSION, TRUE);
    nxclip_.Program().Terminate();
    EXPECT_EQ(ReadSetting(L"Settings", L"MainLeft"), L"1800");
}

TEST_F(State, SessionEnd_DuringAQuestionOfTheLoadAnswersNothing) {
    StartWithProfile();
    nxclip_.Quit();
    WriteSetting(L"Profiles", L"Count", L"2");
    WriteSetting(L"Profiles", L"Name2", L"Weg");
    WriteSetting(L"Profiles", L"File2", (nxclip_.Directory() / L"weg").wstring());
    nxclip_.Launch();
    const Window question = nxclip_.WaitForDialog(L"Profil nicht gefunden");
    // The main window has no title yet.
    const Window main(GetWindow(question.Handle(), GW_OWNER));
    EXPECT_NE(main.Send(WM_QUERYENDSESSION), 0);
    main.Send(WM_ENDSESSION, TRUE);
    ASSERT_TRUE(IsWindow(question.Handle()));
    question.Press(cbTakeOut);
    EXPECT_EQ(nxclip_.Program().WaitForEnd(), 0u);
    EXPECT_EQ(ReadSetting(L"Profiles", L"Count"), L"1");
    EXPECT_EQ(ReadSetting(L"Profiles", L"Name1"), L"Profil");
}

TEST_F(State, View_ComesBackAndTheKeyboardGoesRoundIt) {
    StartWithList();
    nxclip_.Command(mnuListViewPreview);
    nxclip_.Command(mnuViewStatusBar);
    constexpr int kNameWidth = 123;
    nxclip_.List().window().Send(LVM_SETCOLUMNWIDTH, 0, kNameWidth);
    const auto nameWidth = [&] { return nxclip_.List().window().Send(LVM_GETCOLUMNWIDTH, 0); };
    nxclip_.Restart();
    WaitFor("the list", [&] { return nxclip_.List().Count() == 3; });
    EXPECT_EQ(nameWidth(), kNameWidth);
    EXPECT_FALSE(nxclip_.StatusBar().window().Visible());
    nxclip_.Command(mnuListViewSmall);
    nxclip_.Restart();
    WaitFor("the mode", [&] { return nxclip_.List().Mode() == LV_VIEW_SMALLICON; });

    BringToFront(nxclip_.Main());
    const int left = nxclip_.Main().Control(imgSplitter).Rectangle().left;
    for (const int pane : {imgSplitter, lvListView}) {
        PressKeys({VK_F6});
        WaitFor("the next pane", [&] { return Focus().Number() == pane; });
    }
    PressKeys({VK_SHIFT, VK_F6});
    WaitFor("the pane before", [&] { return Focus().Number() == imgSplitter; });
    PressKeys({VK_RIGHT});
    WaitFor("the splitter to move",
            [&] { return nxclip_.Main().Control(imgSplitter).Rectangle().left > left; });
}

}  // namespace
