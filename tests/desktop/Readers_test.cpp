#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// What a program that reads the screen to its user can say, and what the keyboard alone can reach.

namespace {

bool IsOneOf(const std::wstring& className, std::initializer_list<const wchar_t*> classes) {
    return std::any_of(classes.begin(), classes.end(), [&](const wchar_t* known) {
        return CompareStringOrdinal(className.c_str(), -1, known, -1, TRUE) == CSTR_EQUAL;
    });
}

bool NamesItself(Window control) {
    return IsOneOf(control.ClassName(), {L"Button", L"NXClipPicture"});
}

bool TakesInput(Window control) {
    if (control.ClassName() == L"Button") return (control.HasStyle(BS_GROUPBOX)) == 0;
    return IsOneOf(control.ClassName(),
                   {L"Edit", L"ListBox", L"ComboBox", L"SysListView32", L"SysTreeView32", L"SysTabControl32",
                    L"RICHEDIT50W", L"RichEdit20W", L"NXClipPicture"});
}

// By the system's rule: buttons by their text, all others by the static text directly before them.
std::wstring NameOf(Window control) {
    if (NamesItself(control)) return control.Text();
    const Window before(GetWindow(control.Handle(), GW_HWNDPREV));
    return before && before.ClassName() == L"Static" ? before.Text() : L"";
}

class Readers : public ProgramTest {
 protected:
    static void ExpectNames(Window window, const std::string& title) {
        for (const Window control : window.Descendants()) {
            if (!TakesInput(control)) continue;
            const std::string name = Utf8(NameOf(control));
            std::printf("%-28s %-16s %5d  %s\n", title.c_str(), Utf8(control.ClassName()).c_str(),
                        control.Number(), name.c_str());
            EXPECT_NE(name, "") << title << ": " << Utf8(control.ClassName()) << " " << control.Number();
        }
    }
    Window Opened(const wchar_t* title) {
        const Window dialog = nxclip_.WaitForDialog(title);
        ExpectNames(dialog, Utf8(title));
        return dialog;
    }
    static void Close(Window dialog) {
        dialog.Close();
        Driver::WaitUntilGone(dialog);
    }
    HWND Focus() const { return nxclip_.Main().Thread().hwndFocus; }
};

TEST_F(Readers, EveryControl_HasName) {
    StartWithProfile();
    SnapOf({{CF_UNICODETEXT, std::string("a\0\0\0", 4)}, {FormatNumber(L"Rich Text Format"), "{\\rtf1 x}"}});
    for (const int tab : {1, 2, 0})
        nxclip_.FormatTab().Select(tab);
    ExpectNames(nxclip_.Main(), "NXClip");
    const std::vector<std::wstring> buttons = nxclip_.ToolBar().Texts();
    EXPECT_EQ(buttons.size(), 14u);
    EXPECT_EQ(std::count(buttons.begin(), buttons.end(), L""), 0);
    EXPECT_EQ(nxclip_.FormatTab().Names(), (std::vector<std::wstring>{L"Text", L"RTF", L"Bild (leer)"}));

    const std::pair<int, const wchar_t*> dialogs[] = {
        {mnuViewOptions, L"Optionen"},
        {mnuFileProperties, L"Clip-Eigenschaften"},
        {m_edit_newstruct, L"Ordner-Eigenschaften"},
        {m_importProfil, L"Profil importieren"},
        {m_search, L"Suchen"},
        {m_quickstart, L"Norvale - Der Manger für die Zwischenablage"},
        {m_ext_diag, L"Clipboard Diagnose"},
        {m_ext_fa, L"Formatabfragen"},
        {mnuHelpAbout, L"Info zu NXClip"},
    };
    for (const auto& [command, title] : dialogs) {
        nxclip_.Command(command);
        Close(Opened(title));
    }
    nxclip_.Command(m_extra_fs);
    const Window sets = Opened(L"Formatsätze");
    sets.Press(cbChange);
    Close(Opened(L"Formatsatznamen ändern"));
    Close(sets);
    nxclip_.Command(mnuFileNew);
    const Window profile = Opened(L"Neue Profil");
    profile.Press(cbDir);
    const Window directories = Opened(L"Verzeichnis auswählen");
    directories.Press(cbNew);
    Close(Opened(L"Neues Verzeichnis"));
    Close(directories);
    profile.Press(cb_template);
    Close(Opened(L"Profil-Vorlagen"));
    Close(profile);
}

TEST_F(Readers, ToolBar_IsReachedAndPressedByKeys) {
    StartWithProfile();
    BringToFront(nxclip_.Main());
    const HWND tree = nxclip_.Tree().window().Handle();
    WaitFor("the tree to have the keyboard", [&] { return Focus() == tree; });
    const bool before = nxclip_.ToolBar().Pressed(tbbAutoDetect);
    PressKeys({VK_SHIFT, VK_F6});
    WaitFor("the tool bar to have the keyboard",
            [&] { return Focus() == nxclip_.Main().Control(tbToolBar).Handle(); });
    PressKeys({VK_LEFT});  // round, to the last one
    PressKeys({VK_SPACE});
    WaitFor("the button", [&] { return nxclip_.ToolBar().Pressed(tbbAutoDetect) != before; });
    WaitFor("the tree to have the keyboard again", [&] { return Focus() == tree; });
    for (const int pane : {imgSplitter, lvListView}) {
        PressKeys({VK_F6});
        WaitFor("the next pane to have the keyboard",
                [&] { return Focus() == nxclip_.Main().Control(pane).Handle(); });
    }
}

}  // namespace
