#include "engine/profiles/ProfileStore.h"

#include <array>

#include "engine/clipboard/ClipboardTest.h"
#include "engine/profiles/ProfileWorldTest.h"
#include "platform/FlushLater.h"

namespace {

class ProfileStoreTest : public ProfileWorldTest {
 protected:
    std::wstring BackUp(const std::wstring& directory) { return directory + L"\\nxclip.bak"; }
};

TEST_F(ProfileStoreTest, LoadProfileDirectory_TheTagLeadsToWhereTheFileLies) {
    Write(L"C:\\Kopie", {{L"P&5&C:\\Original&1&Info & mehr", L"P", 0}, {L"C&5,1&t&", L"c", 1}});
    Node* const profile = LoadProfileDirectory(tree, L"C:\\Kopie\\");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->Tag(), L"P&5&C:\\Kopie\\&1&Info & mehr");
    EXPECT_EQ(ClipFileOf(profile->FirstChild()), L"C:\\Kopie\\C5.nxc");
}

TEST_F(ProfileStoreTest, LoadProfileDirectory_NoNumberIsGivenTwice) {
    Write(L"C:\\A", {{L"P&2&C:\\A&1&i", L"A", 0}, {L"S&", L"S", 1}, {L"C&7,1&t&", L"c", 2}});
    EXPECT_EQ(LoadProfileDirectory(tree, L"C:\\A")->Tag(), L"P&7&C:\\A&1&i");
    Write(L"C:\\B", {{L"P&zwei&C:\\B&1&i", L"B", 0}, {L"C&4,1&t&", L"c", 1}});
    EXPECT_EQ(LoadProfileDirectory(tree, L"C:\\B")->Tag(), L"P&4&C:\\B&1&i") << "only the counter is damaged";
    Write(L"C:\\D",
          {{L"P&2147483647&C:\\D&0&", L"D", 0}, {L"C&2147483647,1&t&", L"c", 1}, {L"C&3,1&t&", L"c", 1}});
    EXPECT_EQ(LoadProfileDirectory(tree, L"C:\\D")->Tag(), L"P&3&C:\\D&0&") << "there must be numbers left";
}

TEST_F(ProfileStoreTest, LoadProfileDirectory_WhatIsNoProfileLeavesNoNode) {
    AddProfile(L"P");
    Write(L"C:\\A", {{L"S&", L"S", 0}, {L"C&1,1&t&", L"c", 1}, {L"P&0&C:\\A&0&", L"A", 0}});
    Write(L"C:\\B", {});
    fake.files.SetBytes(L"C:\\C\\nxclip.nxp", "garbage");
    Write(L"C:\\R&B", {{L"P&0&C:\\A&0&", L"A", 0}});
    for (const wchar_t* directory :
         {L"C:\\A", L"C:\\B", L"C:\\C", L"C:\\R&B", L"C:\\Missing", L"Z:\\x", L""}) {
        EXPECT_EQ(LoadProfileDirectory(tree, directory), nullptr) << AnsiFromText(directory);
        EXPECT_EQ(MemoryOutline(), L"P");
    }
}

TEST_F(ProfileStoreTest, LoadProfileDirectory_AHalfReadFileIsKeptAside) {
    Write(L"C:\\A", {{L"P&0&C:\\A&0&", L"A", 0}, {L"S&", L"S", 1}, {L"C&1,1&t&", L"c", 3}});
    const auto original = fake.files.Bytes(L"C:\\A\\nxclip.nxp");
    Node* const profile = LoadProfileDirectory(tree, L"C:\\A");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(MemoryOutline(), L"A(S)");
    SaveProfile(tree, *profile);
    EXPECT_EQ(fake.files.Bytes(BackUp(L"C:\\A")), original);

    Write(L"C:\\B",
          {{L"P&0&C:\\B&0&", L"B", 0}, {L"S&", L"S", 1}, {L"P&0&C:\\X&0&", L"X", 0}, {L"S&", L"Y", 1}});
    ASSERT_NE(LoadProfileDirectory(tree, L"C:\\B"), nullptr);
    EXPECT_EQ(MemoryOutline(), L"A(S) B(S)") << "a second profile in a file belongs to no list";
    EXPECT_TRUE(fake.files.Has(BackUp(L"C:\\B")));

    Write(L"C:\\D", {{L"P&0&C:\\D&0&", L"D", 0}});
    LoadProfileDirectory(tree, L"C:\\D");
    EXPECT_FALSE(fake.files.Has(BackUp(L"C:\\D")));

    // The same file needs no second copy; another one gets the next name, and without any it is not loaded.
    fake.files.SetBytes(L"C:\\A\\nxclip.nxp", *original);
    ASSERT_NE(LoadProfileDirectory(tree, L"C:\\A"), nullptr);
    EXPECT_FALSE(fake.files.Has(L"C:\\A\\nxclip2.bak"));
    fake.files.SetBytes(L"C:\\A\\nxclip.nxp", *original + "tail");
    ASSERT_NE(LoadProfileDirectory(tree, L"C:\\A"), nullptr);
    EXPECT_EQ(fake.files.Bytes(L"C:\\A\\nxclip2.bak"), *original + "tail");
    EXPECT_EQ(fake.files.Bytes(BackUp(L"C:\\A")), original);
    EXPECT_EQ(ProfileFile::WithoutLock(L"C:\\A").KeptCopies(),
              (std::vector<std::wstring>{L"nxclip.bak", L"nxclip2.bak"}));
    fake.files.SetBytes(L"C:\\A\\nxclip.nxp", *original + "no room");
    fake.failures.FailAlways(Operation::FilesCopy);
    const int count = nodes.Count();
    EXPECT_EQ(LoadProfileDirectory(tree, L"C:\\A"), nullptr);
    EXPECT_EQ(nodes.Count(), count);
}

