#include "engine/profiles/ProfileAttachment.h"

#include "engine/flows/NodeProperties.h"
#include "engine/profiles/DeletedFolder.h"
#include "engine/profiles/FoundClips.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/WaitingProfiles.h"
#include "engine/profiles/WorldFaults.h"
#include "platform/Busy.h"
#include "platform/DirectoryAnswers.h"

namespace {

using namespace std::string_literals;

// Directories that do not answer, and how long that was waited for in all.
class SilentDrives : public DirectoryAnswersPort {
 public:
    SilentDrives() { UseDirectoryAnswers(this); }
    ~SilentDrives() override { UseDirectoryAnswers(nullptr); }
    bool Answers(const std::wstring& directory, std::chrono::milliseconds patience) override {
        if (!silent.contains(directory)) return true;
        waited += patience;
        return false;
    }

    std::set<std::wstring> silent;
    std::chrono::milliseconds waited{0};
};

class ProfileAttachmentTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        Fill();
        StoreProfileList();
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
        LoadListedProfiles(tree, askForMissing);
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
    using Choice = MissingProfileAnswer::Choice;
    missingAnswers = {{Choice::Keep, {}}, {Choice::TakeOut, {}}};
    Start();
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_EQ(ListOutline(), L"P=C:\\P Q=C:\\Q Stick=E:\\Stick Weg=C:\\Weg ");
    EXPECT_EQ(StoredList(), ListOutline());
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_EQ(askedForMissing, 2) << "only where the directory itself is gone";
    Write(L"E:\\Stick", {{L"P&0&x&0&", L"Stick", 0}});
    EXPECT_NE(actions.ImportProfileDirect(L"E:\\Stick"), nullptr) << "the entry waits for it";
    EXPECT_EQ(Profiles().Count(), 4);
}

TEST_F(ProfileAttachmentTest, StartAndImport_TakeNoDirectoryForAnotherBecauseOfANumberThatAllHave) {
    fake.files.numberOfAll = 7;
    OtherProgramTakes(L"C:\\Q");
    Start();
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))") << "though another program has the second one";
    EXPECT_EQ(StoredList(), L"P=C:\\P Q=C:\\Q ");
    for (const wchar_t* file : {L"nxclip.nxp", L"C1.nxc", L"C2.nxc", L"C3.nxc"})
        fake.files.SetBytes(L"E:\\Kopie\\" + std::wstring(file),
                            *fake.files.Bytes(L"C:\\P\\" + std::wstring(file)));
    EXPECT_NE(actions.ImportProfileDirect(L"E:\\Kopie"), nullptr) << "though it holds the same tree";
    EXPECT_EQ(StoredList(), L"P=C:\\P Q=C:\\Q P=E:\\Kopie ");
    EXPECT_EQ(Profiles().GetProfile(L"C:\\P")->Node, nodes.Root());
    EXPECT_EQ(actions.ImportProfileDirect(L"C:\\Y\\..\\P"), nullptr) << "attached already";
}

TEST_F(ProfileAttachmentTest, LoadListedProfiles_FindsAProfileThatWasMoved) {
    List(3, L"Alt", L"C:\\Alt");
    Write(L"D:\\Neu", {{L"P&0&C:\\Alt&0&", L"Alt", 0, L"Profile"}});
    fake.settings.Set(L"Settings", L"ActiveContainer", L"9");
    fake.settings.Set(L"Settings", L"ActiveContainerPlace", L"9,0,c:\\alt|");
    using Choice = MissingProfileAnswer::Choice;
    missingAnswers = {{Choice::Moved, L"C:\\Q"}, {Choice::Moved, L"D:\\"}, {Choice::Moved, L"D:\\Neu"}};
    Start();
    EXPECT_EQ(StoredList(), L"P=C:\\P Q=C:\\Q Alt=D:\\Neu ");
    EXPECT_EQ(fake.user.messages.size(), 2u) << "attached already, and no profile there";
    EXPECT_EQ(container.Title(), L"Alt") << "it has moved as well";
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
}

