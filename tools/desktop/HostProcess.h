#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// What the kernel below Wine counts of a program; Wine itself counts none of it.
struct HostFigures {
    std::uint64_t memory;  // bytes, of what it shares with others its part
    // Bytes that it wrote anywhere: to files, and some hundred with each question to the window server. Those
    // that went to the disk do not tell: for one byte the kernel counts all the memory that it reads ahead at
    // once.
    std::uint64_t written;
    std::uint64_t systemWrites;  // calls that wrote anywhere: nearly all are questions to the window server
    double processorTime;        // milliseconds
};

// Of the newest program whose command line holds this text; none on Windows itself.
std::optional<HostFigures> FiguresOnHost(std::wstring_view commandLine);
