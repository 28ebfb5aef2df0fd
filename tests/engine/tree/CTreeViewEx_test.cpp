#include "engine/tree/CTreeViewEx.h"

#include <gtest/gtest.h>

#include <functional>

#include "engine/tree/TestTree.h"
#include "fake/FakePlatformTest.h"
#include "platform/RuntimeError.h"

namespace {

using Told = std::vector<std::wstring>;

// Writes the events down and cancels where it is told to.
class EventLog : public TreeViewExEvents {
 public:
    Told told;
    std::wstring cancelAt;  // the text of the source node whose event is cancelled
    std::function<void(Node& copy)> afterCopy;

    void BeforeNodeCopy(Node* newParent, Node& sourceNode, bool isMove, bool& cancel) override {
        EXPECT_FALSE(cancel);
        cancel = sourceNode.Text() == cancelAt;
        told.push_back(L"before " + (newParent != nullptr ? newParent->Text() : L"-") + L"/" +
                       sourceNode.Text() + (isMove ? L" move" : L""));
    }
    void AfterNodeCopy(Node& newNode, Node& sourceNode, bool isMove) override {
        EXPECT_NE(&newNode, &sourceNode);
        told.push_back(L"after " + newNode.FullPath() + (isMove ? L" move" : L""));
        if (afterCopy) afterCopy(newNode);
    }
    void DoAction(std::int16_t action, Node& node, bool& cancel) override {
        EXPECT_FALSE(cancel);
        cancel = node.Text() == cancelAt;
        told.push_back(node.Text() + std::to_wstring(action));
    }
    Told TakeTold() { return std::exchange(told, {}); }
};

class CTreeViewExTest : public FakePlatformTest {
 protected:
    void SetUp() override {
        tree.Bind(&nodes);
        tree.SetEvents(&events);
    }
    Node* At(std::wstring_view text) { return &Named(nodes, text); }
    static std::wstring TextOf(const Node* node) { return node != nullptr ? node->Text() : L"-"; }

