#include "desktop/HostProcess.h"
#include "desktop/ProgramTest.h"
#include "desktop/TaskBar.h"
#include "desktop/WholeFile.h"

// How the program comes up, with and without something to come back to.

namespace {

class StartUp : public ProgramTest {};

// A tree data file: a profile and below it opened folders, each in the one before, or all in the profile.
std::string TreeFileWith(std::int16_t folders, bool nested) {
    const auto number = [](auto value) { return std::string(reinterpret_cast<char*>(&value), sizeof value); };
    const auto text = [&](const std::string& bytes) {
        return number(static_cast<std::uint16_t>(bytes.size())) + bytes;
    };
    const std::int32_t count = folders + 1;
    std::string file = number(count) + number(std::int16_t{1}) + number(count + 1) + number(std::int32_t{0}) +
                       std::string(18, '\0');
    for (std::int16_t folder = 0; folder <= folders; ++folder) {
        const bool top = folder == 0;
        const std::int16_t depth = nested || top ? folder : std::int16_t{1};
        file += text(top ? "P&0&x&0&" : "S&") + text(top ? "Profil" : "Ordner") + number(depth) +
                number(std::int16_t{0}) + number(std::int16_t{8}) + text(top ? "Profile" : "Structure") +
                number(std::int16_t{-1}) + std::string(6, '\0');
    }
    return file;
}

TEST_F(StartUp, FirstStart_ShowsAnEmptyTreeAndMakesNoProfile) {
    nxclip_.Start();
    EXPECT_EQ(nxclip_.Tree().Outline(), L"");
    EXPECT_EQ(nxclip_.List().Count(), 0);
    EXPECT_EQ(nxclip_.Title(), L"<Keine aktive Ablage>");
    EXPECT_FALSE(nxclip_.ToolBar().Enabled(tbbSnap));
    // 1000, 1000, 13,500 x 9,000 twips.
    const RECT place = nxclip_.Main().Rectangle();
    EXPECT_NEAR(place.left, 67, 1);
    EXPECT_NEAR(place.top, 67, 1);
    EXPECT_EQ(place.right - place.left, 900);
    EXPECT_EQ(place.bottom - place.top, 600);
    EXPECT_EQ(nxclip_.Quit(), 0u);
    EXPECT_EQ(ReadSetting(L"Profiles", L"Count"), L"0");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(nxclip_.Directory()))
        EXPECT_FALSE(entry.path().filename() == L"nxclip.nxp") << entry.path();
}

TEST_F(StartUp, FoldersOpenedVeryDeep_AreShownAsFarAsTheControlBears) {
    StartWithProfile();
    nxclip_.Quit();
    WriteWholeFile(nxclip_.ProfileDirectory() / L"nxclip.nxp", TreeFileWith(20'000, true));
    nxclip_.Start();
    const std::size_t opened = nxclip_.Tree().Lines().size();
    EXPECT_GT(opened, 100u);
    EXPECT_LT(opened, 1'000u);
    nxclip_.Tree().Select(L"Profil\\Ordner");
    nxclip_.Tree().Expand(L"Profil", false);
    EXPECT_EQ(nxclip_.Tree().SelectedPath(), L"Profil") << "a closed folder takes the selection";
    WaitFor("its children in the list", [&] { return nxclip_.List().Count() == 1; });
    EXPECT_EQ(nxclip_.Quit(), 0u);
}

// How often the program asks the window server is seen below Wine alone. It must not ask for each item.
TEST_F(StartUp, ManyItems_CostNoQuestionsToTheSystem) {
    const auto questions = [&] {
        const auto figures = FiguresOnHost(nxclip_.Directory().wstring());
        return figures ? figures->systemWrites : 0;
    };
    StartWithProfile();
    nxclip_.Restart();
    nxclip_.Main().Send(WM_NULL);
    const std::uint64_t forNone = questions();
    nxclip_.Quit();
    if (forNone == 0) GTEST_SKIP() << "nobody counts them here";
    constexpr std::int16_t kItems = 5'000;
    WriteWholeFile(nxclip_.ProfileDirectory() / L"nxclip.nxp", TreeFileWith(kItems, false));
    nxclip_.Start();
    nxclip_.Main().Send(WM_NULL);
    EXPECT_EQ(nxclip_.List().Count(), kItems);
    EXPECT_LT(questions(), forNone + kItems);
}

TEST_F(StartUp, SecondInstance_ActivatesTheFirstAndNoStrangersWindow) {
    const TaskBar bar;
    nxclip_.Start();
    // As an icon, once on the task bar and once in the notification area only.
    for (const wchar_t* tray : {L"0", L"1"}) {
        nxclip_.Quit();
        WriteSetting(L"Settings", L"ShowInTray", tray);
        nxclip_.Start();
        nxclip_.Main().Post(WM_SYSCOMMAND, SC_MINIMIZE);
        WaitFor("the icon", [&] { return nxclip_.Main().Minimised(); });
        const HWND stranger = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"NXClip", WS_POPUP | WS_VISIBLE, 0,
                                              0, 50, 50, nullptr, nullptr, nullptr, nullptr);
        EXPECT_EQ(nxclip_.StartSecond()->WaitForEnd(), 0u);
        WaitFor("the first instance in front", [&] {
            return nxclip_.Main().Visible() && !nxclip_.Main().Minimised() &&
                   GetForegroundWindow() == nxclip_.Main().Handle();
        });
        DestroyWindow(stranger);
    }
}

TEST_F(StartUp, Splash_ComesFirstAndClosesByEscape) {
    WriteSetting(L"Settings", L"ShowSplash", L"1");
    nxclip_.Launch();
    const Window splash = nxclip_.WaitForDialog(L"NXClip");
    EXPECT_TRUE(splash.HasStyle(WS_VISIBLE));
    splash.Post(WM_COMMAND, IDCANCEL);
    Driver::WaitUntilGone(splash);
    nxclip_.WaitForMain();
}

}  // namespace
