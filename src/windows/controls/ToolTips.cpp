#include "windows/controls/ToolTips.h"

// The tool tip control needs <windows.h> in front of it.
#include <commctrl.h>

#include "engine/process/modOption.h"

void ShowToolTips(HWND dialog, std::initializer_list<ControlTip> tips) {
    if (!Options().ShowTooltips) return;
    const HWND window = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0, 0,
                                        dialog, nullptr, GetModuleHandleW(nullptr), nullptr);
    for (const ControlTip& tip : tips) {
        TTTOOLINFOW info{};
        info.cbSize = sizeof info;
        info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        info.hwnd = dialog;
        info.uId = reinterpret_cast<UINT_PTR>(GetDlgItem(dialog, tip.control));
        info.lpszText = const_cast<wchar_t*>(tip.text);
        SendMessageW(window, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    }
}
