#pragma once

#include <windows.h>

#include <functional>

// The bar between the tree and the list (imgSplitter). While it is dragged a second bar (picSplitter) moves
// along and shows where it would go; Escape gives it up. With the keyboard on it the arrow keys move it.
class Splitter {
 public:
    // `bar` and `movingBar` are the control numbers. `clamp` turns a wanted left edge (pixels of the parent)
    // into a permitted one, `moved` is told the new left edge at the end of a drag.
    bool Create(HWND parent, int bar, int movingBar, std::function<int(int)> clamp,
                std::function<void(int)> moved);
    HWND Window() const { return bar_; }

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void KeyDown(WPARAM key);
    void MouseDown();
    void MouseMove(int x);
    void EndDrag(bool keep);

    HWND bar_ = nullptr;
    HWND movingBar_ = nullptr;
    std::function<int(int)> clamp_;
    std::function<void(int)> moved_;
    bool moving_ = false;
    HWND focusBefore_ = nullptr;  // had the keyboard before the drag
    int left_ = 0;                // of the moving bar, pixels of the parent
};
