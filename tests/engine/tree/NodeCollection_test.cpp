#include "engine/tree/NodeCollection.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "engine/tree/TestTree.h"
#include "engine/tree/modTreeEx.h"

namespace {

using Told = std::vector<std::wstring>;

TEST(NodeCollectionTest, Add_PutsTheNodeWhereTheRelationSays) {
    NodeCollection nodes;
    nodes.Add(nullptr, NodeRelation::Last, L"b", {});
    nodes.Add(nullptr, NodeRelation::First, L"a", {});
    nodes.Add(nullptr, NodeRelation::Next, L"e", {});
    nodes.Add(&Named(nodes, L"e"), NodeRelation::Previous, L"d", {});
    nodes.Add(&Named(nodes, L"b"), NodeRelation::Next, L"c", {});
    nodes.Add(&Named(nodes, L"c"), NodeRelation::Child, L"c2", {});
    nodes.Add(&Named(nodes, L"c"), NodeRelation::Child, L"c3", {});
    nodes.Add(&Named(nodes, L"c3"), NodeRelation::First, L"c1", {});
    nodes.Add(&Named(nodes, L"c1"), NodeRelation::Last, L"c4", {});
    nodes.Add(&Named(nodes, L"c"), NodeRelation::Last, L"f", {});

    EXPECT_EQ(Outline(nodes), L"a b c(c1 c2 c3 c4) d e f");
    EXPECT_TRUE(IsConsistent(nodes));
    EXPECT_EQ(Named(nodes, L"c4").FullPath(), L"c\\c4");
}

TEST(NodeCollectionTest, NodeRef_NamesTheNodeUntilItIsGone) {
    auto nodes = std::make_unique<NodeCollection>();
    Grow(*nodes, L"P(S(C1 C2)) Q");
    NodeRef clip(&Named(*nodes, L"C2"));
    NodeRef profile(&Named(*nodes, L"P"));
    const NodeRef other(&Named(*nodes, L"Q"));
    nodes->Remove(Named(*nodes, L"C1"));
    EXPECT_EQ(clip.Get(), &Named(*nodes, L"C2")) << "its index is another one now";
    nodes->Remove(Named(*nodes, L"S"));
    EXPECT_EQ(clip.Get(), nullptr);
    clip.Follow(&Named(*nodes, L"Q"));
    profile.Follow(nullptr);
    nodes->Clear();
    EXPECT_EQ(clip.Get(), nullptr);
    clip.Follow(&nodes->Add(nullptr, NodeRelation::Last, L"R", {}));
    nodes.reset();
    EXPECT_EQ(clip.Get(), nullptr) << "the collection is gone as well";
    EXPECT_EQ(other.Get(), nullptr);
}

TEST(NodeCollectionTest, Remove_HandsTheSelectionOnBeforeTheNodeGoes) {
    NodeCollection nodes;
    Grow(nodes, L"P(a b(x) c)");
    TestScreen screen(nodes);
    nodes.Select(&Named(nodes, L"x"));
    screen.TakeTold();

    for (const wchar_t* name : {L"b", L"c", L"a", L"P"})
        nodes.Remove(Named(nodes, name));
    EXPECT_EQ(screen.TakeTold(), (Told{L"selected c", L"removing b", L"selected a", L"removing c",
                                       L"selected P", L"removing a", L"selected -", L"removing P"}));
    EXPECT_EQ(nodes.Selected(), nullptr);
}

TEST(NodeCollectionTest, RemoveAll_TakesNestedOnesAndSelectsWhatStays) {
    NodeCollection nodes;
    Grow(nodes, L"P(a b(x(y) z) c d) Q R(e)");
    TestScreen screen(nodes);
    nodes.Select(&Named(nodes, L"y"));
    screen.TakeTold();

    const std::vector<Node*> gone = {&Named(nodes, L"x"), &Named(nodes, L"b"), &Named(nodes, L"c"),
                                     &Named(nodes, L"d"), &Named(nodes, L"R"), &Named(nodes, L"c")};
    nodes.RemoveAll(gone);
    EXPECT_EQ(screen.TakeTold(),
              (Told{L"selected a", L"removing b", L"removing c", L"removing d", L"removing R"}));
    EXPECT_EQ(Outline(nodes), L"P(a) Q");
    EXPECT_TRUE(IsConsistent(nodes));

    nodes.RemoveAll({});
    nodes.Remove(Named(nodes, L"Q"));
    EXPECT_EQ(screen.TakeTold(), (Told{L"removing Q"}));
    EXPECT_EQ(nodes.Selected(), &Named(nodes, L"a"));
}

TEST(NodeCollectionTest, SetExpanded_AClosedNodeTakesTheSelectionUp) {
    NodeCollection nodes;
    Grow(nodes, L"P(a(x)) Q");
    Node& top = Named(nodes, L"P");
    top.SetExpanded(true);
    TestScreen screen(nodes);
    nodes.Select(&Named(nodes, L"x"));
    top.SetExpanded(false);
    Named(nodes, L"Q").SetExpanded(true);
    Named(nodes, L"Q").SetExpanded(false);
    EXPECT_EQ(screen.TakeTold(), (Told{L"selected x", L"selected P", L"closed P", L"open Q", L"closed Q"}));
}

TEST(NodeCollectionTest, SortedParent_KeepsItsChildrenInOrder) {
    NodeCollection nodes;
    Grow(nodes, L"P(c B a)");
    Node& parent = *nodes.Root();
    parent.SetSorted(true);
    EXPECT_EQ(Outline(nodes), L"P(a B c)");

    nodes.Add(&parent, NodeRelation::Child, L"b", {});  // behind the one that compares equal
    nodes.Add(&Named(nodes, L"a"), NodeRelation::Next, L"d", {});
    nodes.Add(&Named(nodes, L"d"), NodeRelation::Previous, L"A", {});
    EXPECT_EQ(Outline(nodes), L"P(a A B b c d)");

    TestScreen screen(nodes);
    Named(nodes, L"a").SetText(L"bb");
    Named(nodes, L"d").SetText(L"0");
    Named(nodes, L"c").SetText(L"C");
    EXPECT_EQ(Outline(nodes), L"P(0 A B b bb C)");
    EXPECT_EQ(screen.TakeTold(), (Told{L"text bb", L"moved bb", L"text 0", L"moved 0", L"text C"}));
    EXPECT_TRUE(IsConsistent(nodes));

    parent.SetSorted(false);
    nodes.Add(&parent, NodeRelation::Child, L"a", {});
    EXPECT_EQ(Outline(nodes), L"P(0 A B b bb C a)");
}

TEST(NodeCollectionTest, BulkChange_PutsInOrderOnceAtItsOutermostEnd) {
    NodeCollection nodes;
    Grow(nodes, L"P Q");
    Node& parent = Named(nodes, L"P");
    Named(nodes, L"Q").SetSorted(true);
    TestScreen screen(nodes);
    {
        const BulkChangeScope outer(nodes);
        {
            const BulkChangeScope inner(nodes);
            parent.SetSorted(true);
            nodes.Add(&parent, NodeRelation::Child, L"c", {});
            nodes.Add(&parent, NodeRelation::Child, L"a", {});
            nodes.Add(&Named(nodes, L"Q"), NodeRelation::Child, L"x", {});
        }
        Named(nodes, L"c").SetText(L"b");
        EXPECT_EQ(Outline(nodes), L"P(b a) Q(x)");
    }
    EXPECT_EQ(Outline(nodes), L"P(a b) Q(x)");
    // Q's children came in order: nothing to tell.
    EXPECT_EQ(screen.TakeTold(), (Told{L"begin", L"begin", L"added c", L"added a", L"added x", L"end",
                                       L"text b", L"reordered P", L"end"}));
    EXPECT_TRUE(IsConsistent(nodes));

    nodes.Add(&parent, NodeRelation::Child, L"aa", {});
    EXPECT_EQ(Outline(nodes), L"P(a aa b) Q(x)");
    {
        const BulkChangeScope bulk(nodes);
        nodes.Add(&parent, NodeRelation::Child, L"0", {});
        parent.SetSorted(false);
    }
    EXPECT_EQ(Outline(nodes), L"P(a aa b 0) Q(x)");
}

TEST(NodeCollectionTest, BulkChange_ForgetsParentsThatGoMeanwhile) {
    NodeCollection nodes;
    Grow(nodes, L"P(S) Q");
    nodes.SetSorted(true);
    Named(nodes, L"S").SetSorted(true);
    {
        const BulkChangeScope bulk(nodes);
        nodes.Add(&Named(nodes, L"S"), NodeRelation::Child, L"b", {});
        nodes.Add(&Named(nodes, L"S"), NodeRelation::Child, L"a", {});
        nodes.Add(nullptr, NodeRelation::Last, L"A", {});
        nodes.Remove(Named(nodes, L"P"));
    }
    EXPECT_EQ(Outline(nodes), L"A Q");
    {
        const BulkChangeScope bulk(nodes);
        nodes.Add(nullptr, NodeRelation::Last, L"B", {});
        Named(nodes, L"Q").SetSorted(true);
        nodes.Clear();
        Grow(nodes, L"d c");
    }
    EXPECT_EQ(Outline(nodes), L"c d");
}

TEST(NodeCollectionTest, Sorting_InBulkOrOneByOneGivesTheSameOrder) {
    std::mt19937 random(7);
    for (int count = 0; count < 70; ++count) {
        NodeCollection oneByOne;
        NodeCollection bulk;
        NodeCollection afterwards;
        oneByOne.SetSorted(true);
        bulk.SetSorted(true);
        bulk.BeginBulkChange();
        for (int i = 0; i < count; ++i) {
            // Few different letters in both cases: many that compare equal.
            std::wstring text(1, static_cast<wchar_t>((i % 2 == 0 ? L'a' : L'A') + random() % 9));
            for (NodeCollection* nodes : {&oneByOne, &bulk, &afterwards})
                nodes->Add(nullptr, NodeRelation::Last, text, {}).SetTag(std::to_wstring(i));
        }
        bulk.EndBulkChange();
        afterwards.SetSorted(true);
        EXPECT_EQ(Outline(bulk), Outline(oneByOne));
        EXPECT_EQ(Outline(afterwards), Outline(oneByOne));
        const Node* other = bulk.Root();
        for (const Node* node = oneByOne.Root(); node != nullptr; node = node->Next(), other = other->Next())
            ASSERT_EQ(node->Tag(), other->Tag());
        EXPECT_TRUE(IsConsistent(bulk));
        EXPECT_TRUE(IsConsistent(oneByOne));
    }
}

TEST(NodeCollectionTest, RandomChanges_KeepLinksAndIndexesRight) {
    std::mt19937 random(11);
    NodeCollection nodes;
    for (int step = 0; step < 3000; ++step) {
        Node* const node =
            nodes.Count() == 0 ? nullptr : nodes.Item(static_cast<int>(random() % nodes.Count()) + 1);
        const auto text = std::to_wstring(random() % 50);
        switch (random() % 8) {
            case 0:
                if (node != nullptr && DescendantCount(node) < 40) nodes.Remove(*node);
                break;
            case 1:
                if (node != nullptr) node->SetSorted(random() % 2 == 0);
                break;
            case 2:
                if (node != nullptr) node->SetText(text);
                break;
            case 3:
                nodes.Select(node);
                break;
            default:
                nodes.Add(node, static_cast<NodeRelation>(random() % 5), text, {});
        }
        if (step % 50 == 0) {
            ASSERT_TRUE(IsConsistent(nodes)) << step;
        }
    }
    EXPECT_GT(nodes.Count(), 100);
}

TEST(NodeCollectionTest, ADeepChain_NeedsNoDeepStack) {
    NodeCollection nodes;
    Node* deepest = nullptr;
    for (int i = 0; i < 200'000; ++i)
        deepest = &nodes.Add(deepest, NodeRelation::Child, L"x", {});
    EXPECT_EQ(DescendantCount(nodes.Root()), 199'999);
    EXPECT_EQ(LevelOf(deepest), 200'000);
    nodes.Select(deepest);
    nodes.Remove(*nodes.Root()->FirstChild());
    EXPECT_EQ(nodes.Count(), 1);
    EXPECT_EQ(nodes.Selected(), nodes.Root());
}

}  // namespace
