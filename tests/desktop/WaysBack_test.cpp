#include <windows.h>

#include <functional>
#include <optional>

#include "desktop/ProgramTest.h"
#include "desktop/TaskBar.h"

// However the window comes back to the front, the keyboard is where it was, and typing goes there.

namespace {

class WaysBack : public ProgramTest {
 protected:
    // A window of another program, in which the user works meanwhile.
    class Elsewhere {
     public:
        Elsewhere()
            : window_(CreateWindowExW(0, L"STATIC", L"anderes", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                      nullptr, nullptr, nullptr)) {
            BringToFront(Window(window_));
        }
        ~Elsewhere() { DestroyWindow(window_); }
        Elsewhere(const Elsewhere&) = delete;
        Elsewhere& operator=(const Elsewhere&) = delete;

     private:
        HWND window_;
    };

    using Way = std::pair<const char*, std::function<void()>>;

    void SecondStart() { nxclip_.StartSecond()->WaitForEnd(); }
    // Those that lead to a window in any state.
    std::vector<Way> Ways() {
        return {{"hot key",
                 [] {
                     PressKeys({VK_CONTROL, VK_MENU, 'L'});
                 }},
                {"icon", [&] { nxclip_.DoubleClickIcon(); }},
                {"menu", [&] { nxclip_.Command(m_tray_restore); }},
                {"second start", [&] { SecondStart(); }}};
    }
    void TaskBarButton() { nxclip_.Main().Post(WM_SYSCOMMAND, SC_RESTORE); }

    void Minimise() { nxclip_.Main().Post(WM_SYSCOMMAND, SC_MINIMIZE); }
    bool Zoomed() const { return IsZoomed(nxclip_.Main().Handle()) != 0; }

    // The keyboard is in the list and moves its chosen row.
    void ExpectListHasKeyboard() {
        WaitForFront();
        WaitFor("the keyboard in the list", [&] { return Focus() == nxclip_.List().window(); });
        const int row = ChosenRow();
        PressKeys({static_cast<WORD>(row == 0 ? VK_DOWN : VK_UP)});
        WaitFor("another row", [&] { return ChosenRow() == (row == 0 ? 1 : row - 1); });
    }
    // Leaves the window by `leave`, and comes back by every way; maximised it stays so.
    void TryAll(bool maximised, const std::function<void()>& leave, const std::vector<Way>& ways) {
        ShowWindow(nxclip_.Main().Handle(), maximised ? SW_MAXIMIZE : SW_RESTORE);
        for (const auto& [name, comeBack] : ways) {
            SCOPED_TRACE(std::string(name) + (maximised ? ", maximised" : ""));
            const Elsewhere elsewhere;
            leave();
            comeBack();
            ExpectListHasKeyboard();
            // The first instance is told by another process to show its window as a normal one.
            if (std::string(name) != "second start") {
                EXPECT_EQ(Zoomed(), maximised);
            }
            ShowWindow(nxclip_.Main().Handle(), maximised ? SW_MAXIMIZE : SW_RESTORE);
        }
    }
};

TEST_F(WaysBack, FromBehindAndFromTheIcon_KeyboardIsInTheListAgain) {
    StartWithList();
    ChooseRow(1);
    const auto stay = [] {};
    const auto toIcon = [&] {
        Minimise();
        WaitFor("the icon", [&] { return nxclip_.Main().Minimised(); });
    };
    for (const bool maximised : {false, true}) {
        std::vector<Way> ways = Ways();
        ways.push_back({"task bar", [&] { BringToFront(nxclip_.Main()); }});
        TryAll(maximised, stay, ways);
        ways.back() = {"task bar", [&] { TaskBarButton(); }};
        TryAll(maximised, toIcon, ways);
    }
    nxclip_.Command(mnuViewOptions);
    const Window options = nxclip_.WaitForDialog(L"Optionen");
    {
        const Elsewhere elsewhere;
        PressKeys({VK_CONTROL, VK_MENU, 'L'});
        WaitFor("the dialog in front", [&] { return GetForegroundWindow() == options.Handle(); });
    }
    PressKeys({VK_ESCAPE});
    Driver::WaitUntilGone(options);
    ExpectListHasKeyboard();
}

TEST_F(WaysBack, FromTheNotificationArea_KeyboardIsInTheListAgain) {
    const TaskBar bar;
    if (!bar.CanBeLookedInto()) GTEST_SKIP() << "the desktop has a task bar of its own";
    StartWithList();
    ChooseRow(1);
    const auto hide = [&] {
        Minimise();
        WaitFor("the window to hide", [&] { return !nxclip_.Main().Visible(); });
    };
    for (const bool maximised : {false, true})
        TryAll(maximised, hide, Ways());
}

TEST_F(WaysBack, StartedAsAnIcon_SomethingIsChosenAndHasTheKeyboard) {
    StartWithList();
    nxclip_.Quit();
    WriteSetting(L"Settings", L"StartAsIcon", L"1");
    for (const auto& [name, comeBack] : Ways()) {
        SCOPED_TRACE(name);
        nxclip_.Start();
        const Window main = nxclip_.Main();
        WaitFor("the icon", [&] { return main.Minimised(); });
        comeBack();
        WaitForFront();
        WaitFor("the keyboard in the tree", [&] { return Focus() == nxclip_.Tree().window(); });
        EXPECT_EQ(nxclip_.Tree().SelectedPath(), L"Profil");
        EXPECT_EQ(nxclip_.List().Count(), 3);
        PressKeys({VK_RIGHT});
        PressKeys({VK_DOWN});
        WaitFor("the first clip", [&] { return nxclip_.Tree().SelectedPath() == L"Profil\\Clip"; });
        nxclip_.Quit();
    }
}

}  // namespace
