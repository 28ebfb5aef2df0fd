#include <algorithm>

#include <richedit.h>
#include <windows.h>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// Menus, keys and the mouse: what is offered, and that it arrives.

namespace {

class Commands : public ProgramTest {
 protected:
    // The profile "Profil" with the folder "Ordner" and a clip.
    void StartWithTree() {
        StartWithProfile();
        MakeFolder(L"Ordner");
        nxclip_.Tree().Select(L"Profil");
        SnapOf(PrivateOffers());
        nxclip_.WaitForTree(L"Profil [Camera] open\n  Ordner [Structure]\n  Clip [Clip]\n");
    }
    // Whether the rich text box shows a character bold.
    bool IsBold(LPARAM place) {
        const Window box = nxclip_.Main().Control(tbPreviewRtf);
        box.Send(EM_SETSEL, static_cast<WPARAM>(place), place + 1);
        RemoteMemory memory(box, sizeof(CHARFORMATW));
        CHARFORMATW format{};
        format.cbSize = sizeof format;
        memory.Put(format);
        box.Send(EM_GETCHARFORMAT, SCF_SELECTION, memory.Parameter());
        return (memory.Get<CHARFORMATW>().dwEffects & CFE_BOLD) != 0;
    }
    // Types a name into the edit that is open in the tree and returns what stood there before.
    std::wstring TypeName(const std::wstring& name) {
        const auto edit = [&] {
            return Window(reinterpret_cast<HWND>(nxclip_.Tree().window().Send(TVM_GETEDITCONTROL)));
        };
        const Window opened = WaitFor("the name to edit", edit);
        const std::wstring before = opened.Text();
        opened.Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
        PressKeys({VK_RETURN});
        WaitFor("the edit to close", [&] { return edit() != opened; });
        return before;
    }
    std::wstring Rename(const std::wstring& name) {
        PressKeys({VK_F2});
        return TypeName(name);
    }
    bool MenuEnabled(int number) { return nxclip_.Menu(number).enabled; }
    // The first entry of the context menu that a right click opens; the menu is closed again.
    int FirstEntryAt(POINT place) {
        BringToFront(nxclip_.Main());
        RightClick(place);
        const Window menu = WaitForPopUpMenu(nxclip_.Program().Id());
        const std::vector<MenuEntry> entries = MenuEntries(menu);
        PressKeys({VK_ESCAPE});
        Driver::WaitUntilGone(menu);
        return entries.empty() ? 0 : entries.front().number;
    }
};

TEST_F(Commands, Menus_OfferWhatFitsTheSelection) {
    StartWithTree();
    EXPECT_TRUE(MenuEnabled(m_copyToClipboard));
    EXPECT_TRUE(MenuEnabled(m_edit_delete));
    EXPECT_FALSE(MenuEnabled(m_activate));
    EXPECT_TRUE(nxclip_.ToolBar().Enabled(tbbCopy));
    nxclip_.Tree().Select(L"Profil");
    EXPECT_FALSE(MenuEnabled(m_copyToClipboard));
    EXPECT_FALSE(MenuEnabled(m_activate)) << "it is the active container already";
    EXPECT_FALSE(nxclip_.ToolBar().Enabled(tbbCopy));
    nxclip_.Tree().Select(L"Profil\\Ordner");
    EXPECT_TRUE(MenuEnabled(m_activate));

    EXPECT_EQ(FirstEntryAt(nxclip_.Tree().PlaceOf(L"Profil")), m_profile_active);
    EXPECT_EQ(FirstEntryAt(nxclip_.Tree().PlaceOf(L"Profil\\Ordner")), m_struct_active);
    EXPECT_EQ(FirstEntryAt(nxclip_.Tree().PlaceOf(L"Profil\\Clip")), m_to_clipboard);
    EXPECT_EQ(nxclip_.Tree().SelectedPath(), L"Profil\\Clip") << "a right click selects";
    const RECT tree = nxclip_.Tree().window().Rectangle();
    EXPECT_EQ(FirstEntryAt({tree.left + 20, tree.bottom - 20}), m_pNN_NewProfil);
}

TEST_F(Commands, Keys_ReachTheSelectedNode) {
    StartWithTree();
    BringToFront(nxclip_.Main());
    const DWORD before = GetClipboardSequenceNumber();
    PressKeys({VK_CONTROL, 'C'});
    WaitFor("the clip on the clipboard", [&] { return GetClipboardSequenceNumber() != before; });
    EXPECT_EQ(ReadFormatNow(Private()), PrivateOffers().front().bytes);

    EXPECT_EQ(Rename(L"Käse"), L"Clip");
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Ordner [Structure]\n  Käse [Clip]\n");

    // Longer than the control draws, and once one that is none.
    const std::wstring longName(400, L'x');
    Rename(longName);
    EXPECT_EQ(Rename(L" "), longName);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"Geben Sie bitte einen Namen ein.");
    EXPECT_EQ(TypeName(L"Käse"), L" ") << "what was typed is still there";
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Ordner [Structure]\n  Käse [Clip]\n");

