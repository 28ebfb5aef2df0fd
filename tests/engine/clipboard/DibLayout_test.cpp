#include "engine/clipboard/DibLayout.h"

#include <gtest/gtest.h>

#include <span>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

void Put(Bytes& bytes, std::size_t at, std::uint64_t value, int width) {
    for (int i = 0; i < width; ++i)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
}

// A block with a header of `headerSize` and `behind` bytes of colours and pixels.
Bytes Dib(std::uint32_t headerSize, std::int32_t width, std::int32_t height, int bits,
          std::uint32_t compression, std::size_t behind) {
    Bytes bytes(headerSize + behind);
    Put(bytes, 0, headerSize, 4);
    if (headerSize == 12) {
        Put(bytes, 4, static_cast<std::uint16_t>(width), 2);
        Put(bytes, 6, static_cast<std::uint16_t>(height), 2);
        Put(bytes, 8, 1, 2);
        Put(bytes, 10, static_cast<std::uint64_t>(bits), 2);
        return bytes;
    }
    Put(bytes, 4, static_cast<std::uint32_t>(width), 4);
    Put(bytes, 8, static_cast<std::uint32_t>(height), 4);
    Put(bytes, 12, 1, 2);
    Put(bytes, 14, static_cast<std::uint64_t>(bits), 2);
    Put(bytes, 16, compression, 4);
    return bytes;
}

TEST(DibLayout, CheckEveryKind_FindsThePixels) {
    struct Case {
        std::uint32_t header;
        int bits;
        std::uint32_t compression;
        std::size_t colours;
        std::size_t line;  // of 5 pixels
    };
    for (const Case& c :
         {Case{40, 1, 0, 8, 4}, Case{40, 4, 0, 64, 4}, Case{40, 8, 0, 1024, 8}, Case{40, 16, 0, 0, 12},
          Case{40, 24, 0, 0, 16}, Case{40, 32, 0, 0, 20}, Case{40, 16, 3, 12, 12}, Case{40, 32, 3, 12, 20},
          Case{52, 32, 3, 0, 20}, Case{56, 16, 3, 0, 12}, Case{108, 32, 3, 0, 20}, Case{124, 24, 0, 0, 16},
          Case{124, 8, 0, 1024, 8}, Case{12, 24, 0, 0, 16}, Case{12, 4, 0, 48, 4}}) {
        const Bytes whole = Dib(c.header, 5, 3, c.bits, c.compression, c.colours + 3 * c.line);
        const auto dib = CheckDib(whole);
        ASSERT_TRUE(dib) << c.header << " " << c.bits;
        EXPECT_EQ(dib->pixelOffset, c.header + c.colours);
        EXPECT_EQ(dib->pixelBytes, 3 * c.line);
        EXPECT_EQ(dib->width, 5);
        EXPECT_EQ(dib->height, 3);
        const Bytes oneShort(whole.begin(), whole.end() - 1);
        EXPECT_FALSE(CheckDib(oneShort)) << c.header << " " << c.bits;
        EXPECT_FALSE(CheckDib(std::span(whole).first(c.header + c.colours / 2))) << "half of the colours";
    }
    const auto topDown = CheckDib(Dib(40, 5, -3, 32, 0, 60));
    ASSERT_TRUE(topDown);
    EXPECT_TRUE(topDown->topDown);
    EXPECT_EQ(topDown->height, 3);
}

