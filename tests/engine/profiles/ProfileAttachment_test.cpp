#include "engine/profiles/ProfileAttachment.h"

#include "engine/profiles/ProfileWorldTest.h"
#include "engine/profiles/StructureLock.h"

namespace {

using namespace std::string_literals;

class ProfileAttachmentTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        Fill();
        Profiles().SaveRegistry();
    }
    void List(int position, const std::wstring& name, const std::wstring& directory) {
        const std::wstring number = std::to_wstring(position);
        fake.settings.Set(L"Profiles", L"Count", number);
        fake.settings.Set(L"Profiles", L"Name" + number, name);
        fake.settings.Set(L"Profiles", L"File" + number, directory);
    }
    void Start() {
        fake.user.messages.clear();
        fake.user.questions.clear();
        LoadListedProfiles(tree);
        container.Restore();
    }
    void OtherProgramTakes(const std::wstring& directory) {
        Profiles().Clear();
        fake.files.SetBytes(directory + L"\\nxclip.lck", "");
        fake.files.LockByOther(directory + L"\\nxclip.lck");
    }
    void OtherProgramLeaves(const std::wstring& directory) {
        fake.files.UnlockByOther(directory + L"\\nxclip.lck");
    }
    // One whole record of the format "Text".
    static std::string RecordOf(const std::string& text) {
        return "\x01\0\0\0\x04\0Text"s + static_cast<char>(text.size()) + "\0\0\0"s + text;
    }
};

TEST_F(ProfileAttachmentTest, LoadListedProfiles_KeepsTheirOrderAndWhatCannotBeLoadedNow) {
    nodes.Select(&Get(L"c1"));
    List(3, L"Stick", L"E:\\Stick");
    List(4, L"Dasselbe", L"C:\\X\\..\\Q\\");
    List(5, L"", L"");
    List(6, L"Weg", L"C:\\Weg");
    List(7, L"Auch weg", L"C:\\Auch");
    fake.user.answers = {true, false};
    Start();
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_EQ(ListOutline(), L"P=C:\\P Q=C:\\Q Stick=E:\\Stick Weg=C:\\Weg ");
    EXPECT_EQ(fake.user.messages.size(), 4u);
    EXPECT_EQ(fake.user.questions.size(), 2u) << "only where the directory itself is gone";
    Write(L"E:\\Stick", {{L"P&0&x&0&", L"Stick", 0}});
    EXPECT_NE(actions.ImportProfileDirect(L"E:\\Stick"), nullptr) << "the entry waits for it";
    EXPECT_EQ(Profiles().Count(), 4);
}

TEST_F(ProfileAttachmentTest, Import_TheSameDirectoryByAnotherSpellingIsAttachedAlready) {
    EXPECT_EQ(actions.ImportProfileDirect(L"C:\\Y\\..\\Q"), nullptr);
    EXPECT_EQ(fake.user.LastMessage(), L"Das Profil ist schon eingebunden !!!");
}

TEST_F(ProfileAttachmentTest, Profile_ThatAnotherProgramHas_CanOnlyBeRead) {
    OtherProgramTakes(L"C:\\P");
    const std::wstring lockOfQ = L"C:\\Q\\nxclip.lck";
    fake.files.SetBytes(lockOfQ, "");
    fake.files.SetReadOnly(lockOfQ, true);
    Start();
    fake.files.SetReadOnly(lockOfQ, false);
    EXPECT_EQ(fake.user.messages.size(), 1u);
    const std::set<std::wstring> files = Files();
    const auto bytes = fake.files.Bytes(L"C:\\P\\nxclip.nxp");
    fake.user.answers = {true, true};
    std::size_t refused = 1;
    const auto expectRefused = [&](bool done) {
        EXPECT_FALSE(done);
        EXPECT_EQ(fake.user.messages.size(), ++refused);
        EXPECT_EQ(fake.user.LastMessage(), kEditedByOther);
    };
    expectRefused(operations.Delete(&Get(L"c1")));
    expectRefused(operations.Delete(&Get(L"P")));
    expectRefused(ActionAllowed(TreeAction::EditClip, &Get(L"c2")));
    expectRefused(operations.Drop(&Get(L"S"), &Get(L"c4"), true, false) != nullptr);
    expectRefused(operations.Drop(&Get(L"U"), &Get(L"c1"), true, true) != nullptr);
    expectRefused(SaveProfile(tree, Get(L"P")));
    EXPECT_EQ(Files(), files);
    EXPECT_EQ(fake.files.Bytes(L"C:\\P\\nxclip.nxp"), bytes);
    EXPECT_NE(operations.Drop(&Get(L"U"), &Get(L"c3"), true, false), nullptr) << "copies may leave it";
    EXPECT_FALSE(TakeOverFreedProfiles(tree, container)) << "nobody else has had Q";

    // The other one changes it, is killed in its next save and leaves.
    Write(L"C:\\P", {{L"P&3&C:\\P&0&", L"P", 0}, {L"C&3,2&t&", L"c3", 1}, {L"S&", L"neu", 1}});
    container.SetActiveContainer(&Get(L"T"));
    nodes.Select(&Get(L"c1"));
    OtherProgramLeaves(L"C:\\P");
    EXPECT_TRUE(TakeOverFreedProfiles(tree, container));
    EXPECT_EQ(MemoryOutline(), L"P(c3 neu) Q(U(c4 c3))");
    EXPECT_EQ(container.Title(), L"P");
    EXPECT_EQ(nodes.Selected(), &Get(L"P"));
    EXPECT_TRUE(ActionAllowed(TreeAction::NewFolder, &Get(L"neu")));
    EXPECT_TRUE(SaveProfile(tree, Get(L"P")));
    EXPECT_FALSE(AnyEditedByOther());
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
}

