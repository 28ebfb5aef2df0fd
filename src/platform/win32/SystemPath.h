#pragma once

#include <string>

// `path` as the system's file calls take it: made absolute and, when it is too long for them, prefixed so
// that the usual limit of 260 characters does not hold. An empty path stays empty.
std::wstring SystemPath(const std::wstring& path);
