#include "engine/flows/DropRules.h"

#include <gtest/gtest.h>

#include "engine/tree/TestTree.h"

namespace {

// "P(S(T(c2) c1) c3) Q(U) x(y)", where x and y are of no kind.
class DropRulesTest : public testing::Test {
 protected:
    void SetUp() override {
        tree.Bind(&nodes);
        Grow(nodes, L"P(S(T(c2) c1) c3) Q(U) x(y)");
        for (int i = 1; i <= nodes.Count(); ++i) {
            Node& node = *nodes.Item(i);
            const std::wstring& name = node.Text();
            if (name == L"P" || name == L"Q") node.SetTag(L"P&0&C:\\A&0&");
            if (name == L"S" || name == L"T" || name == L"U") node.SetTag(L"S&");
            if (name.front() == L'c') node.SetTag(L"C&1,1&t&");
        }
    }
    Node* Get(const wchar_t* name) { return *name != 0 ? &Named(nodes, name) : nullptr; }
    bool In(const wchar_t* source, const wchar_t* target, bool move = true) {
        return DropPermitted(tree, Get(source), Get(target), true, move);
    }
    bool InFrontOf(const wchar_t* source, const wchar_t* target, bool move = true) {
        return DropPermitted(tree, Get(source), Get(target), false, move);
    }

    NodeCollection nodes;
    CTreeViewEx tree;
};

TEST_F(DropRulesTest, ClipsAndFolders_GoIntoProfilesAndFolders) {
    for (const bool move : {false, true}) {
        for (const wchar_t* source : {L"c2", L"T"}) {
            for (const wchar_t* target : {L"P", L"Q", L"S", L"U"})
                EXPECT_TRUE(In(source, target, move));
            for (const wchar_t* target : {L"c1", L"c3", L"x", L"y", L""})
                EXPECT_FALSE(In(source, target, move));
            for (const wchar_t* target : {L"c1", L"S", L"U"})
                EXPECT_TRUE(InFrontOf(source, target, move));
            for (const wchar_t* target : {L"P", L"Q", L"x", L"y", L""}) {
                EXPECT_FALSE(InFrontOf(source, target, move));
            }
        }
    }
}

TEST_F(DropRulesTest, Profiles_GoBesideProfilesAndAreNeverCopied) {
    EXPECT_TRUE(InFrontOf(L"Q", L"P"));
    EXPECT_TRUE(InFrontOf(L"Q", L""));
    EXPECT_TRUE(In(L"Q", L"")) << "below the last node";
    for (const wchar_t* target : {L"P", L"S", L"c1", L"x"})
        EXPECT_FALSE(In(L"Q", target));
    for (const wchar_t* target : {L"S", L"c1", L"x"})
        EXPECT_FALSE(InFrontOf(L"Q", target));
    EXPECT_FALSE(InFrontOf(L"Q", L"P", false));
    EXPECT_FALSE(InFrontOf(L"Q", L"", false));
}

TEST_F(DropRulesTest, Nothing_GoesIntoItselfOrIsOfNoKind) {
    for (const wchar_t* name : {L"P", L"S", L"c1"}) {
        EXPECT_FALSE(In(name, name));
        EXPECT_FALSE(InFrontOf(name, name));
    }
    EXPECT_FALSE(In(L"S", L"T"));
    EXPECT_FALSE(InFrontOf(L"S", L"c2", false));
    EXPECT_FALSE(In(L"x", L"P"));
    EXPECT_FALSE(In(L"y", L"S"));
    EXPECT_FALSE(In(L"", L"S"));
}

TEST_F(DropRulesTest, DropsAsChild_FollowsThePointerWhereBothArePermitted) {
    const auto drops = [&](const wchar_t* source, const wchar_t* target, int offset) {
        return DropsAsChild(tree, Get(source), Get(target), true, offset, 18);
    };
    EXPECT_FALSE(drops(L"c3", L"S", 0));
    EXPECT_FALSE(drops(L"c3", L"S", 5));
    EXPECT_TRUE(drops(L"c3", L"S", 6));
    EXPECT_TRUE(drops(L"c3", L"S", 17));
    EXPECT_TRUE(drops(L"c3", L"Q", 0)) << "a clip never stands beside a profile";
    EXPECT_FALSE(drops(L"c3", L"c1", 17)) << "nor in a clip";
    EXPECT_FALSE(drops(L"Q", L"P", 17));
}

TEST_F(DropRulesTest, WhatLooksLikeAProfileInsideOfOne_IsNoPlaceForAProfile) {
    Get(L"S")->SetTag(L"P&1&C:\\x&0&");
    EXPECT_FALSE(InFrontOf(L"Q", L"S"));
    EXPECT_FALSE(InFrontOf(L"S", L"Q"));
    EXPECT_TRUE(InFrontOf(L"Q", L"P"));
}

}  // namespace
