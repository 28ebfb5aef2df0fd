#include "platform/Windows.h"

#include "contract/ContractTest.h"

namespace {

constexpr std::uint32_t kOwnMessage = 0x8000 + 7;

class WindowContract : public ContractTest {
 protected:
    // A window that answers with `answer` plus wParam.
    WindowHandle MakeAnswering(MessageParameter answer, const std::wstring& title = L"Fenster") {
        return home->MakeWindow(
            title, [answer](WindowHandle, std::uint32_t message, MessageParameter wParam, MessageParameter) {
                return message == kOwnMessage ? answer + wParam : 0;
            });
    }

    WindowHandle MakeGone() {
        const WindowHandle window = MakeWindow();
        home->EndWindow(window);
        return window;
    }
};

}  // namespace

TEST_F(WindowContract, Deliver_ReturnsTheProceduresAnswer) {
    const WindowHandle window = MakeAnswering(100);
    EXPECT_EQ(windows.Deliver(window, kOwnMessage, 23, 0), 123);
    EXPECT_EQ(windows.Deliver(window, kOwnMessage, -200, 0), -100);
    EXPECT_EQ(windows.Deliver(MakeGone(), kOwnMessage, 1, 0), 0);
}

TEST_F(WindowContract, ExchangeProcedure_NewOneAnswersAndOldOneCanBeCalledAndPutBack) {
    const WindowHandle window = MakeAnswering(100);
    ProcedureAddress old = ProcedureAddress::None;
    const ProcedureAddress replacement = home->MakeProcedure(
        [&](WindowHandle to, std::uint32_t message, MessageParameter wParam, MessageParameter lParam) {
            if (message != kOwnMessage) return MessageParameter{0};
            EXPECT_EQ(to, window);
            EXPECT_EQ(lParam, -5);
            return windows.CallProcedure(old, to, message, wParam, lParam) + 1000;
        });
    old = windows.ExchangeProcedure(window, replacement);
    ASSERT_NE(old, ProcedureAddress::None);
    EXPECT_EQ(windows.Deliver(window, kOwnMessage, 1, -5), 1101);
    EXPECT_EQ(windows.ExchangeProcedure(window, old), replacement);
    EXPECT_EQ(windows.Deliver(window, kOwnMessage, 1, -5), 101);
    EXPECT_EQ(windows.ExchangeProcedure(MakeGone(), replacement), ProcedureAddress::None);
}
