#include "desktop/ProgramTest.h"

// What the program keeps: profiles, the tree, its place on the screen, its options.

namespace {

class State : public ProgramTest {};

TEST_F(State, NewProfile_IsThereAgainWithItsClips) {
    StartWithProfile();
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

TEST_F(State, ActiveContainer_SurvivesARestart) {
    StartWithProfile();
    MakeFolder(L"Erster");
    nxclip_.Tree().Select(L"Profil");
    MakeFolder(L"Zweiter");
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Erster [Structure]\n  Zweiter [Structure]\n");
    nxclip_.Command(m_activate);
    const std::wstring outline = L"Profil [Profile] open\n  Erster [Structure]\n  Zweiter [Camera]\n";
    nxclip_.WaitForTree(outline);
    nxclip_.Restart();
    EXPECT_EQ(TreeOutline(), outline);
    SnapOf(PrivateOffers());
    EXPECT_EQ(nxclip_.Tree().SelectedPath(), L"Profil\\Zweiter\\Clip");
}

TEST_F(State, List_ShowsTheChildrenOfWhatIsSelected) {
    StartWithProfile();
    SnapOf(PrivateOffers());
    nxclip_.Tree().Select(L"Profil");
    MakeFolder(L"Ordner");
    nxclip_.Tree().Select(L"Profil");
    WaitFor("the profile's children", [&] { return nxclip_.Title() == L"Profil \"Profil\""; });
    EXPECT_EQ(nxclip_.List().Names(), (std::vector<std::wstring>{L"Clip", L"Ordner"}));
    EXPECT_EQ(PictureKey(nxclip_.List().Image(0)), L"Clip");
    EXPECT_EQ(PictureKey(nxclip_.List().Image(1)), L"Structure");
    EXPECT_EQ(nxclip_.StatusBar().Text(), L"2 Element(e)");
    nxclip_.Tree().Select(L"Profil\\Ordner");
    WaitFor("the folder's children", [&] { return nxclip_.Title() == L"Ordner \"Profil\\Ordner\""; });
    EXPECT_EQ(nxclip_.List().Count(), 0);
}

TEST_F(State, Delete_AsksFirstAndTakesTheFileAlong) {
    StartWithProfile();
    SnapOf(PrivateOffers());
    SnapOf({{Private(), "der zweite"}});
    nxclip_.Command(m_edit_delete);
    const Notice question = nxclip_.WaitForNotice();
    EXPECT_EQ(question.title, L"Clip löschen");
    EXPECT_EQ(question.text, L"Wollen Sie wirklich den Clip löschen ?");
    Driver::Answer(question, IDNO);
    EXPECT_EQ(nxclip_.Items().size(), 3u);
    EXPECT_TRUE(std::filesystem::exists(ClipFileAt(2)));

    nxclip_.Command(m_edit_delete);
    nxclip_.AnswerNotice(IDYES);
    WaitFor("the clip to go", [&] { return nxclip_.Items().size() == 2; });
    EXPECT_TRUE(std::filesystem::exists(ClipFileAt(1)));
    EXPECT_FALSE(std::filesystem::exists(ClipFileAt(2)));
    nxclip_.Restart();
    EXPECT_EQ(TreeOutline(), L"Profil [Camera] open\n  Clip [Clip]\n");
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

TEST_F(State, Quit_StoresEveryOption) {
    ClearSettings();
    WriteSetting(L"Settings", L"ShowSplash", L"0");
    WriteSetting(L"Settings", L"Dialog", L"1");
    WriteSetting(L"Settings", L"UserInfo", L"Größe");
    WriteSetting(L"Settings", L"SnapSound", L"-1");
    nxclip_.Start();
    nxclip_.Quit();
    std::map<std::wstring, std::wstring> settings = SettingsOf(L"Settings");
    const std::map<std::wstring, std::wstring> expected = {
        {L"TopWindow", L"0"},        {L"SnapSound", L"0"},
        {L"SoundFile", L""},         {L"EditPropAfterSnap", L"1"},
        {L"IconAfterSnap", L"0"},    {L"ShowInTray", L"1"},
        {L"StartAsIcon", L"0"},      {L"ShowTooltips", L"1"},
        {L"LockEdit", L"0"},         {L"ShowSplash", L"0"},
        {L"UserInfo", L"Größe"},     {L"NewTextMode", L"0"},
        {L"NewMaxLen", L"20"},       {L"SetClipByDblClick", L"1"},
        {L"IconAfterSetClip", L"0"}, {L"SetBeep", L"0"},
        {L"MaxClipSize", L"0"},      {L"ActionUnknownSet", L"1"},
        {L"UnknownFormats", L"5"},   {L"UnknownSet", L"Clip"},
        {L"KeyActivate", L"L"},      {L"ActiveContainer", L"-1"},
        {L"Dialog", L"1"},           {L"MainState", L"0"}};
    for (const auto& [key, value] : expected)
        EXPECT_EQ(Utf8(settings[key]), Utf8(value)) << Utf8(key);
    for (const wchar_t* key : {L"MainLeft", L"MainTop", L"MainWidth", L"MainHeight", L"Splitter"})
        EXPECT_TRUE(settings.contains(key)) << Utf8(key);
    EXPECT_EQ(settings.size(), expected.size() + 5);
}

}  // namespace