    PressKeys({VK_MENU, VK_RETURN});
    const Window properties = nxclip_.WaitForDialog(L"Clip-Eigenschaften");
    EXPECT_EQ(properties.TextOf(tbName), L"Käse");
    PressKeys({VK_ESCAPE});
    Driver::WaitUntilGone(properties);

    PressKeys({VK_DELETE});
    EXPECT_EQ(nxclip_.AnswerNotice(IDYES), L"Wollen Sie wirklich den Clip löschen ?");
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Ordner [Structure]\n");
}

TEST_F(Commands, View_ShowsAndHidesItsParts) {
    StartWithTree();
    const Window main = nxclip_.Main();
    const auto toggles = [&](int command, int control) {
        EXPECT_TRUE(nxclip_.Menu(command).checked);
        nxclip_.Command(command);
        WaitFor("the part to go", [&] { return !main.Control(control).Visible(); });
        EXPECT_FALSE(nxclip_.Menu(command).checked);
        nxclip_.Command(command);
        WaitFor("the part to come back", [&] { return main.Control(control).Visible(); });
    };
    const RECT before = nxclip_.Tree().window().Rectangle();
    toggles(mnuViewToolbar, tbToolBar);
    toggles(mnuViewStatusBar, sbStatusBar);
    toggles(mnuListViewPreview, tabFormat);
    const RECT after = nxclip_.Tree().window().Rectangle();
    EXPECT_TRUE(EqualRect(&before, &after));

    const int modes[] = {LV_VIEW_ICON, LV_VIEW_SMALLICON, LV_VIEW_LIST, LV_VIEW_DETAILS};
    for (int mode = 0; mode < 4; ++mode) {
        nxclip_.ToolBar().Click(tbbViewLarge + mode);
        WaitFor("the list's mode", [&] { return nxclip_.List().Mode() == modes[mode]; });
        EXPECT_TRUE(nxclip_.Menu(mnuListViewLarge + mode).checked);
        EXPECT_EQ(nxclip_.List().Names().size(), 2u);
    }
}

TEST_F(Commands, Preview_ShowsTextAndRichTextOfTheClip) {
    StartWithProfile();
    SnapOf(
        {{CF_TEXT, std::string("gr\xFCn und wei\xDF\0", 14)},
         {FormatNumber(L"Rich Text Format"), std::string("{\\rtf1\\ansi Ein \\b fetter\\b0  Brief}\0", 37)}});
    EXPECT_EQ(nxclip_.FormatTab().Names().size(), 3u);
    EXPECT_EQ(nxclip_.FormatTab().Selected(), 0);
    WaitFor("the text", [&] { return nxclip_.Main().TextOf(tbPreviewText) == L"grün und weiß"; });
    nxclip_.FormatTab().Select(1);
    WaitFor("the rich text", [&] {
        return nxclip_.Main().TextOf(tbPreviewRtf).find(L"Ein fetter Brief") != std::wstring::npos;
    });
    EXPECT_FALSE(IsBold(0));
    EXPECT_TRUE(IsBold(4));
    EXPECT_FALSE(IsBold(12));
    nxclip_.Tree().Select(L"Profil");
    WaitFor("an empty preview", [&] { return nxclip_.Main().TextOf(tbPreviewRtf).empty(); });
}

TEST_F(Commands, Drag_MovesAndWithControlCopiesAClipWithItsFile) {
    StartWithTree();
    BringToFront(nxclip_.Main());
    const POINT folder = nxclip_.Tree().PlaceOf(L"Profil\\Ordner");
    {
        // Held until the copy stands: what counts is the key's state when the drop is handled.
        const HeldKey control(VK_CONTROL);
        Drag(nxclip_.Tree().PlaceOf(L"Profil\\Clip"), folder);
        nxclip_.WaitForTree(
            L"Profil [Camera] open\n  Ordner [Structure] open\n    Clip [Clip]\n  Clip [Clip]\n");
    }
    EXPECT_EQ(ReadClipFile(ClipFileAt(2)), ReadClipFile(ClipFileAt(1)));

    Drag(nxclip_.Tree().PlaceOf(L"Profil\\Clip"), folder);
    nxclip_.WaitForTree(
        L"Profil [Camera] open\n  Ordner [Structure] open\n    Clip [Clip]\n    Clip [Clip]\n");
    EXPECT_FALSE(std::filesystem::exists(ClipFileAt(3)));
    nxclip_.Restart();
    nxclip_.WaitForTree(
        L"Profil [Camera] open\n  Ordner [Structure] open\n    Clip [Clip]\n    Clip [Clip]\n");
}

}  // namespace
