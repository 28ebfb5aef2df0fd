#pragma once

#include <functional>
#include <string>

#include "engine/profiles/ProfileWorldTest.h"

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
        world.fake.failures.writeFailure = mode;
        world.fake.FailNthOfAny(n);
        const bool done = operation(world);
        const bool fired = world.fake.Fired();
        world.fake.failures.FailNone();
        const bool told = !world.fake.user.messages.empty();
        // A disk that fails in the middle of a write leaves a torn file; the next save must mend it.
        if (fired && mode != WriteFailure::Nothing) SaveAllProfiles(world.tree);

        EXPECT_EQ(world.Damage(), std::vector<std::wstring>());
        EXPECT_EQ(world.MemoryOutline(), world.DiskOutline());
        EXPECT_EQ(world.fake.user.pointer, PointerShape::Normal);
        if (done) {
            after(world);
        } else {
            const WorldState now = StateOf(world);
            EXPECT_EQ(now.memory, before.memory);
            EXPECT_EQ(now.disk, before.disk);
            EXPECT_EQ(now.list, before.list);
            EXPECT_EQ(now.container, before.container);
            EXPECT_EQ(now.files, before.files);
            EXPECT_TRUE(told);
        }
        if (!fired) {
            EXPECT_TRUE(done);
            return n - 1;
        }
        if (testing::Test::HasFailure()) return n;
    }
}
