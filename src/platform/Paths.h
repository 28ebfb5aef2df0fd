#pragma once

#include <string>

// Paths as texts; nothing here looks at the disk. Parts are separated by "\".

// The directory with "\" in between where it does not end in one, and the name.
std::wstring JoinDirectory(const std::wstring& directory, const std::wstring& name);
// The part before the last "\", but with its "\" when it is the root of a drive; empty when there is no "\".
std::wstring DirectoryOf(const std::wstring& path);
// The directory above one, which may end in "\"; the root of a drive stays itself.
std::wstring DirectoryAbove(const std::wstring& directory);
// The part behind the last "\".
std::wstring LastPartOf(const std::wstring& path);
// With "\" at its end, otherwise as it was written. Empty gives "\".
std::wstring WithBackslash(const std::wstring& directory);
// Without the "\" at its end, if it has one; the root of a drive keeps it.
std::wstring WithoutBackslash(const std::wstring& directory);
// A full path as the system's calls take it: prefixed when it is too long for the usual limit of 260
// characters, which does not hold for prefixed paths.
std::wstring WithLongPathPrefix(const std::wstring& fullPath);
// True for a path that means the same wherever the program stands: "C:\..." or "\\server\share...".
bool IsFullPath(const std::wstring& path);
