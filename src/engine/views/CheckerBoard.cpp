#include "engine/views/CheckerBoard.h"

namespace {

constexpr std::size_t kSquare = 8;
constexpr unsigned kWhite = 0xFF;
constexpr unsigned kGrey = 0xCC;

}  // namespace

void BlendOverCheckerBoard(std::span<std::uint8_t> pixels, std::size_t width) {
    for (std::size_t at = 0; at + 4 <= pixels.size(); at += 4) {
        const unsigned alpha = pixels[at + 3];
        if (alpha == 0xFF) continue;
        const std::size_t column = at / 4 % width;
        const std::size_t row = at / 4 / width;
        const unsigned board = (column / kSquare + row / kSquare) % 2 == 0 ? kWhite : kGrey;
        for (std::size_t colour = at; colour < at + 3; ++colour)
            pixels[colour] =
                static_cast<std::uint8_t>((pixels[colour] * alpha + board * (0xFF - alpha) + 127) / 0xFF);
        pixels[at + 3] = 0xFF;
    }
}
