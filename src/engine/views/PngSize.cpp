#include "engine/views/PngSize.h"

#include <algorithm>
#include <array>

#include "engine/clipboard/DibLayout.h"

namespace {

// The signature, the length of the first chunk and its name.
constexpr std::array<std::uint8_t, 16> kBeginning{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n',
                                                  0,    0,   0,   13,  'I',  'H',  'D',  'R'};

std::uint32_t BigEndian(std::span<const std::uint8_t> bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
           bytes[3];
}

}  // namespace

std::optional<PngSize> SizeOfPng(std::span<const std::uint8_t> head) {
    if (head.size() < kPngHead || !std::equal(kBeginning.begin(), kBeginning.end(), head.begin()))
        return std::nullopt;
    const PngSize size{BigEndian(head.subspan(16)), BigEndian(head.subspan(20))};
    const bool shown = size.Pixels() > 0 && size.Pixels() <= std::uint64_t{kMostDibPixels};
    return shown ? std::optional(size) : std::nullopt;
}

std::uint32_t ReductionOf(const PngSize& size) {
    std::uint32_t factor = 1;
    while (size.Pixels() / factor / factor > kMostPngPixels)
        ++factor;
    return factor;
}

void ReduceRows(std::span<const std::uint8_t> rows, std::uint32_t width, std::uint32_t factor,
                std::span<std::uint8_t> reduced) {
    const std::size_t rowBytes = std::size_t{4} * width;
    for (std::size_t at = 0; at + 4 <= reduced.size(); at += 4) {
        const std::size_t first = at * factor;
        const std::size_t end = std::min(first + std::size_t{4} * factor, rowBytes);
        std::array<std::uint64_t, 3> sums{};
        std::uint64_t alphas = 0;
        std::uint64_t pixels = 0;
        for (std::size_t row = 0; row + rowBytes <= rows.size(); row += rowBytes)
            for (std::size_t pixel = row + first; pixel < row + end; pixel += 4, ++pixels) {
                const std::uint64_t alpha = rows[pixel + 3];
                alphas += alpha;
                for (std::size_t colour = 0; colour < 3; ++colour)
                    sums[colour] += rows[pixel + colour] * alpha;
            }
        for (std::size_t colour = 0; colour < 3; ++colour)
            reduced[at + colour] =
                static_cast<std::uint8_t>(alphas > 0 ? (sums[colour] + alphas / 2) / alphas : 0);
        reduced[at + 3] = static_cast<std::uint8_t>(pixels > 0 ? (alphas + pixels / 2) / pixels : 0);
    }
}
