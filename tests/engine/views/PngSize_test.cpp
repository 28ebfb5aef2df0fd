#include "engine/views/PngSize.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::optional<PngSize> SizeIn(std::string head) {
    return SizeOfPng({reinterpret_cast<const std::uint8_t*>(head.data()), head.size()});
}

TEST(PngSize, SizeOfPng_TrustsNoHeader) {
    using namespace std::string_literals;
    const std::string front = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR"s;
    const auto size = SizeIn(front + "\0\0\x20\x01\0\0\x01\x02"s);
    ASSERT_TRUE(size);
    EXPECT_EQ(size->width, 0x2001u);
    EXPECT_EQ(size->height, 0x102u);
    EXPECT_FALSE(SizeIn(front + "\0\0\x20\x01\0\0\x01"s)) << "cut";
    EXPECT_FALSE(SizeIn(front + "\0\0\x20\x01\0\0\0\0"s)) << "empty";
    EXPECT_FALSE(SizeIn(front + std::string(8, '\xFF'))) << "larger than any";
    EXPECT_FALSE(SizeIn("\x89PNG\r\n\x1A\n\0\0\0\rIDAT\0\0\0\1\0\0\0\1"s)) << "another chunk first";
}

TEST(PngSize, ReduceRows_GivesWhatIsSeen) {
    EXPECT_EQ(ReductionOf({4096, 4096}), 1u);
    EXPECT_EQ(ReductionOf({4097, 4096}), 2u);
    EXPECT_EQ(ReductionOf({100'000'000, 1}), 3u);
    // Three columns and two rows, by twos: the last column is alone, and half of what is there is
    // transparent.
    const std::vector<std::uint8_t> rows{10, 20, 30, 255, 20, 40, 60, 255, 1, 2, 3, 255,  //
                                         99, 99, 99, 0,   99, 99, 99, 0,   3, 4, 5, 255};
    std::vector<std::uint8_t> reduced(8);
    ReduceRows(rows, 3, 2, reduced);
    EXPECT_EQ(reduced, (std::vector<std::uint8_t>{15, 30, 45, 128, 2, 3, 4, 255}));
}

}  // namespace