TEST_F(ProfileAttachmentTest, Start_OffersClipsWithoutANodeOnceAndClearsHalfOnes) {
    fake.files.SetBytes(L"C:\\P\\C12.nxc", RecordOf("zwei") + RecordOf("Formate") + "\x0D\0\0\0half"s);
    fake.files.SetBytes(L"C:\\P\\C9.nxc", RecordOf("eins"));
    const std::wstring half[] = {L"C:\\P\\C10.nxc", L"C:\\P\\C11.nxc", L"C:\\P\\C3.nxc.~0",
                                 L"C:\\P\\nxclip.bak.~1"};
    fake.files.SetBytes(half[0], RecordOf("halb").substr(0, 12));
    for (int i = 1; i < 4; ++i)
        fake.files.SetBytes(half[i], "");
    const std::wstring own[] = {L"C:\\P\\C007.nxc", L"C:\\P\\Carl.nxc", L"C:\\P\\Brief.doc.~1"};
    for (const std::wstring& file : own)
        fake.files.SetBytes(file, "the user's");
    fake.user.answers = {false};
    Start();
    ASSERT_EQ(fake.user.questions.size(), 1u);
    EXPECT_TRUE(fake.user.questions[0].text.starts_with(L"2 Clips ohne Eintrag gefunden."));
    for (const std::wstring& file : half)
        EXPECT_FALSE(fake.files.Has(file)) << AnsiFromText(file);
    for (const std::wstring& file : own)
        EXPECT_TRUE(fake.files.Has(file)) << AnsiFromText(file);
    Start();
    EXPECT_TRUE(fake.user.questions.empty()) << "No means no";

    fake.files.SetBytes(L"C:\\P\\C20.nxc", RecordOf("zwei") + RecordOf("Formate"));
    fake.user.answers = {true};
    Start();
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3 Wiedergefunden(Clip 20)) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_TRUE(Get(L"Clip 20").Tag().starts_with(L"C&20,2&"));
    EXPECT_TRUE(Get(L"P").Tag().starts_with(L"P&20&"));
}

TEST_F(ProfileAttachmentTest, Start_OffersToMakeADamagedProfileAnew) {
    const auto whole = fake.files.Bytes(L"C:\\P\\nxclip.nxp");
    fake.files.SetBytes(L"C:\\P\\C1.nxc", RecordOf("eins"));
    fake.files.SetBytes(L"C:\\P\\C3.nxc", RecordOf("drei"));
    fake.files.SetBytes(L"C:\\P\\nxclip.nxp", "torn");
    Start();
    ASSERT_EQ(fake.user.questions.size(), 1u);
    EXPECT_NE(fake.user.questions[0].text.find(L"aus seinen 2 Clipdateien neu"), std::wstring::npos);
    EXPECT_EQ(ListOutline(), L"P=C:\\P Q=C:\\Q ") << "not forgotten";
    EXPECT_EQ(fake.files.Bytes(L"C:\\P\\nxclip.nxp"), "torn");

    fake.user.answers = {true};
    Start();
    EXPECT_EQ(MemoryOutline(), L"P(Clip 1 Clip 3) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(fake.files.Bytes(L"C:\\P\\nxclip.bak"), "torn");

    fake.files.SetBytes(L"C:\\P\\nxclip.nxp", "torn");
    fake.files.SetBytes(L"C:\\P\\nxclip2.bak", *whole);
    fake.user.answers = {true};
    Start();
    ASSERT_EQ(fake.user.questions.size(), 1u);
    EXPECT_NE(fake.user.questions[0].text.find(L"Soll die Kopie nxclip2.bak verwendet werden ?"),
              std::wstring::npos);
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_EQ(fake.files.Bytes(L"C:\\P\\nxclip.nxp"), whole);

    // A file that only cannot be read now is left alone.
    fake.files.LockByOther(L"C:\\P\\nxclip.nxp");
    Start();
    EXPECT_TRUE(fake.user.questions.empty());
}

}  // namespace
