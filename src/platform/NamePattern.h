#pragma once

#include <string_view>

// True when a file's name matches a pattern of "*" and "?", without regard to case. "*.*" matches every name.
// Only the name itself counts, never a short name that the file system keeps beside it.
bool MatchesNamePattern(std::wstring_view name, std::wstring_view pattern);
// True when the text holds "*" or "?".
bool IsNamePattern(std::wstring_view text);
