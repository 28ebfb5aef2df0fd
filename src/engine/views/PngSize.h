#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// What can be known of a PNG picture before it is decoded, and how a large one is made smaller.

struct PngSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    std::uint64_t Pixels() const { return std::uint64_t{width} * height; }
};
// The bytes at its beginning that tell its size.
inline constexpr std::size_t kPngHead = 24;
// None when it is no PNG picture, is empty, or is larger than any picture shown (kMostDibPixels).
std::optional<PngSize> SizeOfPng(std::span<const std::uint8_t> head);

// Of more pixels than this, as many become one of those that are shown.
inline constexpr std::uint64_t kMostPngPixels = 16 << 20;
// How many columns and rows become one, for a picture of this size; 1 for one that is shown as it is.
std::uint32_t ReductionOf(const PngSize& size);

// Makes one row of `factor` or fewer rows of `width` pixels: blue, green, red and alpha, a byte each. What is
// transparent counts for nothing. `reduced` has room for the columns that are left, rounded up.
void ReduceRows(std::span<const std::uint8_t> rows, std::uint32_t width, std::uint32_t factor,
                std::span<std::uint8_t> reduced);
