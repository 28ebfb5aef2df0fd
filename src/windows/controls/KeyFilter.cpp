#include "windows/controls/KeyFilter.h"

// Subclassing by the common controls needs <windows.h> in front of it.
#include <commctrl.h>

#include <memory>
#include <string>

namespace {

constexpr UINT_PTR kFilterId = 1;

std::wstring TextOnClipboard(HWND window) {
    std::wstring text;
    if (!OpenClipboard(window)) return text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        if (const auto* const characters = static_cast<const wchar_t*>(GlobalLock(data));
            characters != nullptr) {
            text.assign(characters, wcsnlen(characters, GlobalSize(data) / sizeof(wchar_t)));
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    return text;
}

std::size_t LengthBesideSelection(HWND textBox) {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(textBox, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return static_cast<std::size_t>(GetWindowTextLengthW(textBox)) - (end - start);
}

bool MayPaste(HWND window, const KeyFilter& filter) {
    std::size_t length = LengthBesideSelection(window);
    for (const wchar_t c : TextOnClipboard(window))
        if (!filter.passes(c, length++)) return false;
    return true;
}

LRESULT CALLBACK Filtered(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data) {
    auto* const filter = reinterpret_cast<KeyFilter*>(data);
    switch (message) {
        case WM_CHAR:
            // Ctrl+C, Ctrl+V and the like are commands, not characters of the text.
            if ((wParam >= L' ' || wParam == VK_BACK) &&
                !filter->passes(static_cast<wchar_t>(wParam), LengthBesideSelection(window)))
                return 0;
            break;
        case WM_PASTE:
            if (!MayPaste(window, *filter)) return 0;
            break;
        case WM_KEYUP:
            if (filter->released) filter->released();
            break;
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, &Filtered, kFilterId);
            delete filter;
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void FilterKeys(HWND textBox, KeyFilter filter) {
    auto owned = std::make_unique<KeyFilter>(std::move(filter));
    if (SetWindowSubclass(textBox, &Filtered, kFilterId, reinterpret_cast<DWORD_PTR>(owned.get())))
        (void)owned.release();
}
