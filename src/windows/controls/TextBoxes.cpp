#include "windows/controls/TextBoxes.h"

// Subclassing by the common controls needs <windows.h> in front of it.
#include <commctrl.h>

#include "windows/controls/WindowFont.h"

namespace {

constexpr UINT_PTR kCentreId = 2;

// The box's inside, in coordinates of its window: between the border and what was taken from the text's area.
struct Inside {
    RECT text;
    RECT whole;
};

Inside InsideOf(HWND window) {
    RECT place;
    RECT client;
    GetWindowRect(window, &place);
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -place.left, -place.top);
    const LONG border = client.left;
    return {client, {client.left, border, client.right, place.bottom - place.top - border}};
}

// The strips above and below the text are no longer painted by the box.
void PaintStrips(HWND window) {
    const Inside inside = InsideOf(window);
    const HDC dc = GetWindowDC(window);
    const bool plain = !IsWindowEnabled(window) || (GetWindowLongPtrW(window, GWL_STYLE) & ES_READONLY);
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(GetParent(window), plain ? WM_CTLCOLORSTATIC : WM_CTLCOLOREDIT,
                     reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
    const RECT above{inside.whole.left, inside.whole.top, inside.whole.right, inside.text.top};
    const RECT below{inside.whole.left, inside.text.bottom, inside.whole.right, inside.whole.bottom};
    FillRect(dc, &above, brush);
    FillRect(dc, &below, brush);
    ReleaseDC(window, dc);
}

LRESULT CALLBACK Centred(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                         DWORD_PTR) noexcept {
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    switch (message) {
        case WM_NCCALCSIZE: {
            RECT& client = *reinterpret_cast<RECT*>(lParam);
            const int spare = client.bottom - client.top - WindowFont(window).Metrics().tmHeight;
            if (spare > 1) {
                client.top += spare / 2;
                client.bottom -= spare - spare / 2;
            }
            break;
        }
        case WM_NCPAINT:
        case WM_ENABLE:
        case EM_SETREADONLY:
            PaintStrips(window);
            break;
        case WM_NCHITTEST:
            if (result == HTNOWHERE || result == HTBORDER) return HTCLIENT;
            break;
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, &Centred, kCentreId);
            break;
        default:
            break;
    }
    return result;
}

BOOL CALLBACK CentreIn(HWND window, LPARAM dialog) noexcept {
    wchar_t name[8] = L"";
    GetClassNameW(window, name, 8);
    const bool box = CompareStringOrdinal(name, -1, L"Edit", -1, TRUE) == CSTR_EQUAL;
    const bool oneLine = !(GetWindowLongPtrW(window, GWL_STYLE) & ES_MULTILINE);
    if (box && oneLine && GetParent(window) == reinterpret_cast<HWND>(dialog) &&
        SetWindowSubclass(window, &Centred, kCentreId, 0))
        SetWindowPos(window, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    return TRUE;
}

}  // namespace

void CentreTextInBoxes(HWND dialog) {
    EnumChildWindows(dialog, &CentreIn, reinterpret_cast<LPARAM>(dialog));
}
