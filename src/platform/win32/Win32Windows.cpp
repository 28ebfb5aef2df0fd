#include "platform/win32/Win32Windows.h"

#include <string>

#include "platform/win32/SystemHandles.h"
#include "platform/win32/SystemPath.h"

namespace {

// How long a window may leave a message unanswered, in milliseconds.
constexpr UINT kLongestWait = 2000;
constexpr UINT kLongestProbe = 200;
// After this time without a message taken, the system itself knows that a window hangs.
constexpr ULONGLONG kHungAfter = 5000;

}  // namespace

ProcedureAddress Win32Windows::ExchangeProcedure(WindowHandle window, ProcedureAddress procedure) {
    return static_cast<ProcedureAddress>(
        SetWindowLongPtrW(SystemWindow(window), GWLP_WNDPROC, static_cast<LONG_PTR>(procedure)));
}

MessageParameter Win32Windows::CallProcedure(ProcedureAddress procedure, WindowHandle window,
                                             std::uint32_t message, MessageParameter wParam,
                                             MessageParameter lParam) {
    return CallWindowProcW(reinterpret_cast<WNDPROC>(procedure), SystemWindow(window), message,
                           static_cast<WPARAM>(wParam), lParam);
}

MessageParameter Win32Windows::Deliver(WindowHandle window, std::uint32_t message, MessageParameter wParam,
                                       MessageParameter lParam) {
    // A viewer of another program that hangs, or shows a box in the middle of the message, must not take this
    // one with it: it is waited for once, and then left to itself.
    const HWND target = SystemWindow(window);
    if (window == silent_ && GetTickCount64() - silentSince_ < kHungAfter) {
        SendNotifyMessageW(target, message, static_cast<WPARAM>(wParam), lParam);
        return 0;
    }
    DWORD_PTR result = 0;
    const bool answered = SendMessageTimeoutW(target, message, static_cast<WPARAM>(wParam), lParam,
                                              SMTO_ABORTIFHUNG, kLongestWait, &result) != 0;
    if (answered || !IsWindow(target)) return static_cast<MessageParameter>(result);
    silent_ = window;
    silentSince_ = GetTickCount64();
    return 0;
}

bool Win32Windows::Answers(WindowHandle window) {
    return SendMessageTimeoutW(SystemWindow(window), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kLongestProbe,
                               nullptr) != 0;
}

bool Win32Windows::Hangs(WindowHandle window) {
    return IsHungAppWindow(SystemWindow(window)) != FALSE;
}

WindowHandle Win32Windows::Foreground() {
    return EngineWindow(GetForegroundWindow());
}

void Win32Windows::BringToFront(WindowHandle window) {
    SetForegroundWindow(SystemWindow(window));
}

std::wstring Win32Windows::Title(WindowHandle window, int most) {
    if (most <= 0) return {};
    std::wstring title(static_cast<std::size_t>(most) + 1, L'\0');
    GetWindowTextW(SystemWindow(window), title.data(), most + 1);
    return title.substr(0, title.find(L'\0'));
}

bool Win32Windows::SetAlwaysOnTop(WindowHandle window, bool onTop) {
    const bool isOnTop = (GetWindowLongPtrW(SystemWindow(window), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    if (isOnTop == onTop && IsWindow(SystemWindow(window))) return true;
    return SetWindowPos(SystemWindow(window), onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                        SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE) != FALSE;
}

std::uint16_t Win32Windows::AddGlobalAtom(const std::string& text) {
    return GlobalAddAtomA(text.c_str());
}

void Win32Windows::DeleteGlobalAtom(std::uint16_t atom) {
    GlobalDeleteAtom(atom);
}

bool Win32Windows::AddHotKey(WindowHandle window, std::int32_t identifier, std::uint32_t modifiers,
                             std::uint32_t key) {
    // Without a window the message would go to the thread, where nobody waits for it.
    if (window == WindowHandle::None) return false;
    // Once for each press, however long it is held.
    return RegisterHotKey(SystemWindow(window), identifier, modifiers | MOD_NOREPEAT, key) != FALSE;
}

std::wstring Win32Windows::AltGrCharacter(wchar_t letter) {
    const HKL layout = GetKeyboardLayout(0);
    const UINT key = letter;
    BYTE pressed[256] = {};
    for (const int modifier : {VK_CONTROL, VK_LCONTROL, VK_MENU, VK_RMENU})
        pressed[modifier] = 0x80;
    wchar_t text[8] = {};
    // Leaves the state of the keyboard alone: an accent typed before must still meet its letter.
    constexpr UINT kKeepState = 1 << 2;
    const int count = ToUnicodeEx(key, MapVirtualKeyExW(key, MAPVK_VK_TO_VSC, layout), pressed, text, 7,
                                  kKeepState, layout);
    // Where the layout gives the keys no character, some systems answer with the control character of CTRL.
    if (count == 0 || text[0] < L' ') return {};
    return std::wstring(text, count < 0 ? 1 : static_cast<std::size_t>(count));
}

void Win32Windows::RemoveHotKey(WindowHandle window, std::int32_t identifier) {
    UnregisterHotKey(SystemWindow(window), identifier);
}

bool Win32Windows::OpenHelp(WindowHandle window, const std::wstring& file, std::uint32_t command,
                            std::uintptr_t data) {
    // The viewer would ask the user for a missing file and keep its caller waiting meanwhile.
    const DWORD attributes = GetFileAttributesW(SystemPath(file).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
    return WinHelpW(SystemWindow(window), file.c_str(), command, data) != FALSE;
}
