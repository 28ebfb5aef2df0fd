#include "platform/FileIdentity.h"

#include <gtest/gtest.h>

namespace {

TEST(FileIdentity, NumberThatAllFilesHave_TellsNothing) {
    EXPECT_EQ(FileIdentity(7, 0), L"");
    EXPECT_NE(FileIdentity(7, 1), FileIdentity(7, 2));
    EXPECT_NE(FileIdentity(7, 1), FileIdentity(71, 1));
}

}  // namespace
