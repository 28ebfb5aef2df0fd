#include <limits>

#include "contract/ContractTest.h"
#include "fake/FakeClock.h"
#include "platform/Clock.h"
#include "platform/Text.h"

namespace {

using ClockContract = ContractTest;

}  // namespace

TEST_F(ClockContract, Now_GoesOnWhileWaiting) {
    const FileTime before = clock.Now();
    EXPECT_GE(before, FileTimeOf(1999, 1, 1, 0, 0, 0));
    clock.Pause(std::chrono::milliseconds(30));
    EXPECT_GE(clock.Now(), before + 20 * 10'000);  // a system tick may be missing
}

TEST_F(ClockContract, DateText_CanStandInATag) {
    const std::wstring text = clock.DateText(FileTimeOf(1999, 11, 15, 12, 34, 56));
    EXPECT_NE(text.find(L"99"), std::wstring::npos);
    EXPECT_NE(text.find(L"34"), std::wstring::npos);
    EXPECT_EQ(text.find(L'&'), std::wstring::npos);
    EXPECT_TRUE(FitsAnsi(text));
    EXPECT_NE(text, clock.DateText(FileTimeOf(1999, 11, 15, 12, 34, 57)));
    EXPECT_NE(clock.DateText(0), L"");
    EXPECT_EQ(clock.DateText(std::numeric_limits<FileTime>::max()), L"");
}
