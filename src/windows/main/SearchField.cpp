#include "windows/main/SearchField.h"

// The edit control's hint needs <windows.h> in front of it.
#include <commctrl.h>

#include <utility>

#include "windows/controls/Boxes.h"

bool SearchField::Create(HWND parent, int control) {
    constexpr WPARAM kMostCharacters = 1000;
    window_ = CreateWindowExW(
        WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) return false;
    SendMessageW(window_, EM_SETLIMITTEXT, kMostCharacters, 0);
    return true;
}

void SearchField::Place(const Box& area) {
    PlaceWindow(window_, area);
}

void SearchField::SetFont(HFONT font) {
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void SearchField::SetHint(const std::wstring& hint) {
    if (std::exchange(hint_, hint) == hint) return;
    // Also while the keyboard is in it.
    SendMessageW(window_, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(hint_.c_str()));
}

std::wstring SearchField::Text() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)), L'\0');
    // With the zero behind it, which the text has room for.
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void SearchField::Begin(const std::wstring& text) {
    SetFocus(window_);
    SendMessageW(window_, EM_SETSEL, 0, -1);
    if (!text.empty()) SendMessageW(window_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void SearchField::Clear() {
    SetWindowTextW(window_, L"");
}

bool SearchField::Wants(const MSG& message) const {
    if (message.hwnd != window_ || (message.message != WM_KEYDOWN && message.message != WM_CHAR))
        return false;
    const bool function = message.wParam >= VK_F1 && message.wParam <= VK_F24;
    if (message.message == WM_CHAR) return true;
    const bool shifted = GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_SHIFT) < 0;
    return !function && message.wParam != VK_TAB && !shifted;
}
