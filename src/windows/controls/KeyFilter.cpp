#include "windows/controls/KeyFilter.h"

// Subclassing by the common controls needs <windows.h> in front of it.
#include <commctrl.h>

#include <algorithm>
#include <memory>
#include <string>

#include "platform/Guard.h"

namespace {

constexpr UINT_PTR kFilterId = 1;

// More than any box holds: what follows need not be looked at.
constexpr std::size_t kMostPasted = 0x10000;

struct ClipboardScope {
    ~ClipboardScope() { CloseClipboard(); }
};

std::wstring TextOnClipboard(HWND window) {
    std::wstring text;
    if (!OpenClipboard(window)) return text;
    const ClipboardScope open;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        if (const auto* const characters = static_cast<const wchar_t*>(GlobalLock(data));
            characters != nullptr) {
            const std::size_t most = std::min<std::size_t>(GlobalSize(data) / sizeof(wchar_t), kMostPasted);
            text.assign(characters, wcsnlen(characters, most));
            GlobalUnlock(data);
        }
    }
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

// False when the box must not get the message.
bool Passes(const KeyFilter& filter, HWND window, UINT message, WPARAM key) {
    switch (message) {
        case WM_CHAR:
            // Ctrl+C, Ctrl+V and the like are commands, not characters of the text.
            return (key < L' ' && key != VK_BACK) ||
                   filter.passes(static_cast<wchar_t>(key), LengthBesideSelection(window));
        case WM_PASTE:
            return MayPaste(window, filter);
        case WM_KEYUP:
            if (filter.released) filter.released();
            return true;
        default:
            return true;
    }
}

LRESULT CALLBACK Filtered(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data) {
    auto* const filter = reinterpret_cast<KeyFilter*>(data);
    if (!Guarded(false, [&] { return Passes(*filter, window, message, wParam); })) return 0;
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, &Filtered, kFilterId);
        delete filter;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void FilterKeys(HWND textBox, KeyFilter filter) {
    auto owned = std::make_unique<KeyFilter>(std::move(filter));
    if (SetWindowSubclass(textBox, &Filtered, kFilterId, reinterpret_cast<DWORD_PTR>(owned.get())))
        (void)owned.release();
}
