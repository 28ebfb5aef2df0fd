#include "engine/process/Later.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Busy.h"

namespace {

class OnceTest : public testing::Test, protected Scheduler {
 protected:
    void Later(std::chrono::milliseconds delay, std::function<void()> action) override {
        if (std::exchange(fails, false)) throw std::bad_alloc();
        delays.push_back(delay.count());
        waiting.push_back(std::move(action));
    }
    void BecomeIdle() {
        for (const auto& action : std::exchange(waiting, {}))
            action();
    }

    bool fails = false;
    std::vector<std::chrono::milliseconds::rep> delays;
    std::vector<std::function<void()>> waiting;
    int times = 0;
    std::optional<Once> once{std::in_place, static_cast<Scheduler&>(*this), [this] { ++times; }};
};

TEST_F(OnceTest, PutOff_ComesOnceAndIsDueOnlyWhenItIsSureToCome) {
    fails = true;
    EXPECT_THROW(once->PutOff(), std::bad_alloc);
    EXPECT_FALSE(once->IsDue());
    once->PutOff(std::chrono::milliseconds(7));
    once->PutOff(std::chrono::milliseconds(3));
    EXPECT_TRUE(once->IsDue());
    EXPECT_EQ(delays, (decltype(delays){7}));
    BecomeIdle();
    EXPECT_EQ(times, 1);
    EXPECT_FALSE(once->IsDue());
    once->PutOff();
    BecomeIdle();
    EXPECT_EQ(times, 2);
}

TEST_F(OnceTest, PutOff_WaitsUntilTheProgramIsFree) {
    once->PutOff();
    {
        const BusyScope menu(Busy::Menu);
        BecomeIdle();
        EXPECT_EQ(times, 0);
        EXPECT_TRUE(once->IsDue());
        // What cannot wait any longer is not due: it can be put off again.
        fails = true;
        EXPECT_THROW(BecomeIdle(), std::bad_alloc);
        EXPECT_FALSE(once->IsDue());
        once->PutOff();
    }
    BecomeIdle();
    EXPECT_EQ(times, 1);
}

TEST_F(OnceTest, Action_MayPutItselfOffAndMayEndIt) {
    once.emplace(static_cast<Scheduler&>(*this), [this] {
        once->PutOff();
        if (++times == 2) once.reset();
    });
    once->PutOff();
    for (int i = 0; i < 4; ++i)
        BecomeIdle();
    EXPECT_EQ(times, 2);
}

}  // namespace
