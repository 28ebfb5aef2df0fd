#include "platform/Guard.h"

#include <gtest/gtest.h>

#include "fake/FakePlatformTest.h"
#include "platform/RuntimeError.h"

namespace {

class GuardTest : public FakePlatformTest {};

TEST_F(GuardTest, Guarded_TurnsEveryExceptionIntoTheFallbackAndTellsItLater) {
    EXPECT_EQ(Guarded(1, [] { return 2; }), 2);
    EXPECT_TRUE(fake.user.tellings.empty());

    EXPECT_EQ(Guarded(1, []() -> int { throw RuntimeError(ErrorNumber::DiskFull, L"voll"); }), 1);
    EXPECT_EQ(Guarded(1, []() -> int { throw 4; }), 1);
    EXPECT_EQ(fake.user.tellings,
              (std::vector<std::wstring>{L"Fataler Fehler: voll", L"Fataler Fehler: Interner Fehler"}));
    EXPECT_TRUE(fake.user.messages.empty()) << "never inside the call";
}

}  // namespace
