// The way of a subtree between the tree, the flattened records and the file.

#include <gtest/gtest.h>

#include <random>

#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/TestTree.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"
#include "fake/FakePlatformTest.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"

namespace {

const std::wstring kFile = L"C:\\Clips\\nxclip.nxp";

class CTreeViewExFileTest : public FakePlatformTest {
 protected:
    void SetUp() override {
        fake.files.AddDirectory(L"C:\\Clips");
        tree.Bind(&nodes);
    }
    Node* At(std::wstring_view text) { return &Named(nodes, text); }
    bool Save(Node* node) { return tree.BuildTreeData(node) && tree.SaveDataToFile(kFile); }
    Node* Load(Node* parent = nullptr) {
        return tree.LoadDataFromFile(kFile) ? tree.BuildSubTreeFromData(parent) : nullptr;
    }
    // A file whose records have these depths; each one's text is its number.
    void PutFileWithDepths(const std::vector<std::int16_t>& depths) {
        TreeData data;
        for (const std::int16_t depth : depths) {
            TreeNodeRecord record;
            record.Text = std::to_wstring(++data.Count);
            record.Depth = depth;
            data.Nodes.push_back(record);
        }
        PutFile(EncodeTreeData(data));
    }
    void PutFile(const std::vector<std::uint8_t>& image) {
        fake.files.SetBytes(kFile, std::string(image.begin(), image.end()));
    }
    // Text and title of the only message since the last call.
    std::wstring TakeMessage() {
        const auto messages = std::exchange(fake.user.messages, {});
        return messages.size() == 1 ? messages[0].text + L"|" + messages[0].title
                                    : std::to_wstring(messages.size()) + L" messages";
    }

