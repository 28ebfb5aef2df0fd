#pragma once

#include <functional>
#include <string>

#include "fake/FakePlatformTest.h"

// Runs `operation` again and again, each time with another one of the machine's calls failing, until a run
// meets no failure. `check` follows each run and is told whether a call failed. `calls` is how many calls can
// fail: a call that is no longer made, or a loop that ends too soon, does not go unnoticed.
inline void FailEachCall(FakePlatform& fake, int calls, const std::function<void()>& prepare,
                         const std::function<void()>& operation,
                         const std::function<void(bool failed)>& check) {
    int reached = 0;
    for (bool failed = true; failed && !testing::Test::HasFatalFailure();) {
        SCOPED_TRACE("call " + std::to_string(reached + 1) + " fails");
        prepare();
        fake.FailNthOfAny(reached + 1);
        operation();
        failed = fake.Fired();
        fake.failures.FailNone();
        check(failed);
        if (failed) ++reached;
    }
    EXPECT_EQ(reached, calls) << "calls that can fail";
}