TEST_F(ProfileAttachmentTest, Profile_WhoseDirectoryDoesNotAnswer_WaitsInItsPlace) {
    List(3, L"R", L"E:\\R");
    Write(L"E:\\R", {{L"P&0&E:\\R&0&", L"R", 0, L"Profile"}});
    SilentDrives drives;
    drives.silent = {L"C:\\P", L"E:\\R"};
    Start();
    EXPECT_EQ(MemoryOutline(), L"P (antwortet nicht) Q(U(c4)) R (antwortet nicht)");
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_EQ(drives.waited, std::chrono::seconds(2)) << "for all of them together";
    EXPECT_EQ(container.Title(), L"Q");
    EXPECT_FALSE(AttachAnswering(tree, container));
    EXPECT_FALSE(operations.Delete(nodes.Root()));

    drives.silent = {L"E:\\R"};
    EXPECT_TRUE(AttachAnswering(tree, container));
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4)) R (antwortet nicht)");
    EXPECT_EQ(StoredList(), L"P=C:\\P Q=C:\\Q R=E:\\R ");
    fake.user.answers = {true};
    EXPECT_TRUE(actions.UnlinkProfile(&Get(L"R (antwortet nicht)")));
    EXPECT_FALSE(AnyWaiting());
    EXPECT_EQ(StoredList(), L"P=C:\\P Q=C:\\Q ");
    EXPECT_EQ(Damage(), std::vector<std::wstring>());

    List(3, L"R", L"E:\\R");
    Profiles().Clear();
    Start();
    drives.silent = {};
    EXPECT_NE(actions.ImportProfileDirect(L"E:\\R"), nullptr);
    AttachAnswering(tree, container);
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4)) R") << "the user was faster";
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
}

TEST_F(ProfileAttachmentTest, Container_InAProfileThatWaits_IsTakenUpUnlessTheUserHasChosenAnother) {
    SilentDrives drives;
    const auto startInSilence = [&] {
        drives.silent = {L"C:\\P"};
        Start();
        EXPECT_EQ(container.Title(), L"Q");
        EXPECT_EQ(fake.user.messages.size(), 1u) << "captures do not go elsewhere in silence";
        container.Store();
        drives.silent = {};
    };
    container.SetActiveContainer(&Get(L"T"));
    container.Store();
    startInSilence();
    startInSilence();
    Start();
    EXPECT_EQ(container.Title(), L"T") << "the end of a run in which it did not answer forgets nothing";
    startInSilence();
    AttachAnswering(tree, container);
    EXPECT_EQ(container.Get()->FullPath(), L"P\\S\\T");
    startInSilence();
    container.SetActiveContainer(&Get(L"U"));
    AttachAnswering(tree, container);
    EXPECT_EQ(container.Title(), L"U");
    container.Store();
    Start();
    EXPECT_EQ(container.Title(), L"U");

    drives.silent = {L"C:\\P", L"C:\\Q"};
    fake.settings.DeleteValue(L"Settings", L"ActiveContainerPlace");
    Start();
    EXPECT_EQ(container.Get(), nullptr);
    drives.silent = {L"C:\\P"};
    AttachAnswering(tree, container);
    EXPECT_EQ(container.Title(), L"Q") << "new clips have a place again";
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
    for (const wchar_t* gone : {L"C:\\P\\C1.nxc", L"C:\\P\\C2.nxc"})
        fake.files.Vanish(gone);
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

TEST_F(ProfileAttachmentTest, Start_RemovesNoFileThatMayHoldAClip) {
    leavesWhole = false;
    const std::string record = RecordOf("ein Text");
    const std::string nameTooLong = std::string(record).replace(4, 2, "\x7F\x7F");
    const std::string damaged[] = {std::string(record).replace(10, 4, "\xFF\xFF\xFF\xFF"), nameTooLong,
                                   std::string(4000, '\0')};
    const std::wstring files[] = {L"C:\\P\\C5.nxc", L"C:\\P\\C6.nxc", L"C:\\P\\C7.nxc", L"C:\\P\\C8.nxc",
                                  L"C:\\P\\C2147483647.nxc"};
    for (int i = 0; i < 3; ++i)
        fake.files.SetBytes(files[i], damaged[i]);
    for (int i = 3; i < 5; ++i)
        fake.files.SetBytes(files[i], record);
    // Each call of the search fails once: nothing is taken for empty because it could not be read.
    bool fired = true;
    for (int n = 1; fired; ++n) {
        fake.failures.readFailure = n % 2 == 0 ? ReadFailure::Short : ReadFailure::Error;
        fake.FailNthOfAny(n);
        FindClips(L"C:\\P", &Get(L"P"));
        fired = fake.Fired();
        fake.failures.FailNone();
        for (const std::wstring& file : files)
            EXPECT_TRUE(fake.files.Has(file)) << AnsiFromText(file) << ", call " << n;
    }
    const std::vector<FoundClip> found = FindClips(L"C:\\P", &Get(L"P"));
    ASSERT_EQ(found.size(), 1u) << "a number that ends the counter is none";
    EXPECT_EQ(found[0].number, 8);
}

TEST_F(ProfileAttachmentTest, Start_ANoHidesNothingThatCameAfterIt) {
    fake.files.SetBytes(L"C:\\P\\C50.nxc", RecordOf("eins"));
    Start();
    fake.clock.Advance(std::chrono::seconds(5));
    fake.files.SetBytes(L"C:\\P\\C20.nxc", RecordOf("zwei"));
    Start();
    ASSERT_EQ(fake.user.questions.size(), 1u);
    EXPECT_TRUE(fake.user.questions[0].text.starts_with(L"1 Clips ohne Eintrag"));
    Start();
    EXPECT_TRUE(fake.user.questions.empty());
    fake.clock.Advance(std::chrono::seconds(5));
    fake.files.SetBytes(L"C:\\P\\C50.nxc", RecordOf("another one"));
    Start();
    EXPECT_EQ(fake.user.questions.size(), 1u);

    AddDeletedFolder(nodes, Get(L"P"));
    fake.user.answers = {true};
    SearchLostClips(tree, Get(L"P"));
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3 Wiedergefunden(Clip 20 Clip 50) Gelöscht) Q(U(c4))");
    SearchLostClips(tree, Get(L"P"));
    EXPECT_EQ(fake.user.LastMessage(), L"Es wurden keine verlorenen Clips gefunden.");
}

