#include <windows.h>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// The list is as good as the tree, and the keyboard comes back to where it was.

namespace {

class List : public ProgramTest {
 protected:
    void ExpectListAsBefore(int row) {
        EXPECT_EQ(nxclip_.Title(), L"Profil \"Profil\"");
        EXPECT_EQ(ChosenRow(), row);
        WaitFor("the keyboard in the list", [&] { return Focus() == nxclip_.List().window(); });
    }
};

TEST_F(List, Commands_ActOnTheChosenRowAndLeaveTheListOpen) {
    StartWithList();
    ChooseRow(1);
    EXPECT_TRUE(nxclip_.ToolBar().Enabled(tbbCopy)) << "the row is a clip";
    const DWORD before = GetClipboardSequenceNumber();
    PressKeys({VK_CONTROL, 'C'});
    WaitFor("the clip on the clipboard", [&] { return GetClipboardSequenceNumber() != before; });
    EXPECT_EQ(ReadFormatNow(Private()), "zwei");

    nxclip_.ToolBar().Click(tbbDelete);
    const Notice question = nxclip_.WaitForNotice();
    EXPECT_EQ(question.title, L"Clip löschen");
    EXPECT_EQ(nxclip_.StatusBar().Text(), L"Löschen: Profil\\Clip");
    Driver::Answer(question, IDNO);
    ExpectListAsBefore(1);
    RightClick(nxclip_.List().PlaceOf(1));
    const Window menu = nxclip_.WaitForPopUpMenu();
    PressKeys({VK_ESCAPE});
    Driver::WaitUntilGone(menu);
    ExpectListAsBefore(1);

    // Row after row.
    PressKeys({VK_DELETE});
    nxclip_.AnswerNotice(IDYES);
    WaitFor("two rows", [&] { return nxclip_.List().Count() == 2; });
    ExpectListAsBefore(1);
    PressKeys({VK_DELETE});
    nxclip_.AnswerNotice(IDYES);
    WaitFor("one row", [&] { return nxclip_.List().Count() == 1; });
    ExpectListAsBefore(0);
    EXPECT_TRUE(std::filesystem::exists(ClipFileAt(1)));
    EXPECT_FALSE(std::filesystem::exists(ClipFileAt(2)));
    EXPECT_FALSE(std::filesystem::exists(ClipFileAt(3)));
}

TEST_F(List, Keys_LookAtUseAndOpenTheChosenRow) {
    StartWithList();
    const auto waitForPreview = [&](const wchar_t* text) {
        WaitFor("the preview", [&] { return nxclip_.Main().TextOf(tbPreviewText) == text; });
    };
    ChooseRow(1);
    waitForPreview(L"zwei");
    PressKeys({VK_DOWN});
    waitForPreview(L"drei");
    const DWORD before = GetClipboardSequenceNumber();
    PressKeys({VK_RETURN});
    WaitFor("the clip on the clipboard", [&] { return GetClipboardSequenceNumber() != before; });
    EXPECT_EQ(ReadFormatNow(Private()), "drei");
    ExpectListAsBefore(2);

    PressKeys({VK_F2});
    WaitFor("the name to edit", [&] { return Focus().ClassName() == L"Edit"; });
    EXPECT_EQ(Focus().Text(), L"Clip");
    Type(L"Käse");
    PressKeys({VK_RETURN});
    WaitFor("the new name", [&] { return nxclip_.List().Names().back() == L"Käse"; });
    ExpectListAsBefore(2);

    PressKeys({VK_CONTROL, VK_RETURN});
    WaitFor("its formats", [&] { return nxclip_.Title() == L"Formate von \"Profil\\Käse\""; });
    EXPECT_EQ(Focus(), nxclip_.List().window());
    PressKeys({VK_BACK});
    WaitFor("the folder", [&] { return nxclip_.Title() == L"Profil \"Profil\""; });
    ExpectListAsBefore(2);
    waitForPreview(L"drei");
}

TEST_F(List, Delete_WithNothingChosenDoesNothing) {
    StartWithList();
    const RECT area = nxclip_.List().window().Rectangle();
    Click({area.left + 20, area.bottom - 20});
    WaitFor("the keyboard in the list", [&] { return Focus() == nxclip_.List().window(); });
    ASSERT_EQ(ChosenRow(), -1);
    EXPECT_FALSE(nxclip_.ToolBar().Enabled(tbbDelete));
    PressKeys({VK_DELETE});

    nxclip_.Tree().Select(L"Profil\\Clip");
    const RECT preview = nxclip_.Main().Control(tbPreviewText).Rectangle();
    Click({preview.left + 20, preview.top + 20});
    WaitFor("the keyboard in the text", [&] { return Focus().Number() == tbPreviewText; });
    PressKeys({VK_DELETE});
    // Keys are done in their turn: Alt comes behind them.
    PressKeys({VK_MENU, VK_RETURN});
    const Window properties = nxclip_.WaitForDialog(L"Clip-Eigenschaften");
    PressKeys({VK_ESCAPE});
    Driver::WaitUntilGone(properties);
    WaitFor("the keyboard back in the text", [&] { return Focus().Number() == tbPreviewText; });
    EXPECT_EQ(nxclip_.Items().size(), 4u);
}

TEST_F(List, Keyboard_ComesBackFromOtherWindowsAndTheSplitter) {
    StartWithList();
    ChooseRow(2);
    const HWND other = CreateWindowExW(0, L"STATIC", L"anderes", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                       nullptr, nullptr, nullptr);
    BringToFront(Window(other));
    BringToFront(nxclip_.Main());
    ExpectListAsBefore(2);
    DestroyWindow(other);
    const RECT bar = nxclip_.Main().Control(imgSplitter).Rectangle();
    const POINT middle{(bar.left + bar.right) / 2, (bar.top + bar.bottom) / 2};
    Drag(middle, {middle.x + 40, middle.y});
    ExpectListAsBefore(2);
    WaitFor("the splitter to move",
            [&] { return nxclip_.Main().Control(imgSplitter).Rectangle().left > bar.left; });
}

}  // namespace
