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
