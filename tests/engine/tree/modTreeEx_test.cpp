#include "engine/tree/modTreeEx.h"

#include <gtest/gtest.h>

#include <tuple>

#include "engine/tree/TestTree.h"
#include "engine/tree/TreeWalk.h"
#include "fake/ErrorNumberOf.h"

namespace {

using ProfileFields = std::tuple<std::int32_t, std::wstring, bool, std::wstring>;
using ClipFields = std::tuple<std::int32_t, std::int16_t, std::wstring, std::wstring>;

const ProfileFields kNoProfile(-7, L"d", true, L"i");
const ClipFields kNoClip(-7, std::int16_t{-8}, L"t", L"i");

ProfileFields ParsedProfile(const std::wstring& tag) {
    ProfileFields fields = kNoProfile;
    std::apply([&](auto&... each) { ParseProfileTag(tag, each...); }, fields);
    return fields;
}

ClipFields ParsedClip(const std::wstring& tag) {
    ClipFields fields = kNoClip;
    std::apply([&](auto&... each) { ParseClipTag(tag, each...); }, fields);
    return fields;
}

TEST(TagTest, ParseProfileTag_LeavesWhatTheTagDoesNotReach) {
    for (const wchar_t* tag : {L"", L"P", L"P&", L"P&12", L"&&"})
        EXPECT_EQ(ParsedProfile(tag), kNoProfile) << tag;
    EXPECT_EQ(ParsedProfile(L"P&12&D:\\x"), ProfileFields(12, L"d", true, L"i"));
    EXPECT_EQ(ParsedProfile(L"P&12&D:\\x&"), ProfileFields(12, L"D:\\x", false, L""));
    EXPECT_EQ(ParsedProfile(L"P&12&D:\\x&1"), ProfileFields(12, L"D:\\x", true, L""));
    EXPECT_EQ(ErrorNumberOf([] { ParsedProfile(L"P&x&D:\\x&1&"); }), 13);
    EXPECT_EQ(ErrorNumberOf([] { ParsedProfile(L"P&&D:\\x&1&"); }), 13);
    EXPECT_EQ(ErrorNumberOf([] { ParsedProfile(L"P&2147483648&D:\\x&1&"); }), 13);
}

TEST(TagTest, ParseClipTag_LeavesWhatTheTagDoesNotReach) {
    for (const wchar_t* tag : {L"", L"C&7&x&y", L"C&&7,3&x"})
        EXPECT_EQ(ParsedClip(tag), kNoClip) << tag;
    EXPECT_EQ(ParsedClip(L"C&7,3&x"), ClipFields(7, std::int16_t{3}, L"t", L"i"));
    EXPECT_EQ(ParsedClip(L"C&7,3&x&"), ClipFields(7, std::int16_t{3}, L"x", L""));
    EXPECT_EQ(ErrorNumberOf([] { ParsedClip(L"C&7,32768&x&y"); }), 13);
    EXPECT_EQ(ErrorNumberOf([] { ParsedClip(L"C&,3&x&y"); }), 13);
}

TEST(TagTest, ParseTagWithoutSecondSeparator_TheParsersDiffer) {
    for (const wchar_t* tag : {L"C", L"C&", L"C&7,3", L"x"})
        EXPECT_EQ(ErrorNumberOf([&] { ParsedClip(tag); }), 5) << tag;
    EXPECT_EQ(ErrorNumberOf([] { ParsedProfile(L"P&7"); }), 0);
}

TEST(TreeWalkTest, Step_GoesInTreeOrderAndKnowsTheDepth) {
    NodeCollection nodes;
    Grow(nodes, L"P(S(C1 C2) S2) Q(C3)");
    std::wstring way;
    for (TreeWalk walk(nodes.Root()); walk.Current() != nullptr; walk.Step())
        way += walk.Current()->Text() + std::to_wstring(walk.Depth()) + (walk.InSubtree() ? L" " : L"- ");
    EXPECT_EQ(way, L"P0 S1 C12 C22 S21 Q0- C31- ");

    way.clear();
    for (TreeWalk walk(&Named(nodes, L"S")); walk.Current() != nullptr; walk.Step())
        way += walk.Current()->Text() + (walk.InSubtree() ? L" " : L"- ");
    EXPECT_EQ(way, L"S C1 C2 S2- Q- C3- ");

    EXPECT_FALSE(TreeWalk<Node>(nullptr).InSubtree());
    EXPECT_EQ(DescendantCount(nullptr), 0);
    EXPECT_EQ(DescendantCount(nodes.Root()), 4);
}

}  // namespace
