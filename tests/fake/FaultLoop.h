#pragma once

#include <functional>
#include <string>

#include "fake/FakePlatformTest.h"

// How the machine fails a program.
enum class Fault {
    OneCall,    // one call fails
    TwoCalls,   // one call fails, and another one some calls later
    Kill,       // the process ends in a call
    PowerLoss,  // and the current with it: what was not flushed is lost or torn, each file in its own way
};

// Strikes an operation in each call that can fail, in a world of its own each time: `make` leads to one (a
// pointer of any kind; the machine is its `fake`), and `check` follows, is told whether the fault struck,
// and is called once for each way in which a loss of the current can leave the disk. Ends with a run that the
// fault does not reach. Returns how often it struck.
template <typename Make, typename Operation, typename Check>
int StrikeEverywhere(Fault fault, const Make& make, const Operation& operation, const Check& check) {
    int strikes = 0;
    int seenChanges = -1;
    bool struck = true;
    for (int n = 1; struck; ++n) {
        bool again = true;
        for (int m = 1; again; ++m) {
            SCOPED_TRACE("call " + std::to_string(n) +
                         (fault == Fault::TwoCalls ? " and the one " + std::to_string(m) + " later" : ""));
            auto world = make();
            FakePlatform& fake = world->fake;
            const int changes = fake.files.Changes();
            if (fault == Fault::OneCall) fake.failures.FailNthOfAny(n);
            if (fault == Fault::TwoCalls) fake.failures.FailPairOfAny(n, m);
            if (fault == Fault::Kill || fault == Fault::PowerLoss) fake.failures.KillInNthOfAny(n);
            operation(*world);
            struck = fake.failures.Fired();
            again = fault == Fault::TwoCalls && struck && !fake.failures.Waiting();
            fake.failures.FailNone();
            if (fault != Fault::PowerLoss) {
                check(*world, struck);
                strikes += struck && (again || fault != Fault::TwoCalls);
            } else if (const int made = fake.files.Changes() - changes; made != seenChanges || !struck) {
                // What a call left as it was has been looked at.
                seenChanges = made;
                const FakeFiles::Disk disk = fake.files.TakeDisk();
                for (int loss = fake.files.CurrentLosses() - 1; loss >= 0; --loss) {
                    SCOPED_TRACE("loss " + std::to_string(loss));
                    fake.files.PutDisk(disk);
                    fake.files.LoseCurrent(loss);
                    check(*world, struck);
                    ++strikes;
                }
            }
            if (testing::Test::HasFailure()) return strikes;
        }
    }
    return strikes;
}

// The same where a test's own machine is used again and again.
inline int StrikeEverywhere(Fault fault, FakePlatform& fake, const std::function<void()>& prepare,
                            const std::function<void()>& operation,
                            const std::function<void(bool struck)>& check) {
    struct World {
        FakePlatform& fake;
    } world{fake};
    const auto make = [&] {
        prepare();
        return &world;
    };
    return StrikeEverywhere(
        fault, make, [&](World&) { operation(); }, [&](World&, bool struck) { check(struck); });
}
