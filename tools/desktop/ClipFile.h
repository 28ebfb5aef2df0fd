#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// A clip data file as docs/formats/clip-nxc.md describes it, read by nothing of the program's own.

struct ClipRecord {
    std::int32_t format = 0;
    std::string name;
    std::string bytes;
    friend bool operator==(const ClipRecord&, const ClipRecord&) = default;
};

// Throws std::runtime_error when the file is no whole number of records.
std::vector<ClipRecord> ReadClipFile(const std::filesystem::path& path);
