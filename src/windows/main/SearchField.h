#pragma once

#include <windows.h>

#include <string>

#include "engine/views/MainLayout.h"
#include "windows/controls/Subclass.h"

// The field over the list into which the user types what is searched for. It says where that would be while
// it is empty.
class SearchField {
 public:
    bool Create(HWND parent, int control);
    HWND Window() const { return window_; }
    void Place(const Box& area);
    void SetFont(HFONT font);

    // What stands in it while nothing is typed.
    void SetHint(const std::wstring& hint);
    // While the mouse rests on it, it says what may be typed; until this is called, and when the user wants
    // no tips, nothing.
    void ShowTip(bool shown);
    std::wstring Text() const;
    // Sets the text as if it had been typed, and the keyboard behind it.
    void Begin(const std::wstring& text);
    void Clear();
    // True for a key that edits the field's text, which is no command then.
    bool Wants(const MSG& message) const;

 private:
    void MakeTip();

    HWND window_ = nullptr;
    HWND tip_ = nullptr;
    std::wstring hint_;
};
