#include "engine/profiles/modProfile.h"

#include "engine/profiles/ProfileWorldTest.h"
#include "platform/RuntimeError.h"

namespace {

class modProfileTest : public ProfileWorldTest {
 protected:
    // A profile node with a tag of its own, in the list.
    Node& Profile(const std::wstring& tag, const std::wstring& directory) {
        Node& profile = nodes.Add(nullptr, NodeRelation::Last, L"P", std::wstring(L"Profile"));
        profile.SetTag(tag);
        Profiles().Add(L"P", directory, false, &profile);
        return profile;
    }
    Node& Below(Node& parent, const std::wstring& tag) {
        Node& node = nodes.Add(&parent, NodeRelation::Child, L"n", ImageValue());
        node.SetTag(tag);
        return node;
    }
    Node* const none = nullptr;
};

TEST_F(modProfileTest, NewClipFileName_CountsOnlyWhenCommitted) {
    Node& profile = Profile(L"P&16&D:\\Clips\\&1&Info & mehr", L"D:\\Clips\\");
    Node& clip = Below(Below(profile, L"S&"), L"C&3,2&t&");
    std::int32_t number = 0;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(NewClipFileName(&clip, false, number), L"D:\\Clips\\C17.nxc");
        EXPECT_EQ(number, 17);
        EXPECT_FALSE(Profiles().Item(1).Dirty);
    }
    EXPECT_EQ(profile.Tag(), L"P&16&D:\\Clips\\&1&Info & mehr");
    EXPECT_EQ(NewClipFileName(&clip, true, number), L"D:\\Clips\\C17.nxc");
    EXPECT_EQ(profile.Tag(), L"P&17&D:\\Clips\\&1&Info & mehr");
    EXPECT_TRUE(Profiles().Item(1).Dirty);
    EXPECT_EQ(NewClipFileName(&profile, true, number), L"D:\\Clips\\C18.nxc");
    SetProfileDirectory(&profile, L"D:\\Clips");
    EXPECT_EQ(NewClipFileName(&profile, false, number), L"D:\\Clips\\C19.nxc") << "without the last \\";
}

TEST_F(modProfileTest, NewClipFileName_WithoutProfileOrNumberGivesNoName) {
    std::int32_t number = 5;
    EXPECT_EQ(NewClipFileName(none, true, number), L"");
    EXPECT_TRUE(fake.user.messages.empty());
    Node& stray = nodes.Add(nullptr, NodeRelation::Last, L"x", ImageValue());
    EXPECT_EQ(NewClipFileName(&stray, true, number), L"");
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_EQ(number, 5);

    Node& full = Profile(L"P&2147483647&C:\\A&0&", L"C:\\A");
    EXPECT_THROW(NewClipFileName(&full, true, number), RuntimeError);
    EXPECT_EQ(full.Tag(), L"P&2147483647&C:\\A&0&");
    full.SetTag(L"P&zwei&C:\\A&0&");
    EXPECT_THROW(NewClipFileName(&full, true, number), RuntimeError);
}

TEST_F(modProfileTest, ProfileDirectory_OnlyOfProfileNodes) {
    Node& profile = Profile(L"P&4&C:\\A&1&x&y", L"C:\\A");
    Node& folder = Below(profile, L"S&0&C:\\A&1&");
    EXPECT_EQ(GetProfileDirectory(&profile), L"C:\\A");
    EXPECT_EQ(GetProfileDirectory(&folder), L"");
    EXPECT_EQ(GetProfileDirectory(nullptr), L"");
    SetProfileDirectory(&profile, L"E:\\Neu");
    SetProfileDirectory(&folder, L"E:\\Neu");
    EXPECT_EQ(profile.Tag(), L"P&4&E:\\Neu&1&x&y");
    EXPECT_EQ(folder.Tag(), L"S&0&C:\\A&1&");
    RaiseClipCounter(profile, 3);
    EXPECT_EQ(profile.Tag(), L"P&4&E:\\Neu&1&x&y");
    RaiseClipCounter(profile, 9);
    EXPECT_EQ(profile.Tag(), L"P&9&E:\\Neu&1&x&y");
}

TEST_F(modProfileTest, ClipFileOf_OnlyASoundClipInAProfile) {
    Node& profile = Profile(L"P&4&C:\\A&1&", L"C:\\A");
    EXPECT_EQ(ClipFileOf(&Below(profile, L"C&12,3&t&i")), L"C:\\A\\C12.nxc");
    for (const wchar_t* tag : {L"C&12", L"C&", L"C", L"C&x,3&t&i", L"C&-3,1&t&", L"C&7&t&", L"S&", L""}) {
        EXPECT_EQ(ClipFileOf(&Below(profile, tag)), L"") << AnsiFromText(tag);
    }
    Node& stray = nodes.Add(nullptr, NodeRelation::Last, L"x", ImageValue());
    stray.SetTag(L"C&12,3&t&i");
    EXPECT_EQ(ClipFileOf(&stray), L"");
}

TEST_F(modProfileTest, AttributesOf_ReadsWhatStandsBeforeTheDamage) {
    Node& profile = Profile(L"P&4&C:\\A&1&x&y", L"C:\\A");
    EXPECT_EQ(AttributesOf(&profile).info, L"x&y");
    EXPECT_TRUE(AttributesOf(&profile).globalFlag);
    EXPECT_EQ(AttributesOf(&Below(profile, L"S&a&b")).info, L"a&b");
    EXPECT_EQ(AttributesOf(&Below(profile, L"C&7,x&t&i")).clipNumber, 7);
    EXPECT_EQ(AttributesOf(&Below(profile, L"C&x")).clipNumber, 0);
    // Read one after the other into the same memory, nothing of the one before stays.
    ReadNodeAttributes(&profile);
    ReadNodeAttributes(&Below(profile, L"C&x"));
    EXPECT_FALSE(ReadAttributes().globalFlag);
    EXPECT_EQ(ReadAttributes().directory + ReadAttributes().info, L"");
    EXPECT_EQ(ReadAttributes().counter, 0);
}

}  // namespace