TEST_F(ProfileStoreTest, SaveAllProfiles_OneFailureDoesNotStopTheOthers) {
    Fill();
    AddFolder(Get(L"P"), L"neu");
    AddFolder(Get(L"Q"), L"auch");
    fake.files.SetReadOnly(L"C:\\P\\nxclip.nxp", true);
    EXPECT_FALSE(SaveAllProfiles(tree));
    EXPECT_EQ(fake.user.messages.size(), 2u) << "the cause, and what came of it";
    EXPECT_EQ(DiskOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4) auch)");
    EXPECT_TRUE(Profiles().Item(1).Dirty);
    EXPECT_FALSE(Profiles().Item(2).Dirty);
    fake.files.SetReadOnly(L"C:\\P\\nxclip.nxp", false);
    EXPECT_TRUE(SaveAllProfiles(tree)) << "what failed is written with the next save";
    EXPECT_EQ(DiskOutline(), MemoryOutline());
}

TEST_F(ProfileStoreTest, SaveAllProfiles_WritesOnlyWhatChanged) {
    Fill();
    const int opened = fake.failures.Calls(Operation::FilesOpen);
    EXPECT_TRUE(SaveAllProfiles(tree));
    EXPECT_EQ(fake.failures.Calls(Operation::FilesOpen), opened);
    SetProfileChanged(&Get(L"c4"));
    EXPECT_TRUE(Profiles().Item(2).Dirty);
    EXPECT_FALSE(Profiles().Item(1).Dirty);
    EXPECT_TRUE(SaveAllProfiles(tree));
    EXPECT_GT(fake.failures.Calls(Operation::FilesOpen), opened);
}

class ConflictTest : public ProfileWorldTest {
 protected:
    // Another program put a tree there that has a folder "fremd" instead of the clips, and NXClip one of its
    // own.
    void SetUp() override {
        Fill();
        own = *fake.files.Bytes(kFile);
        Write(L"C:\\P", {{L"P&9&C:\\P&0&", L"P", 0}, {L"S&", L"fremd", 1}});
        others = *fake.files.Bytes(kFile);
        container.SetActiveContainer(&Get(L"S"));
        AddFolder(Get(L"P"), L"neu");
        EXPECT_TRUE(SaveAllProfiles(tree));
    }
    std::wstring OutlineOf(const wchar_t* copy) {
        fake.files.SetBytes(L"C:\\K\\nxclip.nxp",
                            fake.files.Bytes(std::wstring(L"C:\\P\\") + copy).value_or(""));
        NodeCollection loaded;
        CTreeViewEx other;
        other.Bind(&loaded);
        LoadProfileDirectory(other, L"C:\\K");
        return Outline(loaded);
    }
    const std::wstring kFile = L"C:\\P\\nxclip.nxp";
    std::string own;
    std::string others;
};

