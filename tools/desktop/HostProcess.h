#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// What the kernel below Wine counts of a program; Wine itself counts none of it.
struct HostFigures {
    std::uint64_t memory;        // bytes, of what it shares with others its part
    std::uint64_t written;       // bytes that went to files
    std::uint64_t systemWrites;  // calls that wrote anywhere: nearly all are questions to the window server
};

// Of the newest program whose command line holds this text; none on Windows itself.
std::optional<HostFigures> FiguresOnHost(std::wstring_view commandLine);
