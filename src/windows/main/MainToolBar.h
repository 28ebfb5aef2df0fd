#pragma once

#include <windows.h>

#include "windows/controls/Pictures.h"

// The main window's tool bar. Its fourteen buttons are addressed by their numbers (tbbProfil and on), each of
// which stands for the key of the same name.
class MainToolBar {
 public:
    bool Create(HWND parent, int control);
    HWND Window() const { return window_; }

    // Loads the pictures for a resolution in dots per inch.
    void SetDpi(UINT dpi);
    // Fits the bar to its parent's width, in as many rows as it needs; the result is its height in pixels.
    int Fit();

    void Enable(int button, bool enabled);
    void Press(int button, bool pressed);
    bool Pressed(int button) const;
    void ShowToolTips(bool shown) { toolTips_ = shown; }

    // Fills in a tool tip's text when the bar asks for it.
    void OnGetToolTip(NMTTDISPINFOW& info) const;

 private:
    HWND window_ = nullptr;
    UniqueImageList pictures_;
    bool toolTips_ = true;
};
