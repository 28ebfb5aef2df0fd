#pragma once

#include <windows.h>

// While it lives, a window that is shown draws nothing, whatever happens to it; afterwards it is painted
// once, as a whole, but its scroll bars only when they have changed. What a control does about WM_SETREDRAW
// itself leaves out its scroll bars, and each of those takes longer to draw than all the rest.
class QuietScope {
 public:
    explicit QuietScope(HWND window);
    ~QuietScope();
    QuietScope(const QuietScope&) = delete;
    QuietScope& operator=(const QuietScope&) = delete;

 private:
    class Bars {
     public:
        Bars() = default;
        explicit Bars(HWND window);
        bool operator==(const Bars& other) const;

     private:
        LONG_PTR style_ = 0;
        SCROLLINFO across_{}, down_{};
    };

    HWND window_;  // null when it was not shown, or quiet already
    Bars bars_;
};
