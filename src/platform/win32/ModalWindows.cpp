#include "platform/win32/ModalWindows.h"

#include <string_view>

namespace {

constexpr const wchar_t* kModelessMark = L"NXClip.Modeless";

bool IsModalDialogOf(HWND window, HWND owner) {
    if (GetWindow(window, GW_OWNER) != owner || GetPropW(window, kModelessMark) != nullptr) return false;
    // The class of all dialogs and message boxes; tool tips and lists have owners as well.
    wchar_t name[8] = L"";
    GetClassNameW(window, name, 8);
    return std::wstring_view(name) == L"#32770";
}

struct Search {
    HWND owner;
    HWND found;
};

BOOL CALLBACK LookAt(HWND window, LPARAM parameter) noexcept {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (IsModalDialogOf(window, search.owner)) search.found = window;
    return search.found == nullptr;
}

// Who has the mouse, the keyboard and a menu in this thread; nobody when that cannot be told.
GUITHREADINFO OwnThread() {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    GetGUIThreadInfo(GetCurrentThreadId(), &thread);
    return thread;
}

}  // namespace

HWND ModalWindowOver(HWND window) {
    for (HWND top = window; top != nullptr;) {
        Search search{top, nullptr};
        EnumThreadWindows(GetCurrentThreadId(), &LookAt, reinterpret_cast<LPARAM>(&search));
        if (search.found == nullptr) return top;
        top = search.found;
    }
    return nullptr;
}

void MarkAsModeless(HWND dialog) {
    SetPropW(dialog, kModelessMark, reinterpret_cast<HANDLE>(1));
}

void EndMenuLoop() {
    EndMenu();
    // Wine's function knows a menu by the window that it has opened; its loop also goes by this message.
    const GUITHREADINFO thread = OwnThread();
    if ((thread.flags & GUI_INMENUMODE) == 0) return;
    const HWND owner = thread.hwndMenuOwner != nullptr ? thread.hwndMenuOwner : thread.hwndCapture;
    if (owner != nullptr) PostMessageW(owner, WM_CANCELMODE, 0, 0);
}

bool EndLoopOfAControl(HWND window) {
    const GUITHREADINFO thread = OwnThread();
    if (!IsChild(window, thread.hwndCapture) && !IsChild(window, thread.hwndMenuOwner)) return false;
    ReleaseCapture();
    EndMenuLoop();
    return true;
}
