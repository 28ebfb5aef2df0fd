#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// What a device-independent bitmap (header, colours, pixels in one block) says of itself, checked against the
// bytes that are really there. Nobody vouches for such a block: the system is shown only what passed here.
struct DibLayout {
    std::int32_t width = 0;   // pixels, at least 1
    std::int32_t height = 0;  // pixels, at least 1, whichever way round it is stored
    bool topDown = false;
    int bitCount = 0;
    std::uint32_t compression = 0;
    std::size_t rowBytes = 0;     // unless the pixels are run-length coded
    std::size_t pixelOffset = 0;  // from the block's start, in bytes
    std::size_t pixelBytes = 0;   // from there, all within the block
};

// No picture larger than this is shown, in pixels.
inline constexpr std::int64_t kMostDibPixels = 100'000'000;

// None when the block is damaged, of a kind that Windows does not draw, or too large.
std::optional<DibLayout> CheckDib(std::span<const std::uint8_t> block);

// No header is longer, its colours not counted.
inline constexpr std::size_t kMostDibHeader = 124;

// The same for a block of `size` bytes of which only the beginning is there, its header at least. Run-length
// coded pixels are not looked at: such a block must pass CheckDib as well.
std::optional<DibLayout> CheckDibHead(std::span<const std::uint8_t> head, std::size_t size);
bool IsRunLengthCoded(const DibLayout& dib);
