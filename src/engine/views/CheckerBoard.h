#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Draws a picture with transparent parts over a board of white and grey squares, so that they can be seen.
// The pixels are blue, green, red and alpha, a byte each, in rows of `width` from the top down; afterwards
// all of them are opaque.
void BlendOverCheckerBoard(std::span<std::uint8_t> pixels, std::size_t width);