// A start with a tree that is torn: it is made anew from a copy, or from the clips. Whatever fails, nothing
// of it is lost, and the next start can do it again.
TEST(ProfileAttachmentFaults, Rebuilding_WhateverFails_LosesNothingAndCanBeDoneAgain) {
    const std::wstring file = L"C:\\P\\nxclip.nxp", copy = L"C:\\P\\nxclip.bak";
    for (const bool fromCopy : {true, false}) {
        SCOPED_TRACE(fromCopy ? "from a copy" : "from the clips");
        const auto prepare = [&](ProfileWorld& world) {
            world.Fill();
            StoreProfileList();
            if (fromCopy) world.fake.files.SetBytes(copy, *world.fake.files.Bytes(file));
            for (int number = 1; !fromCopy && number <= 3; ++number)
                world.fake.files.SetBytes(ClipFilePath(L"C:\\P", number),
                                          ProfileWorld::DataOf(L"Clip " + std::to_wstring(number)));
            world.fake.files.SetBytes(file, "torn");
        };
        const auto start = [](ProfileWorld& world) {
            Profiles().Clear();
            // A clip that cannot be read just then is offered as one that was found.
            world.fake.user.answers = {true, true};
            LoadListedProfiles(world.tree, world.askForMissing);
            return world.nodes.Root() != nullptr && world.nodes.Root()->Text() == L"P";
        };
        const std::set<std::wstring> all =
            fromCopy ? std::set<std::wstring>{L"c1", L"c2", L"c3", L"c4"}
                     : std::set<std::wstring>{L"Clip 1", L"Clip 2", L"Clip 3", L"c4"};
        const auto check = [&](TriedWorld& world, bool struck) {
            EXPECT_TRUE(world.done || struck);
            EXPECT_EQ(ProfileWorld::StoredList(), L"P=C:\\P Q=C:\\Q ");
            EXPECT_TRUE(start(world));
            EXPECT_EQ(world.DiskOutline(), world.MemoryOutline());
            EXPECT_EQ(world.SoundClips(), all);
            EXPECT_EQ(world.DiskDamage(), std::vector<std::wstring>());
            const std::vector<std::wstring> kept = ProfileFile::WithoutLock(L"C:\\P").KeptCopies();
            EXPECT_TRUE(std::any_of(kept.begin(), kept.end(), [&](const std::wstring& name) {
                return world.fake.files.Bytes(L"C:\\P\\" + name) == "torn";
            })) << "what could not be read is kept";
        };
        for (const Fault fault : {Fault::OneCall, Fault::Kill, Fault::PowerLoss})
            EXPECT_GT(StrikeWorld(fault, WriteFailure::DiskFullWithPart, prepare, start, check), 20);
    }
}

