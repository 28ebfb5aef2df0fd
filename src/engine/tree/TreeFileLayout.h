#pragma once

#include <cstddef>
#include <cstdint>

// The layout of the tree data file nxclip.nxp, byte by byte in docs/formats/nxclip-nxp.md: a header, then the
// records from the lower bound on.

// Count (4), dimensions (2), element count (4), lower bound (4).
inline constexpr std::size_t kTreeFileHeaderSize = 14;
inline constexpr std::size_t kCountPosition = 0;
inline constexpr std::size_t kElementCountPosition = 6;
inline constexpr std::int16_t kTreeFileDimensions = 1;
inline constexpr std::int32_t kTreeFileLowerBound = 0;

// A record with empty texts and empty variants; no record is shorter.
inline constexpr std::size_t kSmallestTreeRecordSize = 18;

// The 16-bit type in front of a variant's value.
enum class VariantType : std::uint16_t {
    Empty = 0,    // no value
    Null = 1,     // no value
    Int16 = 2,    // 2 bytes
    Int32 = 3,    // 4 bytes
    Text = 8,     // 16-bit byte count and that many bytes
    Boolean = 11  // 2 bytes, -1 or 0
};
