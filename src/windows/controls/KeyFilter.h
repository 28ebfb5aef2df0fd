#pragma once

#include <windows.h>

#include <functional>

// What a text box does with the keys typed into it, beside what the rules of its form say.
struct KeyFilter {
    // Decides on a typed character (Backspace is 8); false swallows it.
    std::function<bool(wchar_t key)> passes;
    // Called when a key is released; may be empty.
    std::function<void()> released;
};

// Puts the filter in front of a text box; it goes with the box. Pasting asks the filter for every character
// and is refused as a whole when one does not pass.
void FilterKeys(HWND textBox, KeyFilter filter);
