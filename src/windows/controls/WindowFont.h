#pragma once

#include <windows.h>

// The drawing surface of a window with the window's own font selected, for measuring or drawing its text.
// While it lives.
class WindowFont {
 public:
    explicit WindowFont(HWND window) : window_(window), dc_(GetDC(window)), saved_(SaveDC(dc_)) {
        SelectObject(dc_, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    }
    ~WindowFont() {
        RestoreDC(dc_, saved_);
        ReleaseDC(window_, dc_);
    }
    WindowFont(const WindowFont&) = delete;
    WindowFont& operator=(const WindowFont&) = delete;

    HDC Dc() const { return dc_; }
    TEXTMETRICW Metrics() const {
        TEXTMETRICW metrics{};
        GetTextMetricsW(dc_, &metrics);
        return metrics;
    }

 private:
    HWND window_;
    HDC dc_;
    int saved_;
};