TEST(ProfileAttachmentFaults, FoundClips_WhateverFails_AreTakenInWholeOrStayToBeFound) {
    const std::wstring file = L"C:\\P\\C9.nxc";
    const auto prepare = [&](ProfileWorld& world) {
        world.Fill();
        world.fake.files.SetBytes(file, ProfileWorld::DataOf(L"Clip 9"));
        world.fake.user.answers = {true};
    };
    const auto take = [](ProfileWorld& world) {
        SearchLostClips(world.tree, world.Get(L"P"));
        return world.MemoryOutline().find(L"Wiedergefunden(Clip 9)") != std::wstring::npos &&
               !Profiles().Item(1).Dirty;
    };
    const std::vector<std::wstring> all = {L"c1", L"c2", L"c3", L"c4"};
    const auto stays = [&](TriedWorld& world, bool struck) {
        EXPECT_TRUE(world.done || struck);
        EXPECT_EQ(world.fake.files.Bytes(file), ProfileWorld::DataOf(L"Clip 9"));
        EXPECT_EQ(world.DiskDamage(), std::vector<std::wstring>());
        EXPECT_TRUE(!world.done || world.DiskOutline() == world.MemoryOutline());
    };
    for (const Fault fault : {Fault::OneCall, Fault::TwoCalls, Fault::Kill})
        EXPECT_GT(StrikeWorld(fault, WriteFailure::DiskFullWithPart, prepare, take, stays), 10);
    EXPECT_GT(LoseCurrentInEveryStep(prepare, take, all, {L"Clip 9"}), 20);
}

// Another program, which asks no lock, writes the file before the load, or between the load and what follows
// it.
TEST_F(ProfileAttachmentTest, Load_WhatAStrangerWritesAfterItIsAConflict) {
    leavesWhole = false;
    const auto strangerWrites = [this](bool two) {
        std::vector<Record> records{{L"P&9&C:\\P&0&", L"P", 0, L"Profile"}, {L"S&", L"fremd", 1}};
        // A second top node is told by the load.
        if (two) records.push_back({L"P&0&C:\\X&0&", L"X", 0});
        Write(L"C:\\P", records);
    };
    for (const bool afterwards : {false, true}) {
        strangerWrites(true);
        fake.user.duringMessage = [&] {
            if (afterwards) strangerWrites(false);
        };
        Start();
        fake.user.duringMessage = nullptr;
        ASSERT_EQ(fake.user.messages.size(), 1u);
        const auto others = fake.files.Bytes(L"C:\\P\\nxclip.nxp");
        AddFolder(Get(L"P"), L"neu");
        EXPECT_TRUE(SaveAllProfiles(tree));
        EXPECT_EQ(fake.files.Bytes(L"C:\\P\\nxclip.nxp") == others, afterwards);
        fake.user.questions.clear();
        SettleConflicts(tree, container);
        EXPECT_EQ(fake.user.questions.size(), afterwards ? 2u : 0u);
        FinishSaves();
    }
}

TEST_F(ProfileAttachmentTest, TakeOver_CarriesTheContainerOverAndOffersWhatAStartDoes) {
    OtherProgramTakes(L"C:\\P");
    Start();
    container.SetActiveContainer(&Get(L"T"));
    nodes.Select(&Get(L"c2"));
    EXPECT_FALSE(RenameNode(tree, Get(L"S"), L"anders"));
    EXPECT_EQ(fake.user.messages.size(), 2u) << "at the start and for the change, once";
    // The other one puts a folder in front and is killed while it takes a clip.
    Write(L"C:\\P", {{L"P&3&C:\\P&0&", L"P", 0, L"Profile"},
                     {L"S&", L"davor", 1, L"Structure"},
                     {L"S&", L"T", 2, L"Structure"},
                     {L"S&", L"S", 1, L"Structure"},
                     {L"S&", L"T", 2, L"Structure"},
                     {L"C&2,2&t&", L"c2", 3}});
    for (const wchar_t* gone : {L"C:\\P\\C1.nxc", L"C:\\P\\C3.nxc"})
        fake.files.Vanish(gone);
    fake.files.SetBytes(L"C:\\P\\C9.nxc", RecordOf("neun"));
    OtherProgramLeaves(L"C:\\P");
    fake.user.answers = {true};
    EXPECT_TRUE(TakeOverFreedProfiles(tree, container));
    EXPECT_EQ(container.Get()->FullPath(), L"P\\S\\T");
    EXPECT_EQ(nodes.Selected(), &Get(L"c2"));
    EXPECT_NE(MemoryOutline().find(L"Wiedergefunden(Clip 9)"), std::wstring::npos);
}

