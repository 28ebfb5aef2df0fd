#include "engine/flows/RestAfterWork.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(RestAfterWork, Left_IsAsLongAsTheWorkWithinBoundsAndEndsWhenTheClockIsSetBack) {
    constexpr FileTime kMillisecond = 10'000;
    constexpr FileTime kEnd = 1000 * kMillisecond;
    RestAfterWork rest(20ms, 250ms);
    EXPECT_EQ(rest.Left(kEnd), 0ms);
    rest.WorkDone(50ms, kEnd);
    EXPECT_EQ(rest.Left(kEnd), 50ms);
    EXPECT_EQ(rest.Left(kEnd + 50 * kMillisecond - 1), 1ms);
    EXPECT_EQ(rest.Left(kEnd + 50 * kMillisecond), 0ms);
    EXPECT_EQ(rest.Left(0), 0ms);
    rest.WorkDone(0ms, kEnd);
    EXPECT_EQ(rest.Left(kEnd), 20ms);
    rest.WorkDone(20s, kEnd);
    EXPECT_EQ(rest.Left(kEnd), 250ms);
}
