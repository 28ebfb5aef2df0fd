#include "desktop/Driver.h"

#include <gtest/gtest.h>

#include "desktop/ClipboardData.h"
#include "desktop/Input.h"
#include "desktop/Outline.h"
#include "desktop/Settings.h"
#include "desktop/WholeFile.h"

// The driver and its tools against programs that are not ours: what is read must be what those programs show,
// what is done must reach them.

namespace {

Window WaitForWindow(const Process& process, std::wstring_view className) {
    return WaitFor("a window of the program", [&] {
        for (Window window : process.Windows()) {
            if (window.ClassName() == className) return window;
        }
        return Window();
    });
}

constexpr int kNotepadFind = 288;
constexpr int kNotepadStatusBar = 517;
constexpr int kNotepadOpen = 257;

class Notepad : public testing::Test {
 protected:
    Process process_{L"notepad.exe"};
    Window window_ = WaitForWindow(process_, L"Notepad");
    Window Edit() const { return window_.ControlOfClass(L"Edit"); }
};

TEST_F(Notepad, Type_ArrivesWithUmlautsAndKeys) {
    BringToFront(window_);
    Type(L"größer ");
    PressKeys({VK_SHIFT, 'A'});
    Type(L"€");
    WaitFor("the typed text", [&] { return Edit().Text() == L"größer A€"; });
    PressKeys({VK_CONTROL, 'A'});
    PressKeys({VK_DELETE});
    WaitFor("an empty text", [&] { return Edit().Text().empty(); });
}

TEST_F(Notepad, Drag_SelectsWithTheMouse) {
    Edit().Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"eine lange Zeile zum Markieren"));
    BringToFront(window_);
    const RECT place = Edit().Rectangle();
    Drag({place.left + 3, place.top + 8}, {place.right - 30, place.top + 8});
    WaitFor("a selection", [&] { return HIWORD(Edit().Send(EM_GETSEL)) == 30; });
}

TEST_F(Notepad, Menu_ShowsChecksTextsAndDisabledEntries) {
    const auto entry = FindMenuEntry(window_, kNotepadStatusBar);
    ASSERT_TRUE(entry.has_value());
    EXPECT_TRUE(entry->checked);
    EXPECT_EQ(entry->depth, 1);
    window_.Command(kNotepadStatusBar);
    WaitFor("the check mark to go", [&] { return !FindMenuEntry(window_, kNotepadStatusBar)->checked; });

    const std::vector<MenuEntry> all = MenuEntries(window_);
    EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const MenuEntry& e) { return e.depth == 0; }), 5);
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [](const MenuEntry& e) { return e.separator; }));
    // Nothing is selected, so nothing can be copied: known only when the menu opens.
    EXPECT_TRUE(std::any_of(all.begin(), all.end(),
                            [](const MenuEntry& e) { return e.number > 0 && !e.separator && !e.enabled; }));
    EXPECT_FALSE(FindMenuEntry(window_, 9999).has_value());
}

TEST_F(Notepad, Dialog_IsFilledInAndReadBack) {
    window_.Command(kNotepadFind);
    const Window dialog = WaitFor("the dialog", [&] {
        for (Window window : process_.Windows()) {
            if (window.ClassName() == L"#32770") return window;
        }
        return Window();
    });
    constexpr int kText = 0x480;
    constexpr int kMatchCase = 0x411;
    dialog.SetText(kText, L"Süßes");
    EXPECT_EQ(dialog.TextOf(kText), L"Süßes");
    EXPECT_FALSE(dialog.Checked(kMatchCase));
    dialog.Check(kMatchCase, true);
    EXPECT_TRUE(dialog.Checked(kMatchCase));
    EXPECT_THROW(dialog.Control(4711), DriverError);
    dialog.Press(IDCANCEL);
    WaitFor("the dialog to close", [&] { return !dialog.Exists(); });
}

TEST_F(Notepad, Hang_IsToldInsteadOfWaitedFor) {
    const DWORD threadId = GetWindowThreadProcessId(window_.Handle(), nullptr);
    HANDLE thread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, threadId);
    SuspendThread(thread);
    const DWORD start = GetTickCount();
    EXPECT_NE(ScreenOutline().find("Notepad does not answer"), std::string::npos);
    EXPECT_LT(GetTickCount() - start, 3000u);
    CloseHandle(thread);
    process_.Terminate();
    EXPECT_FALSE(process_.Running());
}

TEST_F(Notepad, Failure_ShowsTheScreenAndNoticesTheEnd) {
    Edit().Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"auf dem Schirm"));
    try {
        WaitFor(
            "something that never comes", [] { return false; }, std::chrono::milliseconds(30));
        FAIL() << "there is nothing to wait for";
    } catch (const DriverError& error) {
        const std::string what = error.what();
        EXPECT_NE(what.find("something that never comes"), std::string::npos);
        EXPECT_NE(what.find("auf dem Schirm"), std::string::npos);
    }
    // The end of a program that should run fails a wait at once.
    TerminateProcess(OpenProcess(PROCESS_TERMINATE, FALSE, process_.Id()), 7);
    const DWORD start = GetTickCount();
    EXPECT_THROW(WaitFor("the impossible", [] { return false; }), DriverError);
    EXPECT_LT(GetTickCount() - start, 3000u);
    process_.MayEnd();
}

TEST(Regedit, TreeAndList_ShowWhatIsInTheRegistry) {
    ClearSettings();
    WriteSetting(L"Probe", L"Größe", L"fünf");
    WriteSetting(L"Probe", L"Leer", L"");
    WriteSetting(L"Andere", L"a", L"b");
    Process process(L"regedit.exe");
    const Window window = WaitForWindow(process, L"RegEdit_RegEdit");
    const TreeControl tree(window.ControlOfClass(WC_TREEVIEWW));
    const ListControl list(window.ControlOfClass(WC_LISTVIEWW));
    const std::wstring root = tree.Lines().front().text;

    tree.Select(root + L"\\HKEY_CURRENT_USER\\Software\\NXClip\\Probe");
    EXPECT_EQ(tree.SelectedPath(), root + L"\\HKEY_CURRENT_USER\\Software\\NXClip\\Probe");
    WaitFor("the values", [&] { return list.Count() == 3; });
    EXPECT_EQ(list.Headings().size(), 3u);
    EXPECT_EQ(list.Mode(), LV_VIEW_DETAILS);
    EXPECT_EQ(list.Row(1), (std::vector<std::wstring>{L"Größe", L"REG_SZ", L"fünf"}));
    EXPECT_EQ(list.Row(2), (std::vector<std::wstring>{L"Leer", L"REG_SZ", L""}));

    const std::vector<TreeLine> lines = tree.Lines();
    const auto nxclip =
        std::find_if(lines.begin(), lines.end(), [](const TreeLine& l) { return l.text == L"NXClip"; });
    ASSERT_NE(nxclip, lines.end());
    EXPECT_EQ(nxclip->depth, 3);
    EXPECT_TRUE(nxclip->expanded);
    EXPECT_FALSE(nxclip->selected);
    ASSERT_GE(lines.end() - nxclip, 3);
    EXPECT_EQ(nxclip[1].text, L"Andere");
    EXPECT_EQ(nxclip[1].depth, 4);
    EXPECT_TRUE(nxclip[2].selected);
    EXPECT_THROW(tree.Select(root + L"\\HKEY_CURRENT_USER\\Nirgends"), DriverError);
    ClearSettings();
}

}  // namespace
