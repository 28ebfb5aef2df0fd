#include <algorithm>

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
    // Two pixels, one of them half transparent.
    static std::string Png() {
        constexpr char kBytes[] =
            "\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x00\x02\x00\x00\x00\x01"
            "\x08\x06\x00\x00\x00\xf4\x22\x7f\x8a\x00\x00\x00\x11\x49\x44\x41\x54\x78\x9c\x63\xf8\xcf\xc0\xd0"
            "\xc0\xf0\x9f\xe1\x3f\x00\x0e\x7d\x03\x7e\xea\xf6\x93\xc0\x00\x00\x00\x00\x49\x45\x4e\x44\xae\x42"
            "\x60\x82";
        return {kBytes, sizeof kBytes - 1};
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
};

TEST_F(Commands, RightClick_SelectsAndOpensAMenuOfTheNode) {
    StartWithTree();
    BringToFront(nxclip_.Main());
    RightClick(nxclip_.Tree().PlaceOf(L"Profil\\Ordner"));
    const Window menu = nxclip_.WaitForPopUpMenu();
    PressKeys({VK_DOWN});  // the first entry
    PressKeys({VK_RETURN});
    Driver::WaitUntilGone(menu);
    nxclip_.WaitForTree(L"Profil [Profile] open\n  Ordner [Camera]\n  Clip [Clip]\n");
    EXPECT_EQ(nxclip_.Tree().SelectedPath(), L"Profil\\Ordner");
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
    nxclip_.Tree().Select(L"Profil");
    WaitFor("an empty preview", [&] { return nxclip_.Main().TextOf(tbPreviewRtf).empty(); });

    nxclip_.FormatTab().Select(0);
    std::string lines;
    for (int i = 0; i < 20'000; ++i)
        lines += "Zeile " + std::to_string(i) + "\r\n";
    SnapOf({{CF_TEXT, lines + '\0'}});
    WaitFor("the rest of a long text",
            [&] { return nxclip_.Main().TextOf(tbPreviewText) == std::wstring(lines.begin(), lines.end()); });
}

TEST_F(Commands, PreviewOfPng_IsDecodedOrRefused) {
    StartWithProfile();
    SnapOf({{FormatNumber(L"PNG"), Png()}});
    EXPECT_TRUE(nxclip_.Main().Control(picPreviewDIB).Visible());
    EXPECT_TRUE(nxclip_.Quiet());
    std::string damaged = Png();
    std::fill(damaged.begin() + 40, damaged.end() - 20, '\x55');
    PutFormats({{FormatNumber(L"PNG"), damaged}});
    nxclip_.Command(m_edit_insert);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"DIB konnte nicht geladen werden");
}

TEST_F(Commands, PreviewOfPictureWhoseFileIsGone_IsEmptiedAndToldOnce) {
    leavesWhole_ = false;
    StartWithProfile();
    BITMAPINFOHEADER header{sizeof header, 1, 3000, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    SnapOf(
        {{CF_DIB, std::string(reinterpret_cast<char*>(&header), sizeof header) + std::string(12000, 'x')}});
    const Window box = nxclip_.Main().Control(picPreviewDIB);
    const auto scrolls = [&] { return (GetWindowLongW(box.Handle(), GWL_STYLE) & WS_VSCROLL) != 0; };
    EXPECT_TRUE(scrolls());
    WaitFor("the file, which the idle program may just be flushing, to go", [&] {
        std::error_code held;
        return std::filesystem::remove(ClipFileAt(1), held);
    });
    box.Post(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"DIB konnte nicht geladen werden");
    EXPECT_FALSE(scrolls()) << "nothing is left to be read";
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

    Drag(nxclip_.Tree().PlaceOf(L"Profil"), nxclip_.Tree().PlaceOf(L"Profil\\Ordner"));
    EXPECT_EQ(nxclip_.AnswerNotice(), L"Ablage auf diesem Eintrag ist nicht erlaubt !!!");
}

}  // namespace