TEST_F(ConflictTest, Save_OfAFileThatAnotherProgramChanged_WritesNothingAndBlamesNobody) {
    EXPECT_EQ(fake.files.Bytes(kFile), others);
    EXPECT_TRUE(fake.user.questions.empty() && fake.user.messages.empty());
    EXPECT_NE(fake.user.LastStatus().find(L"anderes Programm"), std::wstring::npos) << "why, each time";
    EXPECT_FALSE(SettleConflicts(tree, container));
    ASSERT_EQ(fake.user.questions.size(), 2u) << "load again? write over it?";
    EXPECT_TRUE(SaveAllProfiles(tree));
    SettleConflicts(tree, container);
    EXPECT_EQ(fake.user.questions.size(), 2u) << "asked once";
    EXPECT_TRUE(fake.user.messages.empty()) << "No is no failure";
    EXPECT_EQ(fake.files.Bytes(kFile), others);

    KeepTreesInConflict(tree);
    EXPECT_EQ(OutlineOf(L"nxclip.bak"), L"P(S(c1 T(c2)) c3 neu)") << "the end keeps both";

    fake.files.SetBytes(kFile, own);
    EXPECT_TRUE(SaveAllProfiles(tree));
    EXPECT_EQ(DiskOutline(), MemoryOutline()) << "the other program has taken its change back";
    fake.files.SetBytes(kFile, others);
    AddFolder(Get(L"P"), L"mehr");
    EXPECT_TRUE(SaveAllProfiles(tree));
    SettleConflicts(tree, container);
    EXPECT_EQ(fake.user.questions.size(), 4u) << "the next change is asked about anew";
}

TEST_F(ConflictTest, Settle_ByWritingOverIt_KeepsTheOtherTree) {
    fake.user.answers = {false, true};
    EXPECT_FALSE(SettleConflicts(tree, container));
    EXPECT_EQ(DiskOutline(), L"P(S(c1 T(c2)) c3 neu) Q(U(c4))");
    EXPECT_EQ(fake.files.Bytes(L"C:\\P\\nxclip.bak"), others);
    AddFolder(Get(L"P"), L"mehr");
    SaveAllProfiles(tree);
    EXPECT_EQ(DiskOutline(), MemoryOutline());
}

TEST_F(ConflictTest, Settle_ByLoadingAgain_KeepsTheOwnTreeAndOffersItsClips) {
    for (const wchar_t* name : {L"c1", L"c2", L"c3"})
        fake.files.SetBytes(ClipFileOf(&Get(name)), RecordBytes(1, "Text", "abc"));
    fake.user.answers = {true, true};
    EXPECT_TRUE(SettleConflicts(tree, container));
    EXPECT_EQ(MemoryOutline(), L"P(fremd Wiedergefunden(Clip 1 Clip 2 Clip 3)) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(OutlineOf(L"nxclip.bak"), L"P(S(c1 T(c2)) c3 neu)");
    EXPECT_NE(container.Get(), nullptr);
}

// The moment does not count, only what is in it.
TEST_F(ProfileStoreTest, SaveProfile_OverTheSameBytesOfAnotherTime_IsNoConflict) {
    Fill();
    const std::wstring file = L"C:\\P\\nxclip.nxp";
    AddFolder(Get(L"P"), L"neu");
    fake.clock.Advance(std::chrono::milliseconds(1));
    fake.files.SetBytes(file, *fake.files.Bytes(file));
    SaveAllProfiles(tree);
    EXPECT_EQ(DiskOutline(), MemoryOutline());
}

TEST_F(ProfileStoreTest, SaveProfile_WithoutASubtreeLeavesItInTheTree) {
    Fill();
    EXPECT_TRUE(SaveProfile(tree, Get(L"P"), std::array{&Get(L"T")}));
    EXPECT_EQ(DiskOutline(), L"P(S(c1) c3) Q(U(c4))");
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_TRUE(SaveProfile(tree, Get(L"P"), std::array{&Get(L"U")}))
        << "a node of another profile changes nothing";
    EXPECT_EQ(DiskOutline(), MemoryOutline());
}

// With the journal gone, a loss of the current would leave a tree that names a clip without its data.
TEST_F(ProfileStoreTest, FinishSaves_KeepsTheJournalWhileAClipCannotBeFlushed) {
    Fill();
    const std::wstring clip = ClipFileOf(&Get(L"c1")), journal = L"C:\\P\\nxclip.jnl";
    FlushLater(clip);
    fake.files.LockByOther(clip);
    AddFolder(Get(L"P"), L"neu");
    SaveAllProfiles(tree);
    FinishSaves();
    EXPECT_TRUE(fake.files.Has(journal));
    fake.files.UnlockByOther(clip);
    FinishSaves();
    EXPECT_FALSE(fake.files.Has(journal));
}

}  // namespace
