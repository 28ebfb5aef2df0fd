#include <windows.h>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// Every dialog by the keyboard alone, and what it leaves behind in tree, files and settings.

namespace {

// The font of messages and dialogs in another height, in pixels of the screen.
class SystemFontScope {
 public:
    explicit SystemFontScope(LONG height) {
        before_.cbSize = sizeof before_;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof before_, &before_, 0);
        NONCLIENTMETRICSW changed = before_;
        changed.lfMessageFont.lfHeight = height;
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof changed, &changed, SPIF_UPDATEINIFILE);
    }
    ~SystemFontScope() {
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof before_, &before_, SPIF_UPDATEINIFILE);
    }
    SystemFontScope(const SystemFontScope&) = delete;
    SystemFontScope& operator=(const SystemFontScope&) = delete;

 private:
    NONCLIENTMETRICSW before_{};
};

class Dialogs : public ProgramTest {
 protected:
    // Opens a dialog by its command and waits until it has the keyboard.
    Window Open(int command, std::wstring_view title) {
        BringToFront(nxclip_.Main());
        nxclip_.Command(command);
        return InFront(title);
    }
    Window InFront(std::wstring_view title) {
        const Window dialog = nxclip_.WaitForDialog(title);
        BringToFront(dialog);
        return dialog;
    }
    static void Press(WORD key) { PressKeys({key}); }
    static void PressAlt(WORD key) { PressKeys({VK_MENU, key}); }
    static void Confirm(Window dialog) {
        Press(VK_RETURN);
        Driver::WaitUntilGone(dialog);
    }
    static void Cancel(Window dialog) {
        Press(VK_ESCAPE);
        Driver::WaitUntilGone(dialog);
    }
};

TEST_F(Dialogs, Options_AreAppliedAndKept) {
    StartWithProfile();
    const Window options = Open(mnuViewOptions, L"Optionen");
    PressKeys({VK_CONTROL, VK_TAB});  // to the page "Clipboard"
    WaitFor("the second page", [&] { return options.Control(chkAutoSnap).Visible(); });
    Press(VK_SPACE);
    WaitFor("the check mark", [&] { return options.Checked(chkAutoSnap); });
    PressAlt('M');
    Type(L"12a34");
    WaitFor("digits only", [&] { return options.TextOf(tbClipLen) == L"1234"; });
    const Window textLen = options.Control(tbTextLen);
    textLen.Send(EM_SETSEL, 0, -1);
    for (const auto& [pasted, then] : {std::pair{"1234", L"20"}, {"1x", L"20"}, {"123", L"123"}}) {
        PutFormats({{CF_TEXT, std::string(pasted) + '\0'}});
        textLen.Send(WM_PASTE);
        EXPECT_EQ(textLen.Text(), then) << pasted;
    }
    Confirm(options);
    EXPECT_TRUE(nxclip_.ToolBar().Pressed(tbbAutoDetect));

    const Window again = Open(mnuViewOptions, L"Optionen");
    PressAlt('S');
    WaitFor("the lock", [&] { return again.Checked(chkLock); });
    Cancel(again);
    EXPECT_FALSE(nxclip_.ToolBar().Pressed(tbbLock)) << "cancelled";

    EXPECT_EQ(nxclip_.Quit(), 0u);
    EXPECT_EQ(ReadSetting(L"Settings", L"MaxClipSize"), L"1234");
    EXPECT_EQ(ReadSetting(L"Settings", L"LockEdit"), L"0");
}

TEST_F(Dialogs, Profile_HiddenAndImportedAgain) {
    StartWithProfile();
    MakeFolder(L"Ordner");
    nxclip_.Tree().Select(L"Profil");
    nxclip_.Command(m_PP_UnlinkProfil);
    EXPECT_EQ(nxclip_.AnswerNotice(IDYES), L"Wollen Sie wirklich das Profil ausblenden (nicht löschen) ?");
    nxclip_.WaitForTree(L"");
    EXPECT_EQ(nxclip_.Title(), L"<Keine aktive Ablage>");

    const Window chooser = Open(m_importProfil, L"Profil importieren");
    Press(VK_RETURN);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"Wählen Sie bitte eine Datei aus.");
    BringToFront(chooser);
    PressAlt('P');
    Type(L"\"C:\\gibt es nicht\"");
    Press(VK_RETURN);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"\"C:\\gibt es nicht\" gibt es nicht, oder es ist nicht erreichbar.");
    BringToFront(chooser);
    Type(nxclip_.Directory().wstring());
    Press(VK_RETURN);
    WaitFor("the directory", [&] { return chooser.TextOf(tbDir) == nxclip_.Directory().wstring(); });
    // By its first letters, however deep it stands.
    PressAlt('V');
    Type(L"p");
    Press(VK_RIGHT);
    WaitFor("the profile's file", [&] { return ListBoxLines(chooser.Control(lstFile)).size() == 1; });
    Confirm(chooser);
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Ordner [Structure]\n");

    nxclip_.Command(mnuFileProperties);
    const Window properties = InFront(L"Profil-Eigenschaften");
    EXPECT_EQ(properties.TextOf(lbStructCount), L"1 Ordner");
    EXPECT_FALSE(properties.Control(cbDir).Enabled());
    Cancel(properties);
}

