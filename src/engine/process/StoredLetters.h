#pragma once

#include <string>

// What the program's files keep of a text is its letters in the system's code page.

// Names the first letter of `text` that cannot be kept, and where it stands ("in einem Namen"); empty when
// all can.
std::wstring LetterRefusal(const std::wstring& text, const std::wstring& where);
