#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/profiles/ProfileWorldTest.h"
#include "platform/Text.h"

// What an operation may leave changed or not.
struct WorldState {
    std::wstring memory;
    std::wstring disk;
    std::wstring list;
    std::wstring container;
    std::set<std::wstring> files;

    friend bool operator==(const WorldState&, const WorldState&) = default;
};

inline WorldState StateOf(ProfileWorld& world) {
    return {world.MemoryOutline(), world.DiskOutline(), world.ListOutline(), world.container.Title(),
            world.Files()};
}

// Runs an operation again and again, each time in a new world and with another one of its calls failing,
// until a run meets no failure: that one must succeed. After a run that reports failure everything must be as
// it was, and the user must know; after a run that reports success, `after` must hold. Nothing may ever be
// damaged. Returns the number of failures that were tried.
inline int FailEveryStep(WriteFailure mode, const std::function<void(ProfileWorld&)>& prepare,
                         const std::function<bool(ProfileWorld&)>& operation,
                         const std::function<void(ProfileWorld&)>& after) {
    for (int n = 1;; ++n) {
        SCOPED_TRACE("call " + std::to_string(n) + " fails");
        ProfileWorld world;
        prepare(world);
        const WorldState before = StateOf(world);
        world.fake.user.messages.clear();
        world.fake.user.tellings.clear();
        world.fake.failures.writeFailure = mode;
        world.fake.FailNthOfAny(n);
        const bool done = operation(world);
        const bool fired = world.fake.Fired();
        world.fake.failures.FailNone();
        const bool told = !world.fake.user.messages.empty() || !world.fake.user.tellings.empty();
        EXPECT_EQ(world.Damage(), std::vector<std::wstring>());
        EXPECT_EQ(world.MemoryOutline(), world.DiskOutline());
        EXPECT_EQ(world.fake.user.pointer, PointerShape::Normal);
        // The operation's own list, or the old one, of which the user was told.
        if (world.StoredList() != world.ListOutline()) {
            EXPECT_EQ(world.StoredList(), before.list);
            EXPECT_TRUE(told);
        }
        if (done) {
            after(world);
        } else {
            EXPECT_EQ(StateOf(world), before);
            EXPECT_TRUE(told);
        }
        if (!fired) {
            EXPECT_TRUE(done);
            return n - 1;
        }
        if (testing::Test::HasFailure()) return n;
    }
}

// The same with two failures in a row: the call n, and the one `m` calls after it. Whatever the operation
// says then, tree and disk agree, and no clip is without its data. Returns the number of pairs that were
// tried.
inline int FailEveryPair(WriteFailure mode, const std::function<void(ProfileWorld&)>& prepare,
                         const std::function<bool(ProfileWorld&)>& operation) {
    int pairs = 0;
    bool firstFired = true;
    for (int n = 1; firstFired; ++n) {
        bool secondFired = true;
        for (int m = 1; secondFired; ++m, ++pairs) {
            SCOPED_TRACE("calls " + std::to_string(n) + " and " + std::to_string(m) + " later fail");
            ProfileWorld world;
            prepare(world);
            world.fake.failures.writeFailure = mode;
            world.fake.failures.FailPairOfAny(n, m);
            operation(world);
            firstFired = world.fake.Fired();
            secondFired = firstFired && !world.fake.failures.Waiting();
            world.fake.failures.FailNone();
            EXPECT_EQ(world.Damage(), std::vector<std::wstring>());
            EXPECT_EQ(world.MemoryOutline(), world.DiskOutline());
            if (testing::Test::HasFailure()) return pairs;
        }
    }
    return pairs;
}

// The process ends inside each call of the operation, one after the other. What the next start finds on disk
// is whole: the list of before or the new one, every node has its data, and every clip whose name is in
// `keeps` is there. Returns the number of kills.
inline int KillInEveryStep(const std::function<void(ProfileWorld&)>& prepare,
                           const std::function<bool(ProfileWorld&)>& operation,
                           const std::vector<std::wstring>& keeps) {
    bool fired = true;
    int n = 0;
    while (fired && !testing::Test::HasFailure()) {
        SCOPED_TRACE("killed in call " + std::to_string(++n));
        ProfileWorld world;
        prepare(world);
        const std::wstring before = world.StoredList();
        world.fake.failures.KillInNthOfAny(n);
        operation(world);
        fired = world.fake.Fired();
        world.fake.failures.FailNone();
        const std::wstring left = world.StoredList();
        EXPECT_TRUE(left == before || left == world.ListOutline()) << AnsiFromText(left);
        Profiles().LoadRegistry();
        EXPECT_EQ(world.DiskDamage(), std::vector<std::wstring>());
        const std::wstring disk = world.DiskOutline();
        for (const std::wstring& clip : keeps)
            EXPECT_NE(disk.find(clip), std::wstring::npos) << AnsiFromText(clip);
    }
    return n - 1;
}
