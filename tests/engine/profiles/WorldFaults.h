#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/profiles/ProfileWorldTest.h"
#include "fake/FaultLoop.h"
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

// A world that remembers how it was before an operation, and what that said.
struct TriedWorld : ProfileWorld {
    WorldState before;
    bool done = false;
};

using Preparing = std::function<void(ProfileWorld&)>;
using Operating = std::function<bool(ProfileWorld&)>;

template <typename Check>
int StrikeWorld(Fault fault, WriteFailure mode, const Preparing& prepare, const Operating& operation,
                const Check& check) {
    const auto make = [&] {
        auto world = std::make_unique<TriedWorld>();
        prepare(*world);
        world->before = StateOf(*world);
        world->fake.user.messages.clear();
        world->fake.user.tellings.clear();
        world->fake.failures.writeFailure = mode;
        return world;
    };
    return StrikeEverywhere(
        fault, make, [&](TriedWorld& world) { world.done = operation(world); }, check);
}

// Each call fails once. After a run that reports failure everything must be as it was, and the user must
// know; after a run that reports success, `after` must hold. Nothing may ever be damaged. Returns the number
// of failures that were tried.
inline int FailEveryStep(WriteFailure mode, const Preparing& prepare, const Operating& operation,
                         const std::function<void(ProfileWorld&)>& after) {
    return StrikeWorld(Fault::OneCall, mode, prepare, operation, [&](TriedWorld& world, bool struck) {
        const auto& questions = world.fake.user.questions;
        const bool asked = !questions.empty() && !questions.back().answer;
        const bool told = !world.fake.user.messages.empty() || !world.fake.user.tellings.empty() || asked;
        EXPECT_EQ(world.Damage(), std::vector<std::wstring>());
        EXPECT_EQ(world.MemoryOutline(), world.DiskOutline());
        EXPECT_EQ(world.fake.user.pointer, PointerShape::Normal);
        EXPECT_TRUE(world.done || struck);
        // The operation's own list, or the old one, of which the user was told.
        if (world.StoredList() != world.ListOutline()) {
            EXPECT_EQ(world.StoredList(), world.before.list);
            EXPECT_TRUE(told);
        }
        if (world.done) {
            after(world);
        } else {
            EXPECT_EQ(StateOf(world), world.before);
            EXPECT_TRUE(told);
        }
    });
}

// Two calls fail. Whatever the operation says then, tree and disk agree, and no clip is without its data.
// Returns the number of pairs that were tried.
inline int FailEveryPair(WriteFailure mode, const Preparing& prepare, const Operating& operation) {
    return StrikeWorld(Fault::TwoCalls, mode, prepare, operation, [](TriedWorld& world, bool) {
        EXPECT_EQ(world.Damage(), std::vector<std::wstring>());
        EXPECT_EQ(world.MemoryOutline(), world.DiskOutline());
    });
}

// The process ends inside each call of the operation, one after the other. What the next start finds on disk
// is whole: the list of before or the new one, every node has its data, and every clip whose name is in
// `keeps` is there. Returns the number of kills.
inline int KillInEveryStep(const Preparing& prepare, const Operating& operation,
                           const std::vector<std::wstring>& keeps) {
    return StrikeWorld(Fault::Kill, WriteFailure::Nothing, prepare, operation, [&](TriedWorld& world, bool) {
        const std::wstring left = world.StoredList();
        EXPECT_TRUE(left == world.before.list || left == world.ListOutline()) << AnsiFromText(left);
        Profiles().LoadRegistry();
        EXPECT_EQ(world.DiskDamage(), std::vector<std::wstring>());
        for (const std::wstring& clip : keeps)
            EXPECT_TRUE(world.SoundClips().contains(clip)) << AnsiFromText(clip);
    });
}

// The current goes in each call, too. Every listed profile can be read then, and of each clip whose name is
// in `keeps` there is one with its data; once the operation is done and its saves are finished, of each in
// `finished`, too. Returns the number of states of the disk that were looked at.
inline int LoseCurrentInEveryStep(const Preparing& prepare, const Operating& operation,
                                  const std::vector<std::wstring>& keeps,
                                  const std::vector<std::wstring>& finished) {
    const auto finishing = [&](ProfileWorld& world) {
        const bool done = operation(world);
        FinishSaves();
        return done;
    };
    const auto check = [&](TriedWorld& world, bool struck) {
        Profiles().LoadRegistry();
        const std::set<std::wstring> sound = world.SoundClips();
        EXPECT_EQ(world.ProfilesOnDisk(), Profiles().Count());
        for (const std::wstring& clip : keeps)
            EXPECT_TRUE(sound.contains(clip)) << AnsiFromText(clip);
        for (const std::wstring& clip : finished)
            EXPECT_TRUE(struck || sound.contains(clip)) << AnsiFromText(clip);
    };
    return StrikeWorld(Fault::PowerLoss, WriteFailure::Nothing, prepare, finishing, check);
}