    NodeCollection nodes;
    CTreeViewEx tree;
    EventLog events;
};

TEST_F(CTreeViewExTest, Navigation_FollowsTreeOrder) {
    Grow(nodes, L"P(S1(C1) S2) Q");
    At(L"P")->SetExpanded(true);
    const auto way = [&](bool forward, bool visible) {
        std::wstring names;
        Node* node = At(forward ? L"P" : L"Q");
        for (; node != nullptr;
             node = forward ? tree.NextNode(node, visible) : tree.PreviousNode(node, visible))
            names += node->Text() + L" ";
        return names;
    };
    EXPECT_EQ(way(true, false), L"P S1 C1 S2 Q ");
    EXPECT_EQ(way(true, true), L"P S1 S2 Q ");
    EXPECT_EQ(way(false, false), L"Q S2 C1 S1 P ");
    EXPECT_EQ(way(false, true), L"Q S2 S1 P ");

    EXPECT_EQ(tree.NodeDepth(nullptr), 0);
    EXPECT_EQ(tree.NodeDepth(At(L"Q")), 1);
    EXPECT_EQ(tree.NodeDepth(At(L"C1")), 3);
    EXPECT_EQ(tree.NodeRoot(At(L"C1")), At(L"P"));
    EXPECT_EQ(tree.NodeRoot(nullptr), nullptr);
    EXPECT_EQ(tree.NextNode(nullptr, false), nullptr);
    EXPECT_EQ(tree.PreviousNode(nullptr, false), nullptr);
}

TEST_F(CTreeViewExTest, DragOver_ScrollsNearTheEdges) {
    Grow(nodes, L"P Q");
    TestScreen screen(nodes);
    screen.firstShown = At(L"Q");
    const auto drag = [&](DragState state, float y) {
        screen.TakeTold();
        tree.DragOver(state, y, 1000);
        return screen.TakeTold();
    };
    EXPECT_EQ(drag(DragState::Over, 89), Told{L"ensure P"});
    EXPECT_EQ(drag(DragState::Over, 90), Told{});
    EXPECT_EQ(drag(DragState::Over, 910), Told{});
    EXPECT_EQ(drag(DragState::Over, 911), Told{L"scroll down"});
    EXPECT_EQ(drag(DragState::Leave, 0), Told{});
    tree.SetAutoScroll(false);
    EXPECT_EQ(drag(DragState::Over, 0), Told{});
}

TEST_F(CTreeViewExTest, CopyNode_AsSiblingGoesInFrontOfTheTarget) {
    Grow(nodes, L"P(a b) Q");
    Node* copy = tree.CopyNode(At(L"b"), At(L"a"), false, false, false);
    EXPECT_EQ(copy, At(L"b")->Previous());
    EXPECT_EQ(Outline(nodes), L"P(a a b) Q");
    tree.CopyNode(nullptr, At(L"P"), false, true, false);
    tree.CopyNode(At(L"Q"), At(L"Q"), false, false, false);
    tree.CopyNode(nullptr, At(L"b"), true, true, false);
    EXPECT_EQ(Outline(nodes), L"P(a a b) Q Q P b");
    EXPECT_EQ(tree.CopyNode(At(L"Q"), nullptr, false, false, false), nullptr);
    EXPECT_TRUE(IsConsistent(nodes));
}

TEST_F(CTreeViewExTest, CopyNode_TakesWhatBelongsToTheCopy) {
    Grow(nodes, L"P(S) Q");
    Node& source = *At(L"S");
    source.SetTag(L"S&info");
    source.SetSelectedImage(std::int16_t{4});
    source.SetExpandedImage(std::wstring(L"open"));
    source.SetExpanded(true);
    source.SetSorted(true);
    const Node& copy = *tree.CopyNode(At(L"Q"), &source, true, false, false);
    EXPECT_EQ(copy.FullPath(), L"Q\\S");
    EXPECT_EQ(copy.Tag(), L"S&info");
    EXPECT_EQ(copy.Image(), source.Image());
    EXPECT_EQ(copy.SelectedImage(), source.SelectedImage());
    EXPECT_TRUE(copy.Expanded());
    EXPECT_EQ(copy.ExpandedImage(), ImageValue{});
    EXPECT_FALSE(copy.Sorted());
}

TEST_F(CTreeViewExTest, CopyNode_ReproducesTheShapeParentsFirst) {
    Grow(nodes, L"P(S(T(a b) c U(d)) e) Q");
    tree.CopyNode(At(L"Q"), At(L"S"), true, false, true);
    EXPECT_EQ(Outline(nodes), L"P(S(T(a b) c U(d)) e) Q(S(T(a b) c U(d)))");
    EXPECT_EQ(events.TakeTold(),
              (Told{L"before Q/S move", L"after Q\\S move", L"before S/T move", L"after Q\\S\\T move",
                    L"before T/a move", L"after Q\\S\\T\\a move", L"before T/b move",
                    L"after Q\\S\\T\\b move", L"before S/c move", L"after Q\\S\\c move", L"before S/U move",
                    L"after Q\\S\\U move", L"before U/d move", L"after Q\\S\\U\\d move"}));
    EXPECT_TRUE(IsConsistent(nodes));

    // Right beside the source: the walk must not run into its own copies.
    tree.CopyNode(At(L"P"), At(L"T"), true, false, false);
    tree.CopyNode(At(L"c"), At(L"T"), false, false, false);
    EXPECT_EQ(Outline(nodes), L"P(S(T(a b) T(a b) c U(d)) e T(a b)) Q(S(T(a b) c U(d)))");
}

TEST_F(CTreeViewExTest, CopyNode_StopsAtOnceWhenAHandlerCancels) {
    Grow(nodes, L"P(S(a b c)) Q");
    events.cancelAt = L"S";
    EXPECT_EQ(tree.CopyNode(At(L"Q"), At(L"S"), true, false, false), nullptr);
    EXPECT_EQ(events.TakeTold(), Told{L"before Q/S"});
    EXPECT_EQ(nodes.Count(), 6);

    events.cancelAt = L"b";
    const Node* copy = tree.CopyNode(At(L"Q"), At(L"S"), true, false, false);
    EXPECT_EQ(copy, At(L"Q")->FirstChild());
    EXPECT_EQ(Outline(nodes), L"P(S(a b c)) Q(S(a))");
    EXPECT_EQ(events.TakeTold().back(), L"before S/b");
}

TEST_F(CTreeViewExTest, ForAllNodes_WalksTheSubtreeOrTheWholeTree) {
    Grow(nodes, L"P(S(a b) c) Q(d)");
    tree.ForAllNodes(At(L"S"), true, 1);
    EXPECT_EQ(events.TakeTold(), (Told{L"S1", L"a1", L"b1"}));
    tree.ForAllNodes(At(L"S"), false, 2);
    EXPECT_EQ(events.TakeTold(), Told{L"S2"});
    tree.ForAllNodes(At(L"d"), true, 1);
    EXPECT_EQ(events.TakeTold(), Told{L"d1"});
    nodes.Add(nullptr, NodeRelation::First, L"youngest", {});
    tree.ForAllNodes(nullptr, true, 1);
    EXPECT_EQ(events.TakeTold(), (Told{L"youngest1", L"P1", L"S1", L"a1", L"b1", L"c1", L"Q1", L"d1"}));
    events.cancelAt = L"a";
    tree.ForAllNodes(nullptr, true, 1);
    EXPECT_EQ(events.TakeTold().back(), L"a1");
    nodes.Clear();
    tree.ForAllNodes(nullptr, true, 1);
    EXPECT_TRUE(events.told.empty());
}

TEST_F(CTreeViewExTest, Position_NamesTheSameNodeAfterReloading) {
    Grow(nodes, L"P(S) Q(T)");
    // Younger than Q, yet in front of it in the tree: the index would change with the next loading.
    Node& clip = nodes.Add(At(L"S"), NodeRelation::Child, L"clip", {});
    const std::int32_t position = tree.PositionOf(At(L"T"));
    ASSERT_TRUE(tree.BuildTreeData(nullptr));
    nodes.Remove(clip);
    nodes.Clear();
    tree.BuildSubTreeFromData(nullptr);
    EXPECT_EQ(TextOf(tree.NodeAtPosition(position)), L"T");

    EXPECT_EQ(tree.PositionOf(nullptr), -1);
    for (const std::int32_t nowhere : {-1, 0, 6, 2'000'000'000})
        EXPECT_EQ(tree.NodeAtPosition(nowhere), nullptr);
    EXPECT_EQ(TextOf(tree.NodeAtPosition(1)), L"P");
    EXPECT_EQ(tree.ActiveContainer(), -1);
}

}  // namespace
