#pragma once

#include <windows.h>

#include <optional>

#include "windows/controls/Pictures.h"
#include "windows/controls/Subclass.h"

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
    void ShowToolTips(bool shown);
    // Gives the bar the keyboard: the arrows go from button to button, Enter and the space bar press one,
    // Escape goes back. The keyboard is back where it came from before the command runs.
    void Enter();

    // Fills in a tool tip's text when the bar asks for it.
    void OnGetToolTip(NMTTDISPINFOW& info) const;

 private:
    static constexpr int kNone = -1;

    // Highlights the button at a place, or none.
    void MakeHot(int place);
    std::optional<TBBUTTON> UsableButton(int place) const;
    // The place of the next button that can be pressed, round and round; kNone when there is none.
    int NextUsable(int place, int step) const;
    bool OnKey(WPARAM key);
    void PressByKey(const TBBUTTON& button);

    HWND window_ = nullptr;
    UniqueImageList pictures_;
    Subclass keys_;
    HWND comeFrom_ = nullptr;
};