    NodeCollection nodes;
    CTreeViewEx tree;
};

TEST_F(CTreeViewExFileTest, BuildTreeData_RefusesDepthsThatDoNotFit) {
    Node* deepest = nullptr;
    for (int i = 0; i <= 32767; ++i)
        deepest = &nodes.Add(deepest, NodeRelation::Child, L"x", {});
    ASSERT_TRUE(tree.BuildTreeData(nodes.Root()));
    nodes.Add(deepest, NodeRelation::Child, L"too deep", {});
    EXPECT_FALSE(tree.BuildTreeData(nodes.Root()));
    EXPECT_EQ(tree.Data().Count, 32768);
    EXPECT_THROW(tree.NodeDepth(deepest), RuntimeError);
}

TEST_F(CTreeViewExFileTest, SaveDataToFile_StoresWhatTheCodePageLacksAsQuestionMarks) {
    nodes.Add(nullptr, NodeRelation::Last, L"\x416 1", {}).SetTag(L"S&\x416&");
    EXPECT_TRUE(Save(nodes.Root()));
    nodes.Clear();
    EXPECT_EQ(Load()->Text(), L"? 1");
    EXPECT_EQ(nodes.Root()->Tag(), L"S&?&");
}

TEST_F(CTreeViewExFileTest, BuildSubTreeFromData_FollowsTheDepths) {
    PutFileWithDepths({0, 1, 2, 1, 0});
    Grow(nodes, L"P(x) Q");
    EXPECT_EQ(Load()->Text(), L"1");
    Load(nodes.Root());
    EXPECT_EQ(Outline(nodes), L"P(x 1(2(3) 4) 5) Q 1(2(3) 4) 5");
    nodes.Clear();
    PutFileWithDepths({0, 1, 2, 3, 0, 1});
    Load();
    EXPECT_EQ(Outline(nodes), L"1(2(3(4))) 5(6)");
}

TEST_F(CTreeViewExFileTest, BuildSubTreeFromData_StopsAtADepthThatLeadsNowhere) {
    const std::wstring message = L"Fataler Fehler: ungültige Knotentiefe.|";
    PutFileWithDepths({0, 1, 3, 0});
    EXPECT_EQ(Load()->Text(), L"1");
    EXPECT_EQ(TakeMessage(), message);
    EXPECT_EQ(Outline(nodes), L"1(2)");

    nodes.Clear();
    Grow(nodes, L"P(S)");
    for (const std::int16_t first : {std::int16_t{-1}, std::int16_t{-32768}, std::int16_t{1}}) {
        PutFileWithDepths({first});
        ASSERT_TRUE(tree.LoadDataFromFile(kFile));
        fake.user.pointer = PointerShape::Hourglass;
        EXPECT_EQ(tree.BuildSubTreeFromData(At(L"S")), nullptr);
        EXPECT_EQ(TakeMessage(), message);
        EXPECT_EQ(fake.user.pointer, PointerShape::Normal);
    }
    PutFileWithDepths({0, 1, -1, 0});
    Load(At(L"S"));
    EXPECT_EQ(TakeMessage(), message);
    EXPECT_EQ(Outline(nodes), L"P(S(1(2)))");
}

TEST_F(CTreeViewExFileTest, SaveAndLoad_OfRandomTreesGiveThemBack) {
    std::mt19937 random(3);
    const auto value = [&] {
        const ImageValue kinds[] = {ImageValue(),
                                    NullValue{},
                                    static_cast<std::int16_t>(random()),
                                    static_cast<std::int32_t>(random()),
                                    random() % 2 == 0,
                                    std::wstring(random() % 20, L'ß')};
        return kinds[random() % 6];
    };
    for (int round = 0; round < 40; ++round) {
        nodes.Clear();
        nodes.Add(nullptr, NodeRelation::Last, L"P", {});
        const int count = static_cast<int>(random() % 200) + 1;
        while (nodes.Count() < count) {
            Node& parent = *nodes.Item(static_cast<int>(random() % nodes.Count()) + 1);
            std::wstring text(random() % 6, L' ');
            for (wchar_t& character : text)
                character = L"aAbBzäÖß&\\\0 "[random() % 12];
            Node& node = nodes.Add(&parent, NodeRelation::Child, text, value(), value());
            node.SetTag(text + L"&");
            node.SetExpandedImage(value());
            node.SetExpanded(random() % 2 == 0);
            node.SetSorted(random() % 4 == 0);
        }
        ASSERT_TRUE(Save(nodes.Root()));
        const TreeData saved = tree.Data();
        const std::wstring outline = Outline(nodes);
        nodes.Clear();
        ASSERT_NE(Load(), nullptr);
        EXPECT_EQ(Outline(nodes), outline);
        EXPECT_TRUE(IsConsistent(nodes));
        ASSERT_TRUE(tree.BuildTreeData(nullptr));
        EXPECT_EQ(tree.Data(), saved);
    }
}

TEST_F(CTreeViewExFileTest, SaveAndLoad_OfMoreNodesThan16BitsCountGiveThemBack) {
    Node& profile = GrowProfile(nodes, 40'000);
    EXPECT_THROW(tree.SubNodeCount(&profile), RuntimeError);
    ASSERT_TRUE(Save(&profile));
    EXPECT_EQ(tree.Data().Count, 40'000);
    const TreeData saved = tree.Data();
    nodes.Clear();
    ASSERT_NE(Load(), nullptr);
    EXPECT_EQ(nodes.Count(), 40'000);
    ASSERT_TRUE(tree.BuildTreeData(nodes.Root()));
    EXPECT_EQ(tree.Data(), saved);
}

TEST_F(CTreeViewExFileTest, Load_OfTheDeepestFileCanBeSavedAgain) {
    std::vector<std::int16_t> depths(32768);
    for (std::size_t i = 0; i < depths.size(); ++i)
        depths[i] = static_cast<std::int16_t>(i);
    depths.push_back(0);
    PutFileWithDepths(depths);
    ASSERT_NE(Load(), nullptr);
    EXPECT_EQ(nodes.Root()->Next(), nodes.LastRoot());
    tree.ExpandAllNodes();
    tree.MaxNodeDepth(32767);
    EXPECT_NE(tree.LastSubNode(nodes.Root(), false), nullptr);
    Node* copy = tree.CopyNode(nullptr, nodes.Root(), false, false, false);
    EXPECT_EQ(DescendantCount(copy), 32767);
    EXPECT_TRUE(Save(copy));
}

TEST_F(CTreeViewExFileTest, Save_OverALongerFileKeepsItsTailAndLoads) {
    Grow(nodes, L"P(a b c)");
    ASSERT_TRUE(Save(nodes.Root()));
    const std::string longer = *fake.files.Bytes(kFile);
    nodes.Remove(*At(L"a"));
    ASSERT_TRUE(Save(nodes.Root()));
    const std::string now = *fake.files.Bytes(kFile);
    EXPECT_EQ(now.size(), longer.size());
    nodes.Clear();
    ASSERT_NE(Load(), nullptr);
    EXPECT_EQ(Outline(nodes), L"P(b c)");
}

TEST_F(CTreeViewExFileTest, Save_TouchesNothingWhenItMustFail) {
    Grow(nodes, L"P(a)");
    ASSERT_TRUE(Save(nodes.Root()));
    const std::string before = *fake.files.Bytes(kFile);

    Node& longText = nodes.Add(nodes.Root(), NodeRelation::Child, std::wstring(65536, L'x'), {});
    EXPECT_FALSE(Save(nodes.Root()));
    EXPECT_NE(TakeMessage().find(L"zu lang"), std::wstring::npos);
    EXPECT_EQ(fake.files.Bytes(kFile), before);

    longText.SetText(std::wstring(60000, L'x'));
    fake.files.capacity = 50000;
    EXPECT_FALSE(Save(nodes.Root()));
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_EQ(fake.files.Bytes(kFile), before);
    EXPECT_EQ(fake.user.pointer, PointerShape::Normal);
}

TEST_F(CTreeViewExFileTest, SaveAndLoad_WithAnyCallFailingAreToldOnceAndKeepTheTree) {
    Grow(nodes, L"P(a)");
    ASSERT_TRUE(Save(nodes.Root()));
    nodes.Add(nodes.Root(), NodeRelation::Child, L"b", {});
    ASSERT_TRUE(tree.BuildTreeData(nodes.Root()));
    int failed = 0;
    for (int n = 1; n == 1 || fake.Fired(); ++n) {
        fake.user.pointers.clear();
        fake.FailNthOfAny(n);
        const bool saved = tree.SaveDataToFile(kFile);
        EXPECT_TRUE(saved || fake.Fired()) << n;
        EXPECT_EQ(std::exchange(fake.user.messages, {}).size(), saved ? 0u : 1u) << n;
        EXPECT_EQ(fake.user.pointers, (std::vector{PointerShape::Hourglass, PointerShape::Normal}));
        failed += !saved;
    }
    EXPECT_EQ(failed, 9);
    FinishSave(kFile);
    for (int n = 2; n == 2 || fake.Fired(); ++n) {  // the first call asks whether the file is there
        fake.FailNthOfAny(n);
        const bool loaded = tree.LoadDataFromFile(kFile);
        EXPECT_EQ(loaded, !fake.Fired()) << n;
        EXPECT_EQ(std::exchange(fake.user.messages, {}).size(), loaded ? 0u : 1u) << n;
        EXPECT_EQ(fake.user.pointer, PointerShape::Normal);
        failed += !loaded;
    }
    EXPECT_EQ(failed, 13);
    EXPECT_EQ(Outline(nodes), L"P(a b)");
}

TEST_F(CTreeViewExFileTest, Load_OfADamagedFileIsToldAndLeavesTheTree) {
    Grow(nodes, L"P(a)");
    Save(nodes.Root());
    FinishSave(kFile);
    std::string bytes = *fake.files.Bytes(kFile);
    bytes[3] = '\x7F';  // two thousand million nodes
    fake.files.SetBytes(kFile, bytes);
    EXPECT_EQ(Load(), nullptr);
    EXPECT_NE(TakeMessage().find(L"|Strukturladefehler 9"), std::wstring::npos);
    EXPECT_EQ(tree.Data(), TreeData{});
    EXPECT_EQ(Outline(nodes), L"P(a)");
}

}  // namespace
