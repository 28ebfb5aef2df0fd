#pragma once

#include <string>

// The program's files keep a text's letters in the system's code page, and no others.

// Names the first letter of `text` that cannot be kept, and where it stands ("in einem Namen"); empty when
// all can.
std::wstring LetterRefusal(const std::wstring& text, const std::wstring& where);
