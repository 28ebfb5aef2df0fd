#include "windows/controls/QuietScope.h"

#include <initializer_list>

namespace {

bool IsSameBar(const SCROLLINFO& a, const SCROLLINFO& b) {
    return a.nMin == b.nMin && a.nMax == b.nMax && a.nPage == b.nPage && a.nPos == b.nPos;
}

}  // namespace

QuietScope::Bars::Bars(HWND window) {
    constexpr LONG_PTR kShown = WS_HSCROLL | WS_VSCROLL;
    style_ = GetWindowLongPtrW(window, GWL_STYLE) & kShown;
    for (SCROLLINFO* const bar : {&across_, &down_}) {
        bar->cbSize = sizeof *bar;
        bar->fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    }
    GetScrollInfo(window, SB_HORZ, &across_);
    GetScrollInfo(window, SB_VERT, &down_);
}

bool QuietScope::Bars::operator==(const Bars& other) const {
    return style_ == other.style_ && IsSameBar(across_, other.across_) && IsSameBar(down_, other.down_);
}

// The system's own procedure takes the visible style away for this message, and nothing is drawn in a window
// without that style.
QuietScope::QuietScope(HWND window) {
    const bool shown = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    window_ = shown ? window : nullptr;
    if (!shown) return;
    // What is still to be drawn of the frame would be forgotten with the rest.
    RedrawWindow(window, nullptr, nullptr, RDW_ERASENOW | RDW_NOCHILDREN);
    bars_ = Bars(window);
    DefWindowProcW(window, WM_SETREDRAW, FALSE, 0);
}

QuietScope::~QuietScope() {
    if (window_ == nullptr) return;
    DefWindowProcW(window_, WM_SETREDRAW, TRUE, 0);
    if (bars_ == Bars(window_)) {
        // The style that came back is a reason for the system to draw the frame.
        RedrawWindow(window_, nullptr, nullptr, RDW_VALIDATE | RDW_NOFRAME | RDW_NOCHILDREN);
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    } else {
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    }
}
