#include "windows/main/SearchField.h"

// The edit control's hint needs <windows.h> in front of it.
#include <commctrl.h>

#include <utility>

#include "windows/controls/Boxes.h"

namespace {

constexpr const wchar_t* kTip =
    L"Alle Wörter, in beliebiger Folge, in Name, Information oder Inhalt\r\n"
    L"\"mehrere Wörter\"  \u2013  so, wie sie dastehen\r\n"
    L"name:Brief  \u2013  nur im Namen\r\n"
    L"datei:Angebot  \u2013  in den Namen der Dateien eines Clips\r\n"
    L"typ:bild, text, html, rtf oder datei  \u2013  nur Clips mit solchem Inhalt\r\n"
    L"seit:7  \u2013  nur Clips der letzten 7 Tage";

}  // namespace

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
    // The text is shown also while the field has the keyboard.
    SendMessageW(window_, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(hint_.c_str()));
}

void SearchField::ShowTip(bool shown) {
    if (tip_ == nullptr && shown) MakeTip();
    if (tip_ != nullptr) SendMessageW(tip_, TTM_ACTIVATE, shown, 0);
}

void SearchField::MakeTip() {
    constexpr LPARAM kWidest = 600;  // pixels; it breaks its lines itself
    constexpr LPARAM kShownFor = 30000;
    tip_ = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0,
                           window_, nullptr, GetModuleHandleW(nullptr), nullptr);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = GetParent(window_);
    tool.uId = reinterpret_cast<UINT_PTR>(window_);
    tool.lpszText = const_cast<wchar_t*>(kTip);
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, kWidest);
    SendMessageW(tip_, TTM_SETDELAYTIME, TTDT_AUTOPOP, kShownFor);
}

std::wstring SearchField::Text() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)), L'\0');
    // A string has room for the zero behind its last character.
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
