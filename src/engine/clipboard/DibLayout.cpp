#include "engine/clipboard/DibLayout.h"

#include <algorithm>

namespace {

using Block = std::span<const std::uint8_t>;

// Header sizes by their version.
constexpr std::uint32_t kCoreHeader = 12;
constexpr std::uint32_t kInfoHeader = 40;
constexpr std::uint32_t kInfoHeaderWithMasks = 52;
constexpr std::uint32_t kInfoHeaderWithAlphaMask = 56;
constexpr std::uint32_t kHeaderV4 = 108;
constexpr std::uint32_t kHeaderV5 = kMostDibHeader;

constexpr std::uint32_t kRgb = 0;
constexpr std::uint32_t kRle8 = 1;
constexpr std::uint32_t kRle4 = 2;
constexpr std::uint32_t kBitFields = 3;

// The positions of the fields that all headers from kInfoHeader on share.
constexpr std::size_t kBitCountAt = 14;
constexpr std::size_t kCompressionAt = 16;
constexpr std::size_t kImageSizeAt = 20;
constexpr std::size_t kColoursUsedAt = 32;

std::uint32_t Word(Block block, std::size_t at) {
    return block[at] | static_cast<std::uint32_t>(block[at + 1]) << 8;
}

std::uint32_t DoubleWord(Block block, std::size_t at) {
    return Word(block, at) | Word(block, at + 2) << 16;
}

bool IsHeaderSize(std::uint32_t size) {
    switch (size) {
        case kCoreHeader:
        case kInfoHeader:
        case kInfoHeaderWithMasks:
        case kInfoHeaderWithAlphaMask:
        case kHeaderV4:
        case kHeaderV5:
            return true;
        default:
            return false;
    }
}

bool IsDrawable(const DibLayout& dib) {
    const int bits = dib.bitCount;
    switch (dib.compression) {
        case kRgb:
            return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
        case kRle8:
            return bits == 8 && !dib.topDown;
        case kRle4:
            return bits == 4 && !dib.topDown;
        case kBitFields:
            return bits == 16 || bits == 32;
        default:
            return false;
    }
}

// Follows run-length coded pixels to their end mark and sees that they stay within the picture and the bytes.
bool RunsStayInside(Block runs, const DibLayout& dib) {
    const bool four = dib.compression == kRle4;
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::size_t at = 0;
    while (at + 2 <= runs.size()) {
        const unsigned count = runs[at];
        const unsigned code = runs[at + 1];
        at += 2;
        if (count > 0) {
            x += count;
        } else if (code == 0) {  // end of the line
            x = 0;
            ++y;
            continue;
        } else if (code == 1) {  // end of the picture
            return true;
        } else if (code == 2) {  // a step to the right and down
            if (at + 2 > runs.size()) return false;
            x += runs[at];
            y += runs[at + 1];
            at += 2;
        } else {  // that many pixels as they are, padded to an even number of bytes
            const std::size_t bytes = four ? (code + 1) / 2 : code;
            at += (bytes + 1) / 2 * 2;
            x += code;
            if (at > runs.size()) return false;
        }
        if (x > dib.width || y >= dib.height) return false;
    }
    // Without an end mark the data must at least end with the picture.
    return y >= dib.height - 1 && at == runs.size();
}

struct Dimensions {
    std::int64_t width;
    std::int64_t height;
};

Dimensions DimensionsOf(Block block, bool core) {
    if (core) return {Word(block, 4), Word(block, 6)};
    return {static_cast<std::int32_t>(DoubleWord(block, 4)), static_cast<std::int32_t>(DoubleWord(block, 8))};
}

// The bytes between the header and the pixels: masks that stand behind it, and the colours.
std::uint64_t ColourBytes(Block block, std::uint32_t headerSize, const DibLayout& dib) {
    const std::uint64_t most = dib.bitCount <= 8 ? std::uint64_t{1} << dib.bitCount : 0;
    if (headerSize == kCoreHeader) return most * 3;
    const std::uint64_t masks = headerSize == kInfoHeader && dib.compression == kBitFields ? 12 : 0;
    const std::uint64_t used = DoubleWord(block, kColoursUsedAt);
    return masks + (used != 0 ? used : most) * 4;
}

// Each row is filled up to whole 32 bits.
std::size_t RowBytes(const DibLayout& dib) {
    return (static_cast<std::size_t>(dib.width) * static_cast<std::size_t>(dib.bitCount) + 31) / 32 * 4;
}

}  // namespace

std::optional<DibLayout> CheckDib(Block block) {
    const auto dib = CheckDibHead(block, block.size());
    if (!dib || !IsRunLengthCoded(*dib)) return dib;
    if (!RunsStayInside(block.subspan(dib->pixelOffset, dib->pixelBytes), *dib)) return std::nullopt;
    return dib;
}

std::optional<DibLayout> CheckDibHead(Block head, std::size_t size) {
    if (head.size() < kCoreHeader) return std::nullopt;
    const std::uint32_t headerSize = DoubleWord(head, 0);
    if (!IsHeaderSize(headerSize) || headerSize > head.size()) return std::nullopt;
    const bool core = headerSize == kCoreHeader;

    const Dimensions stored = DimensionsOf(head, core);
    DibLayout dib;
    dib.topDown = stored.height < 0;
    const std::int64_t height = dib.topDown ? -stored.height : stored.height;
    if (stored.width < 1 || height < 1 || stored.width * height > kMostDibPixels) return std::nullopt;
    dib.width = static_cast<std::int32_t>(stored.width);
    dib.height = static_cast<std::int32_t>(height);
    dib.bitCount = static_cast<int>(Word(head, core ? 10 : kBitCountAt));
    dib.compression = core ? kRgb : DoubleWord(head, kCompressionAt);
    if (!IsDrawable(dib)) return std::nullopt;

    const std::uint64_t colours = ColourBytes(head, headerSize, dib);
    if (dib.bitCount <= 8 && !core && DoubleWord(head, kColoursUsedAt) > (1u << dib.bitCount))
        return std::nullopt;
    if (colours > size - headerSize) return std::nullopt;
    dib.pixelOffset = headerSize + static_cast<std::size_t>(colours);
    dib.rowBytes = RowBytes(dib);
    const std::size_t remaining = size - dib.pixelOffset;

    const std::uint64_t said =
        IsRunLengthCoded(dib) ? DoubleWord(head, kImageSizeAt) : std::uint64_t{dib.rowBytes} * dib.height;
    if (said > remaining) return std::nullopt;
    dib.pixelBytes = said != 0 ? static_cast<std::size_t>(said) : remaining;
    return dib;
}

bool IsRunLengthCoded(const DibLayout& dib) {
    return dib.compression == kRle8 || dib.compression == kRle4;
}
