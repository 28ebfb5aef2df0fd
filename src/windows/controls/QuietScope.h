#pragma once

#include <windows.h>

// While it lives, a window that is shown draws nothing, whatever happens to it; afterwards it is painted
// once, as a whole. What a control does about WM_SETREDRAW itself leaves out its scroll bars, and each of
// those takes longer to draw than all the rest.
class QuietScope {
 public:
    explicit QuietScope(HWND window);
    ~QuietScope();
    QuietScope(const QuietScope&) = delete;
    QuietScope& operator=(const QuietScope&) = delete;

 private:
    HWND window_;  // null when it was not shown, or quiet already
};
