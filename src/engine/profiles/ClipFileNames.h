#pragma once

#include <cstdint>
#include <string>

// What the name of a file in a profile's directory tells, the name without the directory.

// The number in the name of a clip data file, written as the program writes it; 0 for any other name.
std::int32_t ClipNumberInName(const std::wstring& name);

// True for what a broken-off copy left: a copy takes its name when it is complete, until then it bears this
// one.
bool IsHalfCopyName(const std::wstring& name);
