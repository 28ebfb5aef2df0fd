#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>

// How a text box treats the keys that are typed into it, apart from the rules of its form.
struct KeyFilter {
    // Decides on a typed character (Backspace is 8); false swallows it. `length` counts the characters that
    // stay in the box when the selection is replaced; of a pasted text, those in front of `key` too.
    std::function<bool(wchar_t key, std::size_t length)> passes;
    // Called when a key is released; may be empty.
    std::function<void()> released;
};

// Puts the filter in front of a text box, until the box is destroyed. Pasting asks the filter for every
// character and is refused as a whole when one does not pass.
void FilterKeys(HWND textBox, KeyFilter filter);