TEST_F(Dialogs, NewProfile_FromATemplateInANewDirectory) {
    nxclip_.Start();
    const Window profile = Open(mnuFileNew, L"Neue Profil");
    Type(L"Aus Vorlage");
    Press(VK_TAB);
    Type(L"abc");  // not a full path, and none of a drive either
    Press(VK_TAB);
    Press(VK_SPACE);
    const Window directories = InFront(L"Verzeichnis auswählen");
    // What is highlighted is opened by Enter; until then the list's path stays, and with it what "Neu" works
    // in.
    const std::wstring program = directories.TextOf(tbDir);
    PressAlt('V');
    Press(VK_DOWN);
    Press(VK_RETURN);
    WaitFor("the directory to open", [&] { return directories.TextOf(tbDir) != program; });
    Press(VK_UP);
    EXPECT_NE(directories.TextOf(tbDir), program) << "only highlighted";
    Press(VK_RETURN);
    WaitFor("the way back up", [&] { return directories.TextOf(tbDir) == program; });
    Press(VK_DOWN);
    PressAlt('N');
    const Window name = InFront(L"Neues Verzeichnis");
    // What reaches the dialogs below it must not take them away from under it.
    for (const Window below : {profile, directories}) {
        below.Close();
        below.Press(cb_cancel);
    }
    Type(L"Vorlagenprofil");
    Confirm(name);
    BringToFront(directories);
    WaitFor("the new directory", [&] { return directories.TextOf(tbDir) == program + L"\\Vorlagenprofil"; });
    Confirm(directories);
    BringToFront(profile);
    EXPECT_TRUE(profile.TextOf(tbDir).ends_with(L"Vorlagenprofil"));

    Press(VK_TAB);
    Press(VK_TAB);
    Press(VK_SPACE);
    const Window templates = InFront(L"Profil-Vorlagen");
    EXPECT_EQ(templates.TextOf(lbName), L"Entwicklung");
    Press(VK_DOWN);
    WaitFor("the next template's preview", [&] { return templates.TextOf(lbName) == L"Handbuch"; });
    Confirm(templates);
    BringToFront(profile);
    EXPECT_EQ(profile.TextOf(tbTemplate), L"Handbuch.nxp");
    PressAlt('N');  // away from the button, which Enter would press again
    Confirm(profile);
    WaitFor("the profile", [&] { return nxclip_.Tree().SelectedPath() == L"Aus Vorlage"; });
    EXPECT_GT(nxclip_.List().Count(), 0) << "the template's folders";
    EXPECT_TRUE(std::filesystem::exists(nxclip_.Directory() / L"Vorlagenprofil" / L"nxclip.nxp"));
}

// Large letters stand for a small screen: the dialogs have to become smaller than the letters want.
TEST_F(Dialogs, EveryDialog_IsSeenWhole) {
    const SystemFontScope large(-40);
    StartWithProfile();
    const RECT screen = Window(GetDesktopWindow()).Rectangle();
    const std::pair<int, const wchar_t*> dialogs[] = {
        {mnuViewOptions, L"Optionen"},
        {mnuFileNew, L"Neue Profil"},
        {mnuFileProperties, L"Profil-Eigenschaften"},
        {m_edit_newstruct, L"Ordner-Eigenschaften"},
        {m_importProfil, L"Profil importieren"},
        {m_extra_fs, L"Formatsätze"},
        {m_search, L"Suchen"},
        {m_quickstart, L"Norvale - Der Manger für die Zwischenablage"},
        {m_ext_diag, L"Clipboard Diagnose"},
        {m_ext_fa, L"Formatabfragen"},
        {mnuHelpAbout, L"Info zu NXClip"},
    };
    for (const auto& [command, title] : dialogs) {
        nxclip_.Command(command);
        const Window dialog = nxclip_.WaitForDialog(title);
        const RECT place = dialog.Rectangle();
        RECT seen;
        IntersectRect(&seen, &place, &screen);
        EXPECT_TRUE(EqualRect(&seen, &place)) << Utf8(title);
        dialog.Close();
        Driver::WaitUntilGone(dialog);
    }
}

}  // namespace
