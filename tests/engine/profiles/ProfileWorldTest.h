#pragma once

#include "engine/profiles/ProfileWorld.h"
#include "fake/FakePlatformTest.h"

// A test with one world of profiles.
class ProfileWorldTest : public testing::Test, protected ProfileWorld {
 protected:
    // Whatever it was about: nothing is lost on the disk.
    void TearDown() override {
        fake.failures = {};
        const auto losses = leavesWhole ? LossesOnDisk() : std::vector<std::wstring>();
        EXPECT_EQ(losses, std::vector<std::wstring>());
    }
    // False in a test that damages files itself.
    bool leavesWhole = true;
};
