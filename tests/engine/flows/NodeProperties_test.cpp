#include "engine/flows/NodeProperties.h"

#include "engine/profiles/ProfileWorldTest.h"

namespace {

class NodePropertiesTest : public ProfileWorldTest {
 protected:
    void SetUp() override { Fill(); }
};

TEST_F(NodePropertiesTest, Name_MustNotBeBlankNorLongerThanTheFileTakes) {
    for (const wchar_t* name : {L"", L"   "}) {
        EXPECT_FALSE(NameCanBeConfirmed(name));
        EXPECT_NE(NameRefusal(name), L"");
    }
    EXPECT_TRUE(NameCanBeConfirmed(L" a "));
    EXPECT_EQ(NameRefusal(std::wstring(65535, L'ü')), L"") << "the bytes on disk count";
    EXPECT_EQ(NameRefusal(std::wstring(65536, L'x')), L"Der Name ist zu lang !!!");
    EXPECT_EQ(NameRefusal(L"ja: Привет"),
              L"Das Zeichen 'П' (U+041F) kann in einem Namen nicht gespeichert werden !!!");
    EXPECT_EQ(NameRefusal(L"😀"),
              L"Das Zeichen '😀' (U+1F600) kann in einem Namen nicht gespeichert werden !!!");
    EXPECT_EQ(InfoRefusal(L"i", L"S&" + std::wstring(65533, L'x')), L"");
    EXPECT_EQ(InfoRefusal(L"i", L"S&" + std::wstring(65534, L'x')), L"Die Informationen sind zu lang !!!");
    EXPECT_NE(InfoRefusal(L"→", L"S&"), L"");
}

TEST_F(NodePropertiesTest, ClipProperties_RoundTrip) {
    const ClipProperties read = ReadClipProperties(Get(L"c2"));
    EXPECT_EQ(read.name + L"|" + read.info + L"|" + read.timeCaptured + L"|" + read.file,
              L"c2|a&b|15.11.1999 13:10:00|C:\\P\\C2.nxc");
    EXPECT_EQ(read.formatCount, 2);
    EXPECT_TRUE(ApplyClipProperties(tree, Get(L"c2"), L"neu", L"x & y\r\nz"));
    EXPECT_EQ(Get(L"neu").Tag(), L"C&2,2&15.11.1999 13:10:00&x & y\r\nz");
    EXPECT_EQ(DiskOutline(), L"P(S(c1 T(neu)) c3) Q(U(c4))");
    EXPECT_FALSE(Profiles().Item(1).Dirty);

    for (const auto& [name, info] : {std::pair(L" ", L"i"), std::pair(L"n", L"→")}) {
        EXPECT_FALSE(ApplyClipProperties(tree, Get(L"neu"), name, info));
        EXPECT_EQ(Get(L"neu").Tag(), L"C&2,2&15.11.1999 13:10:00&x & y\r\nz");
    }
    EXPECT_EQ(fake.user.messages.size(), 2u);
}

TEST_F(NodePropertiesTest, ClipProperties_OfADamagedTagKeepItAndRefuseAnotherInfo) {
    leavesWhole = false;
    Node& clip = Get(L"c1");
    for (const wchar_t* tag : {L"C&7", L"C&7&x&y", L"C&x,1&t&i"}) {
        clip.SetTag(tag);
        EXPECT_EQ(ReadClipProperties(clip).file, L"");
        fake.user.messages.clear();
        EXPECT_FALSE(ApplyClipProperties(tree, clip, L"c1", L"neu"));
        EXPECT_EQ(fake.user.messages.size(), 1u);
        EXPECT_TRUE(ApplyClipProperties(tree, clip, L"c1", ReadClipProperties(clip).info));
        EXPECT_EQ(clip.Tag(), tag);
    }
}

TEST_F(NodePropertiesTest, FolderProperties_RoundTrip) {
    EXPECT_TRUE(ApplyFolderProperties(tree, Get(L"S"), L"S2", L"&a&"));
    EXPECT_EQ(ReadFolderProperties(Get(L"S2")).info, L"&a&");
    EXPECT_EQ(DiskOutline(), L"P(S2(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_FALSE(ApplyFolderProperties(tree, Get(L"S2"), L"", L"x"));
    EXPECT_EQ(Get(L"S2").Tag(), L"S&&a&");
}

TEST_F(NodePropertiesTest, NewFolder_IsTheLastOneAndSaved) {
    Node* const folder = NewFolder(tree, &Get(L"S"), L"neu", L"wofür & warum");
    ASSERT_NE(folder, nullptr);
    EXPECT_EQ(folder->Tag(), L"S&wofür & warum");
    EXPECT_EQ(folder->Image(), ImageValue(std::wstring(L"Structure")));
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2) neu) c3) Q(U(c4))");
    EXPECT_NE(NewFolder(tree, &Get(L"Q"), L"auch", L""), nullptr);
    EXPECT_EQ(NewFolder(tree, &Get(L"c1"), L"nicht", L""), nullptr);
    EXPECT_EQ(NewFolder(tree, nullptr, L"nicht", L""), nullptr);
    EXPECT_EQ(NewFolder(tree, &Get(L"S"), L" ", L""), nullptr);
    EXPECT_EQ(DiskOutline(), L"P(S(c1 T(c2) neu) c3) Q(U(c4) auch)");
}

TEST_F(NodePropertiesTest, RenameNode_FollowsTheSameRulesForEveryKind) {
    EXPECT_TRUE(RenameNode(tree, Get(L"P"), L"P2"));
    EXPECT_EQ(Profiles().Item(1).Name, L"P2");
    EXPECT_TRUE(RenameNode(tree, Get(L"T"), L"T2"));
    EXPECT_TRUE(RenameNode(tree, Get(L"c4"), L"Gruß"));
    EXPECT_FALSE(RenameNode(tree, Get(L"c1"), L"  "));
    EXPECT_EQ(MemoryOutline(), L"P2(S(c1 T2(c2)) c3) Q(U(Gruß))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
}

TEST_F(NodePropertiesTest, AChangeThatCannotBeSaved_WaitsForTheNextSave) {
    fake.files.SetReadOnly(L"C:\\P\\nxclip.nxp", true);
    EXPECT_TRUE(RenameNode(tree, Get(L"S"), L"neu")) << "what the user typed is not thrown away";
    EXPECT_FALSE(fake.user.messages.empty());
    EXPECT_EQ(DiskOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    fake.files.SetReadOnly(L"C:\\P\\nxclip.nxp", false);
    EXPECT_TRUE(RenameNode(tree, Get(L"c4"), L"c5"));
    EXPECT_EQ(DiskOutline(), L"P(neu(c1 T(c2)) c3) Q(U(c5))");
}

}  // namespace
