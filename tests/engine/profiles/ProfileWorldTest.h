#pragma once

#include "engine/profiles/ProfileWorld.h"
#include "fake/FakePlatformTest.h"

// A test with one world of profiles.
class ProfileWorldTest : public testing::Test, protected ProfileWorld {};
