#include "platform/NamePattern.h"

#include <gtest/gtest.h>

#include <string>

TEST(NamePattern, Matches_WholeNamesWithoutRegardToCase) {
    EXPECT_TRUE(MatchesNamePattern(L"a.NXP", L"*.nxp"));
    EXPECT_TRUE(MatchesNamePattern(L".nxp", L"*.nxp"));
    EXPECT_FALSE(MatchesNamePattern(L"a.nxp2", L"*.nxp"));
    EXPECT_FALSE(MatchesNamePattern(L"a.nxp.old", L"*.nxp"));
    EXPECT_TRUE(MatchesNamePattern(L"a.nxp.nxp", L"*.nxp"));
    EXPECT_TRUE(MatchesNamePattern(L"Ärger", L"ä?GER*"));
    EXPECT_FALSE(MatchesNamePattern(L"rger", L"?rger"));
    EXPECT_TRUE(MatchesNamePattern(L"abc", L"a*b*c"));
    EXPECT_TRUE(MatchesNamePattern(L"no dot", L"*.*"));
    EXPECT_FALSE(MatchesNamePattern(L"a", L""));
}

TEST(NamePattern, Matches_ManyStarsDoNotTakeForever) {
    std::wstring pattern;
    for (int i = 0; i < 50; ++i)
        pattern += L"*a";
    EXPECT_FALSE(MatchesNamePattern(std::wstring(5000, L'a') + L"b", pattern));
}
