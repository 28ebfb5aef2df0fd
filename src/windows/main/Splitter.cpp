#include "windows/main/Splitter.h"

#include <utility>

#include "platform/Guard.h"
#include "windows/controls/WindowObject.h"

namespace {
constexpr const wchar_t* kClassName = L"NXClipSplitter";

int LeftInParent(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(window), reinterpret_cast<POINT*>(&area), 2);
    return area.left;
}

}  // namespace

bool Splitter::Create(HWND parent, int bar, int movingBar, std::function<int(int)> clamp,
                      std::function<void(int)> moved) {
    clamp_ = std::move(clamp);
    moved_ = std::move(moved);
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSW shape{};
    shape.lpfnWndProc = &Splitter::Procedure;
    shape.hInstance = instance;
    shape.hCursor = LoadCursorW(nullptr, IDC_SIZEWE);
    shape.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    shape.lpszClassName = kClassName;
    RegisterClassW(&shape);
    bar_ = CreateWindowExW(0, kClassName, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(bar)), instance, this);
    movingBar_ =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_CLIPSIBLINGS | SS_GRAYRECT, 0, 0, 0, 0, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(movingBar)), instance, nullptr);
    return bar_ != nullptr && movingBar_ != nullptr;
}

LRESULT CALLBACK Splitter::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const splitter = ObjectOf<Splitter>(window, message, lParam);
    if (splitter == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    return Guarded<LRESULT>(0, [&] { return splitter->Handle(window, message, wParam, lParam); });
}

LRESULT Splitter::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            MouseDown();
            return 0;
        case WM_MOUSEMOVE:
            if (moving_) MouseMove(static_cast<short>(LOWORD(lParam)));
            return 0;
        case WM_LBUTTONUP:
            EndDrag(true);
            return 0;
        case WM_KEYDOWN:
            KeyDown(wParam);
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            InvalidateRect(window, nullptr, TRUE);
            return 0;
        case WM_ERASEBKGND: {
            RECT area;
            GetClientRect(window, &area);
            FillRect(reinterpret_cast<HDC>(wParam), &area,
                     GetSysColorBrush(GetFocus() == window ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
            return TRUE;
        }
        case WM_CAPTURECHANGED:
            EndDrag(false);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

void Splitter::KeyDown(WPARAM key) {
    constexpr int kStep = 16;
    if (moving_) {
        if (key == VK_ESCAPE) EndDrag(false);
    } else if (key == VK_LEFT || key == VK_RIGHT) {
        moved_(clamp_(LeftInParent(bar_) + (key == VK_LEFT ? -kStep : kStep)));
    }
}

void Splitter::MouseDown() {
    RECT area;
    GetClientRect(bar_, &area);
    MapWindowPoints(bar_, GetParent(bar_), reinterpret_cast<POINT*>(&area), 2);
    left_ = area.left;
    SetWindowPos(movingBar_, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_SHOWWINDOW | SWP_NOACTIVATE);
    moving_ = true;
    SetCapture(bar_);
    focusBefore_ = SetFocus(bar_);  // Escape ends the drag
}

void Splitter::MouseMove(int x) {
    left_ = clamp_(LeftInParent(bar_) + x);
    RECT area;
    GetWindowRect(bar_, &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(bar_), reinterpret_cast<POINT*>(&area), 2);
    SetWindowPos(movingBar_, HWND_TOP, left_, area.top, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
}

void Splitter::EndDrag(bool keep) {
    if (!std::exchange(moving_, false)) return;
    ReleaseCapture();
    ShowWindow(movingBar_, SW_HIDE);
    if (GetFocus() == bar_) SetFocus(focusBefore_);
    if (keep) moved_(left_);
}
