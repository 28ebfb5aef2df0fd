#pragma once

#include <algorithm>
#include <string_view>

// Names of atoms and clipboard formats, compared without regard to the case of A to Z.
inline bool EqualNoAsciiCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}