// The session ends while the clips that were found are offered.
TEST_F(ProfileAttachmentTest, End_InAQuestionForgetsNoProfileAndIsNoAnswer) {
    Write(L"E:\\R", {{L"P&0&E:\\R&0&", L"R", 0, L"Profile"}});
    for (const wchar_t* file : {L"C:\\P\\C9.nxc", L"E:\\R\\C9.nxc"})
        fake.files.SetBytes(file, RecordOf("neun"));
    const std::wstring before = StoredList();
    fake.user.duringMessage = [] {
        if (Is(Busy::TreeOperation)) Profiles().Clear();
    };
    actions.ImportProfileDirect(L"E:\\R");
    EXPECT_EQ(StoredList(), before);
    fake.user.duringMessage = nullptr;
    OtherProgramTakes(L"C:\\P");
    OtherProgramTakes(L"C:\\Q");
    Start();
    OtherProgramLeaves(L"C:\\P");
    OtherProgramLeaves(L"C:\\Q");
    fake.user.duringMessage = [] { Profiles().Clear(); };
    TakeOverFreedProfiles(tree, container);
    EXPECT_EQ(StoredList(), before);
    SilentDrives drives;
    drives.silent = {L"C:\\P"};
    fake.user.duringMessage = nullptr;
    Start();
    drives.silent = {};
    fake.user.duringMessage = [] { Profiles().Clear(); };
    AttachAnswering(tree, container);
    EXPECT_EQ(StoredList(), before);
    fake.user.duringMessage = nullptr;
    Start();
    EXPECT_EQ(fake.user.questions.size(), 1u) << "nobody has said No";
}

TEST_F(ProfileAttachmentTest, TakeOver_OfAProfileThatCannotBeRead_IsToldOnce) {
    leavesWhole = false;
    OtherProgramTakes(L"C:\\P");
    Start();
    container.SetActiveContainer(&Get(L"T"));
    fake.user.messages.clear();
    fake.files.SetBytes(L"C:\\P\\nxclip.nxp", "torn");
    fake.files.SetBytes(L"C:\\P\\C1.nxc", RecordOf("eins"));
    OtherProgramLeaves(L"C:\\P");
    TakeOverFreedProfiles(tree, container);
    const std::size_t told = fake.user.messages.size();
    EXPECT_EQ(fake.user.questions.size(), 1u) << "it can be made anew from its clips";
    EXPECT_FALSE(TakeOverFreedProfiles(tree, container));
    EXPECT_EQ(fake.user.messages.size(), told);
    EXPECT_EQ(MemoryOutline(), L"Q(U(c4))");
    EXPECT_EQ(container.Title(), L"Q");
    EXPECT_EQ(ListOutline(), L"P=C:\\P Q=C:\\Q ") << "it stays in the list";
}

TEST_F(ProfileAttachmentTest, Start_OffersToMakeADamagedProfileAnew) {
    leavesWhole = false;
    const auto whole = fake.files.Bytes(L"C:\\P\\nxclip.nxp");
    fake.files.Vanish(L"C:\\P\\C2.nxc");
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

    // Whole, but its first node would stand below another one.
    Write(L"C:\\P", {{L"P&0&C:\\P&0&", L"P", 1}});
    Start();
    EXPECT_FALSE(fake.user.questions.empty());

    // A file that only cannot be read now is left alone.
    fake.files.LockByOther(L"C:\\P\\nxclip.nxp");
    Start();
    EXPECT_TRUE(fake.user.questions.empty());
}

TEST_F(ProfileAttachmentTest, LetProfileGo_LeavesItReadableUntilItsDriveIsThereAgain) {
    const int flushes = fake.failures.Calls(Operation::FilesFlush);
    SaveProfile(tree, Get(L"P"));
    AddFolder(Get(L"P"), L"neu");
    SaveAllProfiles(tree);
    LetProfileGo(Profiles().ProfileOf(&Get(L"P"))->File.LockFile());
    EXPECT_GT(fake.failures.Calls(Operation::FilesFlush), flushes + 1) << "the save, and its end";
    EXPECT_TRUE(ProfileLock(L"C:\\P").Held()) << "nothing stands in the way";
    EXPECT_FALSE(SaveProfile(tree, Get(L"P")));
    EXPECT_TRUE(SaveProfile(tree, Get(L"Q")));
    EXPECT_TRUE(TakeOverFreedProfiles(tree, container));
    EXPECT_TRUE(SaveProfile(tree, Get(L"P")));
}

}  // namespace
