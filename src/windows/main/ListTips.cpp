#include "windows/main/ListTips.h"

// The list and tool tip controls need <windows.h> in front of them.
#include <commctrl.h>

#include "engine/process/modOption.h"

namespace {

constexpr UINT_PTR kTipsId = 1;

// The row and column below a point of the list's inside; -1 where there is none.
std::pair<int, int> CellAt(HWND list, LPARAM place) {
    LVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    if (ListView_SubItemHitTest(list, &hit) < 0) return {-1, -1};
    return {hit.iItem, hit.iSubItem};
}

}  // namespace

void ListTips::Attach(HWND list, Text text) {
    text_ = std::move(text);
    tip_ = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0,
                           list, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (tip_ == nullptr ||
        !SetWindowSubclass(list, &ListTips::Watch, kTipsId, reinterpret_cast<DWORD_PTR>(this)))
        return;
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = list;
    tool.uId = reinterpret_cast<UINT_PTR>(list);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

// Each cell has a text of its own, and the control asks for it when the mouse has come to rest.
void ListTips::MouseMoved(HWND list, LPARAM place) {
    if (const auto cell = CellAt(list, place); cell != cell_) {
        cell_ = cell;
        SendMessageW(tip_, TTM_POP, 0, 0);
    }
}

LRESULT CALLBACK ListTips::Watch(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR self) {
    auto& tips = *reinterpret_cast<ListTips*>(self);
    if (message == WM_MOUSEMOVE) tips.MouseMoved(list, lParam);
    if (message == WM_NOTIFY) {
        auto& header = *reinterpret_cast<NMHDR*>(lParam);
        if (header.hwndFrom == tips.tip_ && header.code == TTN_GETDISPINFOW) {
            const auto [row, column] = tips.cell_;
            tips.shown_ = Options().ShowTooltips && row >= 0 ? tips.text_(row, column) : std::wstring();
            reinterpret_cast<NMTTDISPINFOW&>(header).lpszText = tips.shown_.data();
            return 0;
        }
    }
    if (message == WM_NCDESTROY) RemoveWindowSubclass(list, &ListTips::Watch, kTipsId);
    return DefSubclassProc(list, message, wParam, lParam);
}