TEST(DibLayout, CheckDamagedHeader_Refused) {
    EXPECT_FALSE(CheckDib({}));
    EXPECT_FALSE(CheckDib(Bytes(11)));
    EXPECT_FALSE(CheckDib(Dib(40, 0, 3, 32, 0, 60)));
    EXPECT_FALSE(CheckDib(Dib(40, -5, 3, 32, 0, 60)));
    EXPECT_FALSE(CheckDib(Dib(40, 5, INT32_MIN, 32, 0, 60)));
    EXPECT_FALSE(CheckDib(Dib(40, INT32_MAX, INT32_MAX, 32, 0, 60)));
    EXPECT_FALSE(CheckDib(Dib(40, 5, 3, 7, 0, 600)));
    EXPECT_FALSE(CheckDib(Dib(40, 5, 3, 32, 4, 600))) << "a picture file inside is not drawn";
    Bytes oddHeader = Dib(40, 5, 3, 32, 0, 60);
    Put(oddHeader, 0, 41, 4);
    EXPECT_FALSE(CheckDib(oddHeader));
    Bytes allColours = Dib(40, 5, 3, 8, 0, 1024 + 24);
    Put(allColours, 32, 256, 4);
    EXPECT_TRUE(CheckDib(allColours)) << "the most that there can be";
    Bytes manyColours = Dib(40, 5, 3, 8, 0, 1100);
    Put(manyColours, 32, 0xFFFFFFFF, 4);
    EXPECT_FALSE(CheckDib(manyColours));
    Bytes unusedColours = Dib(40, 5, 3, 24, 0, 48);
    Put(unusedColours, 32, 0x40000000, 4);
    EXPECT_FALSE(CheckDib(unusedColours)) << "colours beyond the block";
}

TEST(DibLayout, CheckRunLengths_StayWithinThePicture) {
    const auto rle = [](int bits, const Bytes& runs, std::size_t said = 0) {
        const std::size_t colours = std::size_t{4} << bits;
        Bytes bytes = Dib(40, 4, 2, bits, bits == 8 ? 1 : 2, colours + runs.size());
        Put(bytes, 20, said, 4);
        std::copy(runs.begin(), runs.end(), bytes.begin() + 40 + static_cast<std::ptrdiff_t>(colours));
        return CheckDib(bytes).has_value();
    };
    const auto rle8 = [&](const Bytes& runs) { return rle(8, runs); };
    EXPECT_TRUE(rle(4, {0, 4, 0x12, 0x34, 0, 0, 4, 9, 0, 1}));
    EXPECT_FALSE(rle(4, {0, 5, 1, 2, 3, 0, 0, 1})) << "past the right edge";
    EXPECT_TRUE(rle(8, {4, 7, 0, 0, 4, 9, 0, 1}, 8));
    EXPECT_FALSE(rle(8, {4, 7, 0, 0, 4, 9, 0, 1}, 9)) << "more than there is";
    EXPECT_FALSE(rle(8, {4, 7, 0, 0, 4, 9, 0, 1}, 2)) << "the first line alone";
    EXPECT_TRUE(rle8({4, 7, 0, 0, 4, 9, 0, 1}));
    EXPECT_TRUE(rle8({0, 4, 1, 2, 3, 4, 0, 0, 4, 9, 0, 1}));
    EXPECT_TRUE(rle8({0, 3, 1, 2, 3, 0, 0, 0, 4, 9, 0, 1})) << "three pixels fill four bytes";
    EXPECT_TRUE(rle8({0, 2, 1, 1, 3, 7, 0, 1}));
    EXPECT_FALSE(rle8({5, 7, 0, 1})) << "past the right edge";
    EXPECT_FALSE(rle8({4, 7, 0, 0, 4, 7, 0, 0, 1, 7, 0, 1})) << "past the last line";
    EXPECT_TRUE(rle8({4, 7, 0, 0, 4, 9, 0, 0, 0, 1})) << "the last line is ended as well";
    EXPECT_FALSE(rle8({0, 2, 200, 0, 0, 1})) << "a step out";
    EXPECT_FALSE(rle8({0, 2, 0, 2, 0, 1})) << "a step past the last line";
    EXPECT_FALSE(rle8({4, 7, 0, 2, 1, 0, 0, 1})) << "a step past the edge";
    EXPECT_FALSE(rle8({0, 4, 1})) << "cut short";
    EXPECT_TRUE(rle8({4, 7, 0, 0, 4, 9})) << "no end mark, but all lines";
    EXPECT_FALSE(rle8({4, 7})) << "no end mark, and a line is missing";
    EXPECT_FALSE(rle8({4, 7, 0, 0, 4, 9, 1})) << "half a run behind them";
    for (const int bits : {4, 8})
        EXPECT_FALSE(CheckDib(Dib(40, 4, -2, bits, bits == 8 ? 1 : 2, 1032))) << "runs go upwards only";
}

}  // namespace
