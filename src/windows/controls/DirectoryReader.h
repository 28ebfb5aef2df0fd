#pragma once

#include <optional>
#include <string>
#include <vector>

// What a directory holds, for the choosers.
struct DirectoryContent {
    std::vector<std::wstring> directories;  // without "." and "..", sorted
    std::vector<std::wstring> files;        // sorted
};

// Reads a directory, but waits for its drive no longer than a few seconds: one that hangs is given up and
// left to a thread of its own, so that no chooser freezes with it. None when it cannot be read in that time.
std::optional<DirectoryContent> ReadDirectory(const std::wstring& directory);
