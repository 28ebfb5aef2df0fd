#include "windows/controls/QuietScope.h"

// The system's own procedure takes the visible style away for this message, and nothing is drawn in a window
// without that style.
QuietScope::QuietScope(HWND window) {
    const bool shown = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    window_ = shown ? window : nullptr;
    if (shown) DefWindowProcW(window, WM_SETREDRAW, FALSE, 0);
}

QuietScope::~QuietScope() {
    if (window_ == nullptr) return;
    DefWindowProcW(window_, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}
