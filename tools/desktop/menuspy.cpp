// Reads a window's menu, or the menu that a popped-up menu window shows, inside of its own program.

#include <windows.h>

#include <iterator>
#include <string>

#include "desktop/MenuSpy.h"

namespace {

constexpr UINT kGetMenuOfPopUp = 0x01E1;

void Read(HWND window, HMENU menu, int depth, MenuSpyAnswer& answer) {
    // A program brings its menus up to date when they open, so they are opened as far as it can tell.
    if (depth == 0) SendMessageW(window, WM_INITMENU, reinterpret_cast<WPARAM>(menu), 0);
    const int count = GetMenuItemCount(menu);
    for (int place = 0; place < count; ++place) {
        if (answer.count == static_cast<int>(std::size(answer.entries))) return;
        MenuSpyEntry& entry = answer.entries[answer.count++];
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_SUBMENU | MIIM_STRING;
        item.dwTypeData = entry.text;
        item.cch = static_cast<UINT>(std::size(entry.text));
        GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &item);
        entry.depth = depth;
        entry.number = item.hSubMenu == nullptr ? static_cast<int>(item.wID) : -1;
        entry.separator = (item.fType & MFT_SEPARATOR) != 0;
        entry.enabled = (item.fState & MFS_DISABLED) == 0;
        entry.checked = (item.fState & MFS_CHECKED) != 0;
        if (item.hSubMenu == nullptr) continue;
        SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(item.hSubMenu),
                     MAKELPARAM(place, FALSE));
        Read(window, item.hSubMenu, depth + 1, answer);
    }
}

HMENU MenuOf(HWND window) {
    wchar_t className[16] = L"";
    GetClassNameW(window, className, static_cast<int>(std::size(className)));
    if (lstrcmpW(className, L"#32768") != 0) return GetMenu(window);
    return reinterpret_cast<HMENU>(SendMessageW(window, kGetMenuOfPopUp, 0, 0));
}

void Answer(HWND window) {
    const std::wstring name = kMenuSpyMemory + std::to_wstring(GetCurrentProcessId());
    HANDLE mapping = OpenFileMappingW(FILE_MAP_WRITE, FALSE, name.c_str());
    if (mapping == nullptr) return;
    if (void* memory = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, sizeof(MenuSpyAnswer))) {
        auto& answer = *static_cast<MenuSpyAnswer*>(memory);
        if (HMENU menu = MenuOf(window)) Read(window, menu, 0, answer);
        answer.answered = true;
        UnmapViewOfFile(memory);
    }
    CloseHandle(mapping);
}

}  // namespace

extern "C" __declspec(dllexport) LRESULT CALLBACK MenuSpyProcedure(int code, WPARAM wParam, LPARAM lParam) {
    static const UINT ask = RegisterWindowMessageW(kMenuSpyMessage);
    const auto* message = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && message->message == ask) Answer(message->hwnd);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
