#include "engine/views/CheckerBoard.h"

#include <gtest/gtest.h>

#include <vector>

TEST(CheckerBoard, BlendOverCheckerBoard_ShowsTheBoardAsFarAsThePictureIsTransparent) {
    constexpr std::size_t kWidth = 9;
    std::vector<std::uint8_t> pixels(kWidth * 9 * 4, 0);
    const auto pixel = [&](std::size_t column, std::size_t row) {
        return &pixels[(row * kWidth + column) * 4];
    };
    pixel(1, 0)[3] = 0xFF;  // black, and not transparent at all
    pixel(2, 0)[3] = 0x80;  // black, half of it
    BlendOverCheckerBoard(pixels, kWidth);
    EXPECT_EQ(pixel(0, 0)[0], 0xFF);
    EXPECT_EQ(pixel(1, 0)[0], 0);
    EXPECT_EQ(pixel(2, 0)[0], 127);
    EXPECT_EQ(pixel(8, 0)[1], 0xCC);
    EXPECT_EQ(pixel(0, 8)[2], 0xCC);
    EXPECT_EQ(pixel(8, 8)[2], 0xFF);
    for (std::size_t alpha = 3; alpha < pixels.size(); alpha += 4)
        ASSERT_EQ(pixels[alpha], 0xFF);
}
