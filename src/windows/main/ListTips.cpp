#include "windows/main/ListTips.h"

// The list and tool tip controls need <windows.h> in front of them.
#include <commctrl.h>

#include "engine/process/modOption.h"
#include "windows/controls/Dpi.h"

namespace {

// The row and column below a point of the list's inside; -1 where there is none.
std::pair<int, int> CellAt(HWND list, LPARAM place) {
    LVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    if (ListView_SubItemHitTest(list, &hit) < 0) return {-1, -1};
    return {hit.iItem, hit.iSubItem};
}

}  // namespace

void ListTips::SetList(HWND list, Text text) {
    list_ = list;
    text_ = std::move(text);
}

std::optional<LRESULT> ListTips::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= WM_MOUSEFIRST && message <= WM_MBUTTONUP) OnMouse(message, wParam, lParam);
    if (message != WM_NOTIFY || tip_ == nullptr) return std::nullopt;
    auto& header = *reinterpret_cast<NMHDR*>(lParam);
    if (header.hwndFrom != tip_ || header.code != TTN_GETDISPINFOW) return std::nullopt;
    const auto [row, column] = cell_;
    shown_ = Options().ShowTooltips && row >= 0 ? text_(row, column) : std::wstring();
    reinterpret_cast<NMTTDISPINFOW&>(header).lpszText = shown_.data();
    return 0;
}

// Each cell has a text of its own, and the control asks for it when the mouse has come to rest.
void ListTips::OnMouse(UINT message, WPARAM wParam, LPARAM place) {
    if (tip_ == nullptr) MakeTip();
    if (const auto cell = CellAt(list_, place); cell != cell_) {
        cell_ = cell;
        SendMessageW(tip_, TTM_POP, 0, 0);
    }
    MSG relayed{};
    relayed.hwnd = list_;
    relayed.message = message;
    relayed.wParam = wParam;
    relayed.lParam = place;
    SendMessageW(tip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

// Mouse messages are relayed to the tip by hand, because its own way of listening is the common controls'
// subclassing.
void ListTips::MakeTip() {
    tip_ = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0,
                           list_, nullptr, GetModuleHandleW(nullptr), nullptr);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND;
    tool.hwnd = list_;
    tool.uId = reinterpret_cast<UINT_PTR>(list_);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    // A longer text goes on in another line.
    SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, Scaled(400, DpiOfWindow(list_)));
}
