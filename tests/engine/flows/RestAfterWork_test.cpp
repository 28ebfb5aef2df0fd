#include "engine/flows/RestAfterWork.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(RestAfterWork, Left_IsAsLongAsTheWorkAndEndsWhenTheClockIsSetBack) {
    constexpr FileTime kMillisecond = 10'000;
    constexpr FileTime kStart = 1000 * kMillisecond;
    RestAfterWork rest(20ms);
    EXPECT_EQ(rest.Left(kStart), 0ms);
    rest.WorkDone(kStart, kStart + 50 * kMillisecond);
    EXPECT_EQ(rest.Left(kStart + 50 * kMillisecond), 50ms);
    EXPECT_EQ(rest.Left(kStart + 100 * kMillisecond - 1), 1ms);
    EXPECT_EQ(rest.Left(kStart + 100 * kMillisecond), 0ms);
    EXPECT_EQ(rest.Left(0), 0ms);
    // Work of no measurable length, or while the clock was set back.
    rest.WorkDone(kStart, kStart - 5);
    EXPECT_EQ(rest.Left(kStart - 5), 20ms);
}
