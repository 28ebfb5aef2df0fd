#pragma once

#include <cstddef>
#include <cstdint>

// The constants of the clip data file; the layout itself: docs/formats/clip-nxc.md.

// A record begins with its format number and the length of its name; behind the name stands the data's size.
inline constexpr std::size_t kRecordIdSize = 4;
inline constexpr std::size_t kRecordNameLengthSize = 2;
inline constexpr std::size_t kRecordDataSizeSize = 4;

// A metafile picture's data begins with its header: mapping mode, both extents and the handle.
inline constexpr std::size_t kPictureHeaderSize = 16;

// Positions and sizes are signed 32-bit numbers.
inline constexpr std::int64_t kLongestClipFile = 0x7FFFFFFF;
