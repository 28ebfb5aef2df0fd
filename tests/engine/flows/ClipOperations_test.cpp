#include "engine/flows/ClipOperations.h"

#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/flows/NewClipFile.h"
#include "engine/flows/NodeProperties.h"
#include "engine/profiles/WorldFaults.h"
#include "platform/Busy.h"

namespace {

using namespace std::string_literals;

using World = ProfileWorld;

class ClipOperationsTest : public ProfileWorldTest {
 protected:
    void SetUp() override { Fill(); }
    std::wstring FileOf(const std::wstring& name) { return ClipFileOf(&Get(name)); }
    std::wstring InfoOf(const Node& node) { return AttributesOf(&node).info; }
};

TEST_F(ClipOperationsTest, DropCopy_GivesEachClipAFileOfItsOwn) {
    Node* const copy = operations.Drop(&Get(L"U"), &Get(L"S"), true, false);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4 S(c1 T(c2))))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
    EXPECT_EQ(InfoOf(*copy), L"Info & mehr");
    EXPECT_EQ(copy->LastChild()->FirstChild()->Tag(), L"C&3,2&15.11.1999 13:10:00&a&b");
    EXPECT_EQ(Get(L"c2").Tag(), L"C&2,2&15.11.1999 13:10:00&a&b") << "the source keeps its number";
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(ClipOperationsTest, DropMoveOfAProfile_ReordersTreeAndList) {
    Get(L"S").SetSorted(true);
    Node* const moved = operations.Drop(&Get(L"P"), &Get(L"Q"), false, true);
    EXPECT_EQ(MemoryOutline(), L"Q(U(c4)) P(S(c1 T(c2)) c3)");
    EXPECT_EQ(Profiles().Item(1).Node, moved);
    EXPECT_TRUE(Get(L"S").Sorted()) << "what moves stays as it is";
    EXPECT_EQ(ListOutline(), L"Q=C:\\Q P=C:\\P ");
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
    operations.Drop(nullptr, &Get(L"Q"), false, true);
    EXPECT_EQ(ListOutline(), L"P=C:\\P Q=C:\\Q ");
}

TEST_F(ClipOperationsTest, DropMove_TakesTheActiveContainerAlong) {
    for (const wchar_t* target : {L"P", L"U"}) {
        container.SetActiveContainer(&Get(L"T"));
        ASSERT_NE(operations.Drop(&Get(target), &Get(L"S"), true, true), nullptr);
        EXPECT_EQ(container.Get(), &Get(L"T"));
    }
    container.SetActiveContainer(&Get(L"S"));
    operations.Drop(&Get(L"P"), &Get(L"S"), true, false);
    EXPECT_EQ(Get(L"P").LastChild()->Image(), ImageValue(std::wstring(L"Structure")))
        << "a copy of the container is not the container";
    container.SetActiveContainer(&Get(L"Q"));
    operations.Drop(&Get(L"P"), &Get(L"Q"), false, true);
    EXPECT_EQ(container.Get(), &Get(L"Q"));
}

TEST_F(ClipOperationsTest, Drop_RefusesWhatTheRulesOrTheLockForbid) {
    const WorldState before = StateOf(*this);
    EXPECT_EQ(operations.Drop(&Get(L"c3"), &Get(L"c1"), true, true), nullptr);
    EXPECT_EQ(fake.user.LastMessage(), L"Ablage auf diesem Eintrag ist nicht erlaubt !!!");
    EXPECT_EQ(operations.Drop(&Get(L"T"), &Get(L"S"), true, true), nullptr);
    EXPECT_EQ(operations.Drop(nullptr, nullptr, true, true), nullptr);
    EXPECT_EQ(fake.user.messages.size(), 2u);
    Options().LockEdit = true;
    EXPECT_EQ(operations.Drop(&Get(L"P"), &Get(L"c1"), true, true), nullptr);
    EXPECT_EQ(fake.user.LastMessage(), L"Die Strukturaktionen sind gesperrt !!!");
    EXPECT_EQ(StateOf(*this), before);

    // A global release frees a profile, but not the one that the node would leave.
    Get(L"Q").SetTag(L"P&1&C:\\Q&1&");
    EXPECT_EQ(operations.Drop(&Get(L"U"), &Get(L"c1"), true, true), nullptr);
    EXPECT_NE(operations.Drop(&Get(L"Q"), &Get(L"c4"), true, true), nullptr);
}

// Every box that an operation shows, be it a question or a failure, stands inside the operation: no capture
// may come in below it.
TEST_F(ClipOperationsTest, EveryBox_StandsInsideTheOperation) {
    int boxes = 0;
    fake.user.duringMessage = [&] {
        ++boxes;
        EXPECT_TRUE(Is(Busy::TreeOperation)) << "box " << boxes;
    };
    for (const wchar_t* name : {L"c1", L"S", L"P"})
        operations.Delete(&Get(name));
    operations.Drop(&Get(L"c3"), &Get(L"c1"), true, true);
    actions.UnlinkProfile(&Get(L"P"));
    actions.BuildNewprofile(L"", L"C:\\P", L"");
    actions.ImportProfileDirect(L"C:\\P");
    NewFolder(tree, &Get(L"P"), L"", L"");
    RenameNode(tree, Get(L"c1"), L"");
    ApplyClipProperties(tree, Get(L"c1"), L"", L"");
    ApplyFolderProperties(tree, Get(L"S"), L"", L"");
    ApplyProfileProperties(tree, Get(L"P"), {});
    EXPECT_EQ(boxes, 12);
    EXPECT_FALSE(Is(Busy::TreeOperation));
}

TEST_F(ClipOperationsTest, Question_AboutANodeThatIsGoneDoesNothing) {
    for (const wchar_t* name : {L"c1", L"S", L"P"}) {
        fake.user.answers = {true};
        fake.user.duringMessage = [&] { nodes.Remove(Get(name)); };
        EXPECT_FALSE(operations.Delete(&Get(name)));
    }
    fake.user.answers = {true};
    fake.user.duringMessage = [&] { nodes.Remove(Get(L"Q")); };
    EXPECT_FALSE(actions.UnlinkProfile(&Get(L"Q")));
    EXPECT_EQ(fake.user.messages.size(), 0u);
}

TEST_F(ClipOperationsTest, DropCopy_MissingOrUnreadableDataIsTold) {
    leavesWhole = false;
    const std::string data = *fake.files.Bytes(FileOf(L"c1"));
    fake.files.Remove(FileOf(L"c1"));
    fake.files.Remove(FileOf(L"c2"));
    fake.user.duringMessage = [&] {
        EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))") << "told with half a copy in the tree";
    };
    EXPECT_EQ(operations.Drop(&Get(L"U"), &Get(L"S"), true, false), nullptr);
    ASSERT_EQ(fake.user.messages.size(), 1u) << "once, and the copy ends there";
    EXPECT_EQ(fake.user.messages[0].title, L"Datei nicht gefunden");
    EXPECT_FALSE(fake.files.Has(L"C:\\Q\\C2.nxc"));

    fake.files.SetBytes(FileOf(L"c1"), data);
    fake.files.LockByOther(FileOf(L"c1"));
    EXPECT_EQ(operations.Drop(&Get(L"U"), &Get(L"c1"), true, false), nullptr);
    EXPECT_EQ(fake.user.messages[1].title, L"Fataler Fehler in AfterNodeCopy");
    Get(L"Q").SetTag(L"P&2147483647&C:\\Q&0&");
    EXPECT_EQ(operations.Drop(&Get(L"U"), &Get(L"c3"), true, false), nullptr);
    EXPECT_EQ(fake.user.messages[2].title, L"Fataler Fehler in AfterNodeCopy") << "no number left";
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
}

TEST_F(ClipOperationsTest, Delete_AsksAndTakesNoForNo) {
    const WorldState before = StateOf(*this);
    for (const wchar_t* name : {L"c1", L"S", L"P"})
        EXPECT_FALSE(operations.Delete(&Get(name)));
    EXPECT_FALSE(operations.Delete(nullptr));
    EXPECT_EQ(fake.user.questions.size(), 3u);
    for (const FakeUser::Question& question : fake.user.questions)
        EXPECT_TRUE(question.noIsDefault);
    EXPECT_EQ(StateOf(*this), before);
}

TEST_F(ClipOperationsTest, DeleteFolder_TakesTheDataOfEveryClipBelow) {
    container.SetActiveContainer(&Get(L"T"));
    fake.user.answers = {true};
    EXPECT_TRUE(operations.Delete(&Get(L"S")));
    EXPECT_EQ(MemoryOutline(), L"P(c3) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(Files(), (std::set<std::wstring>{L"C:\\P\\C3.NXC", L"C:\\P\\NXCLIP.NXP", L"C:\\Q\\C1.NXC",
                                               L"C:\\Q\\NXCLIP.NXP"}));
    EXPECT_EQ(container.Get(), &Get(L"P"));
}

TEST_F(ClipOperationsTest, DeleteProfile_TakesItsFilesAndItsPlaceInTheList) {
    container.SetActiveContainer(&Get(L"S"));
    fake.files.SetBytes(L"C:\\P\\notes.txt", "the user's own");
    fake.user.answers = {true, true};
    EXPECT_TRUE(operations.Delete(&Get(L"P")));
    EXPECT_EQ(MemoryOutline(), L"Q(U(c4))");
    EXPECT_EQ(ListOutline(), L"Q=C:\\Q ");
    EXPECT_EQ(Files(), (std::set<std::wstring>{L"C:\\P\\NOTES.TXT", L"C:\\Q\\C1.NXC", L"C:\\Q\\NXCLIP.NXP"}));
    EXPECT_TRUE(fake.files.IsDirectory(L"C:\\P"));
    EXPECT_EQ(container.Get(), &Get(L"Q"));
    EXPECT_TRUE(operations.Delete(&Get(L"Q")));
    EXPECT_EQ(container.Get(), nullptr);
}

TEST_F(ClipOperationsTest, Delete_OfOneOfTwoNodesWithTheSameFile_LeavesItToTheOther) {
    const std::wstring file = FileOf(L"c1");
    Get(L"c3").SetTag(Get(L"c1").Tag());  // as in files that were merged
    fake.user.answers = {true, true};
    EXPECT_TRUE(operations.Delete(&Get(L"S")));
    EXPECT_TRUE(fake.files.Has(file));
    EXPECT_TRUE(operations.Delete(&Get(L"c3")));
    EXPECT_FALSE(fake.files.Has(file));
}

TEST_F(ClipOperationsTest, DropMove_AfterACopyThatFailed_IsDone) {
    fake.failures.FailAlways(Operation::FilesCopy);
    EXPECT_EQ(operations.Drop(&Get(L"U"), &Get(L"c1"), true, false), nullptr);
    fake.failures.FailNone();
    EXPECT_NE(operations.Drop(&Get(L"P"), &Get(L"c1"), true, true), nullptr);
}

TEST_F(ClipOperationsTest, DeleteProfile_WhoseDirectoryVanished_IsGone) {
    for (const std::wstring& file : fake.files.AllFiles()) {
        if (file.starts_with(L"C:\\P\\")) fake.files.Vanish(file);
    }
    fake.files.Vanish(L"C:\\P");
    fake.user.answers = {true};
    EXPECT_TRUE(operations.Delete(&Get(L"P")));
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_EQ(ListOutline(), L"Q=C:\\Q ");
}

TEST_F(ClipOperationsTest, Delete_DataThatCannotGoIsToldOnce) {
    fake.files.SetReadOnly(FileOf(L"c1"), true);
    fake.files.SetReadOnly(FileOf(L"c2"), true);
    fake.files.Remove(FileOf(L"c3"));
    fake.user.answers = {true, true};
    EXPECT_TRUE(operations.Delete(&Get(L"c3"))) << "data that is gone already is no failure";
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_TRUE(operations.Delete(&Get(L"S")));
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_EQ(DiskOutline(), L"P Q(U(c4))");
}

// A clip that stands on the clipboard as a promise.
TEST_F(ClipOperationsTest, Delete_OnAFullDisk_FreesItFirst) {
    fake.files.capacity = 0;
    fake.user.answers = {true, false};
    EXPECT_FALSE(operations.Delete(&Get(L"S")));
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    std::int64_t used = 0;
    for (const std::wstring& file : fake.files.AllFiles())
        used += static_cast<std::int64_t>(fake.files.Bytes(file)->size());
    fake.files.SetBytes(FileOf(L"c1"), std::string(5000, 'x'));
    fake.files.capacity = used + 5000;
    fake.user.answers = {true, true};
    EXPECT_TRUE(operations.Delete(&Get(L"S")));
    EXPECT_EQ(DiskOutline(), L"P(c3) Q(U(c4))");
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
}

class SeveralTest : public ClipOperationsTest {
 protected:
    void SetUp() override {
        ClipOperationsTest::SetUp();
        Options().KeepDeleted = true;
    }
    // Of a row below another one nothing is heard twice.
    std::vector<Node*> Several() { return {&Get(L"c3"), &Get(L"c2"), &Get(L"T"), &Get(L"c1")}; }
};

TEST_F(SeveralTest, Delete_GoesToTheFolderForItAndComesBackWhereItWas) {
    container.SetActiveContainer(&Get(L"T"));
    const std::wstring tag = Get(L"c1").Tag();
    nodes.Select(&Get(L"c3"));
    EXPECT_TRUE(operations.Delete(Several()));
    EXPECT_TRUE(fake.user.questions.empty()) << "it can be taken back";
    EXPECT_EQ(MemoryOutline(), L"P(S Gelöscht(c3 c1 T(c2))) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(container.Get(), &Get(L"S"));
    EXPECT_EQ(nodes.Selected(), &Get(L"S"));
    EXPECT_EQ(InfoOf(Get(L"c1")), L"[Gelöscht am 15.11.1999 aus P\\S]");

    EXPECT_EQ(operations.TakeBackDeletion().size(), 3u);
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3 Gelöscht) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(Get(L"c1").Tag(), tag);
    EXPECT_FALSE(operations.CanTakeBackDeletion());
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
}

TEST_F(SeveralTest, TakeBackDeletion_PutsBackWhatIsLeftAndWhereItCan) {
    operations.Delete(Several());
    operations.Drop(&Get(L"Q"), &Get(L"S"), true, true);
    operations.Drop(&Get(L"P"), &Get(L"T"), true, true);
    EXPECT_EQ(InfoOf(Get(L"T")), L"") << "it is no deleted one any more";
    EXPECT_EQ(operations.TakeBackDeletion().size(), 2u);
    EXPECT_EQ(MemoryOutline(), L"P(T(c2) c3 c1 Gelöscht) Q(U(c4) S)");

    operations.Delete(Several());
    fake.user.answers = {true};
    actions.UnlinkProfile(&Get(L"P"));
    EXPECT_FALSE(operations.CanTakeBackDeletion());
    EXPECT_EQ(operations.TakeBackDeletion(), std::vector<Node*>());
}

TEST_F(SeveralTest, Deleted_GoesForGoodAfterOneQuestionThatCounts) {
    operations.Delete(Several());
    Node& folder = *Get(L"c3").Parent();
    fake.user.answers = {false, true, true};
    EXPECT_FALSE(operations.EmptyDeleted(Get(L"P")));
    EXPECT_EQ(fake.user.questions[0].text, L"Wollen Sie wirklich 3 Clips und 1 Ordner endgültig löschen ?");
    EXPECT_TRUE(operations.Delete(std::vector{&Get(L"c1"), &Get(L"T"), &Get(L"c4")}));
    EXPECT_EQ(fake.user.questions[1].text, L"Wollen Sie wirklich 2 Clips und 1 Ordner endgültig löschen ?");
    EXPECT_EQ(MemoryOutline(), L"P(S Gelöscht(c3)) Q(U Gelöscht(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());

    AddFolder(folder, L"Eigener");
    SaveAllProfiles(tree);
    fake.clock.Advance(std::chrono::hours(24 * 30));
    EXPECT_FALSE(operations.RemoveOldDeleted(30));
    fake.clock.Advance(std::chrono::hours(24));
    EXPECT_FALSE(operations.RemoveOldDeleted(0));
    EXPECT_TRUE(operations.RemoveOldDeleted(30));
    EXPECT_EQ(MemoryOutline(), L"P(S Gelöscht(Eigener)) Q(U Gelöscht)")
        << "nobody knows since when it is there";
    FinishSaves();
    EXPECT_EQ(Files(), (std::set<std::wstring>{L"C:\\P\\NXCLIP.NXP", L"C:\\Q\\NXCLIP.NXP"}));
    EXPECT_EQ(fake.user.questions.size(), 2u);
}

TEST_F(SeveralTest, Delete_OfTheFolderForItWithOthers_KeepsTheOthers) {
    operations.Delete(&Get(L"c3"));
    fake.user.answers = {true};
    EXPECT_TRUE(operations.Delete(std::vector{&Get(L"S"), Get(L"c3").Parent()}));
    EXPECT_EQ(fake.user.questions[0].text, L"Wollen Sie wirklich 1 Clip und 1 Ordner endgültig löschen ?");
    EXPECT_EQ(MemoryOutline(), L"P(Gelöscht(S(c1 T(c2)))) Q(U(c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    operations.TakeBackDeletion();
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) Gelöscht) Q(U(c4))");
}

TEST_F(SeveralTest, KeepNewest_LetsTheOldestGoThatNobodyKeeps) {
    Node& u = Get(L"U");
    AddClip(u, L"c5", L"Meiner");
    AddClip(u, L"c6", L"Der Clip ist unvollständig: nicht geliefert wurden RTF");
    AddClip(u, L"c7");
    EXPECT_FALSE(operations.KeepNewest(u, 0));
    EXPECT_FALSE(operations.KeepNewest(u, 3));
    EXPECT_TRUE(operations.KeepNewest(u, 1));
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c5 c7) Gelöscht(c4 c6))");
    EXPECT_FALSE(operations.CanTakeBackDeletion()) << "the user deleted something else last";
    EXPECT_FALSE(operations.KeepNewest(*Get(L"c4").Parent(), 1));
    Options().KeepDeleted = false;
    AddClip(u, L"c8");
    EXPECT_TRUE(operations.KeepNewest(u, 1));
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c5 c8) Gelöscht(c4 c6))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_TRUE(fake.user.questions.empty());
}

TEST_F(SeveralTest, Drop_MovesThemInOrderOrNoneOfThem) {
    const WorldState before = StateOf(*this);
    EXPECT_TRUE(operations.Drop(&Get(L"T"), std::vector{&Get(L"c3"), &Get(L"S")}, true, true).empty());
    EXPECT_TRUE(operations.Drop(nullptr, std::vector{&Get(L"P"), &Get(L"Q")}, false, true).empty());
    EXPECT_EQ(StateOf(*this), before);
    EXPECT_EQ(
        operations.Drop(&Get(L"U"), std::vector{&Get(L"c3"), &Get(L"T"), &Get(L"c4")}, true, true).size(),
        3u);
    EXPECT_EQ(MemoryOutline(), L"P(S(c1)) Q(U(c3 T(c2) c4))");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
}

class AnnouncedClipTest : public ClipOperationsTest {
 protected:
    void SetUp() override {
        ClipOperationsTest::SetUp();
        fake.files.SetBytes(FileOf(L"c1"), "\x01\0\0\0\x04\0Text\x07\0\0\0Inhalt\0"s);
        const WindowHandle window = fake.windows.AddWindow(L"NXClip");
        TheMainWindowHooks.procedure = fake.windows.AddProcedure(ClipboardWndProc);
        ConnectViewer(window);
        ClipboardWindow = window;
        ASSERT_TRUE(RestoreClip(clipBoard, window, FileOf(L"c1"), 1)) << "the record is readable";
        ASSERT_TRUE(fake.clipboard.IsPending(kTextFormat));
    }
    void TearDown() override {
        DisconnectViewer();
        UnsubclassWindow();
    }
    CClipBoard clipBoard;
};

TEST_F(AnnouncedClipTest, Delete_ThePasteAfterItStillWorks) {
    fake.user.answers = {true};
    const std::wstring file = FileOf(L"c1");
    ASSERT_TRUE(operations.Delete(&Get(L"S")));
    EXPECT_FALSE(fake.files.Has(file));
    EXPECT_EQ(fake.clipboard.OtherProgramReads(kTextFormat), "Inhalt\0"s);
}

TEST_F(AnnouncedClipTest, MoveToAnotherProfile_ThePasteAfterItStillWorks) {
    ASSERT_NE(operations.Drop(&Get(L"U"), &Get(L"c1"), true, true), nullptr);
    EXPECT_EQ(fake.clipboard.OtherProgramReads(kTextFormat), "Inhalt\0"s);
}

TEST_F(AnnouncedClipTest, DeleteAndMove_OfWhatCannotBeRendered_AskFirst) {
    const std::wstring file = FileOf(L"c1");
    fake.failures.FailAlways(Operation::ClipboardOpen);
    fake.user.answers = {true, false, false, true, true};
    EXPECT_FALSE(operations.Delete(&Get(L"c1")));
    EXPECT_EQ(operations.Drop(&Get(L"U"), &Get(L"c1"), true, true), nullptr);
    EXPECT_TRUE(fake.files.Has(file));
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_TRUE(operations.Delete(&Get(L"c1")));
    EXPECT_FALSE(fake.files.Has(file));
}

TEST_F(AnnouncedClipTest, DeleteOfAnotherClip_LeavesThePromiseAsItIs) {
    fake.user.answers = {true};
    ASSERT_TRUE(operations.Delete(&Get(L"c3")));
    EXPECT_TRUE(fake.clipboard.IsPending(kTextFormat));
}

void Prepare(World& world) {
    world.Fill();
    world.container.SetActiveContainer(&world.Get(L"T"));
}

Operating Dropping(const wchar_t* source, const wchar_t* target, bool asChild, bool move) {
    return [=](World& world) {
        return world.operations.Drop(&world.Get(target), &world.Get(source), asChild, move) != nullptr;
    };
}

Operating Deleting(const wchar_t* name) {
    return [=](World& world) {
        world.fake.user.answers = {true};
        return world.operations.Delete(&world.Get(name));
    };
}

// With a disk that keeps nothing of a failed write, and with those that keep half.
TEST(ClipOperationsFaults, EveryOperation_WithAnyCallFailing_IsDoneWholeOrNotAtAll) {
    const struct {
        Operating operation;
        std::wstring outline;
        const wchar_t* container;
        int calls;  // that can fail
    } cases[] = {
        {Dropping(L"S", L"U", true, false), L"P(S(c1 T(c2)) c3) Q(U(c4 S(c1 T(c2))))", L"T", 17},
        {Dropping(L"S", L"c3", false, true), L"P(S(c1 T(c2)) c3) Q(U(c4))", L"T", 13},
        {Dropping(L"S", L"P", true, true), L"P(c3 S(c1 T(c2))) Q(U(c4))", L"T", 13},
        {Dropping(L"S", L"U", true, true), L"P(c3) Q(U(c4 S(c1 T(c2))))", L"T", 33},
        {Deleting(L"c2"), L"P(S(c1 T) c3) Q(U(c4))", L"T", 13},
        {Deleting(L"S"), L"P(c3) Q(U(c4))", L"P", 14},
        {Deleting(L"P"), L"Q(U(c4))", L"Q", 15},
    };
    for (const WriteFailure mode :
         {WriteFailure::Nothing, WriteFailure::DiskFullWithPart, WriteFailure::Short}) {
        for (const auto& each : cases) {
            SCOPED_TRACE(AnsiFromText(each.outline));
            const auto after = [&](World& world) {
                EXPECT_EQ(world.MemoryOutline(), each.outline);
                EXPECT_EQ(world.container.Title(), each.container);
                EXPECT_EQ(world.fake.files.Has(L"C:\\P\\nxclip.nxp"), each.outline.starts_with(L"P"))
                    << "a tree without its clips";
            };
            EXPECT_EQ(FailEveryStep(mode, Prepare, each.operation, after), each.calls);
        }
    }
}

void PrepareToKeepDeleted(World& world) {
    Prepare(world);
    Options().KeepDeleted = true;
}

void PrepareDeleted(World& world) {
    PrepareToKeepDeleted(world);
    world.operations.Delete(std::vector{&world.Get(L"c1"), &world.Get(L"T"), &world.Get(L"c3")});
    FinishSaves();
}

// Deletions of several, into their folder and for good, what takes one back, and the emptying.
TEST(ClipOperationsFaults, DeletionsOfSeveral_WhateverFails_AreDoneWholeOrNotAtAll) {
    const Operating deleting = [](World& world) {
        world.fake.user.answers = {true};
        return world.operations.Delete(std::vector{&world.Get(L"c1"), &world.Get(L"T"), &world.Get(L"c3")});
    };
    const Operating keeping = [](World& world) {
        return world.operations.Delete(std::vector{&world.Get(L"c1"), &world.Get(L"T"), &world.Get(L"c3")});
    };
    const Operating takingBack = [](World& world) { return world.operations.TakeBackDeletion().size() == 3; };
    const Operating emptying = [](World& world) {
        world.fake.user.answers = {true};
        return world.operations.EmptyDeleted(world.Get(L"P"));
    };
    const std::vector<std::wstring> all = {L"c1", L"c2", L"c3", L"c4"};
    const struct {
        Preparing prepare;
        Operating operation;
        std::wstring outline;
        std::vector<std::wstring> keeps;
    } cases[] = {
        {PrepareToKeepDeleted, keeping, L"P(S Gelöscht(c1 T(c2) c3)) Q(U(c4))", all},
        {Prepare, deleting, L"P(S) Q(U(c4))", {L"c4"}},
        {PrepareDeleted, takingBack, L"P(S(c1 T(c2)) c3 Gelöscht) Q(U(c4))", all},
        {PrepareDeleted, emptying, L"P(S Gelöscht) Q(U(c4))", {L"c4"}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(AnsiFromText(each.outline));
        const auto after = [&](World& world) { EXPECT_EQ(world.MemoryOutline(), each.outline); };
        for (const WriteFailure mode : {WriteFailure::Nothing, WriteFailure::DiskFullWithPart})
            EXPECT_GT(FailEveryStep(mode, each.prepare, each.operation, after), 5);
        EXPECT_GT(FailEveryPair(WriteFailure::DiskFullWithPart, each.prepare, each.operation), 20);
        EXPECT_GT(KillInEveryStep(each.prepare, each.operation, each.keeps), 5);
        EXPECT_GT(LoseCurrentInEveryStep(each.prepare, each.operation, each.keeps, each.keeps), 5);
    }
}

TEST(ClipOperationsFaults, MoveAndDelete_WithTwoFailures_LoseNothing) {
    constexpr WriteFailure kHalf = WriteFailure::DiskFullWithPart;
    EXPECT_GT(FailEveryPair(kHalf, Prepare, Dropping(L"c1", L"U", true, true)), 300);
    EXPECT_GT(FailEveryPair(kHalf, Prepare, Deleting(L"S")), 40);
}

TEST(ClipOperationsFaults, EveryOperation_KilledAtAnyMoment_LeavesWholeProfiles) {
    const std::vector<std::wstring> all = {L"c1", L"c2", L"c3", L"c4"};
    EXPECT_EQ(KillInEveryStep(Prepare, Dropping(L"S", L"U", true, false), all), 17);
    EXPECT_EQ(KillInEveryStep(Prepare, Dropping(L"S", L"U", true, true), all), 33);
    EXPECT_EQ(KillInEveryStep(Prepare, Dropping(L"S", L"c3", false, true), all), 13);
    EXPECT_EQ(KillInEveryStep(Prepare, Deleting(L"S"), {L"c3", L"c4"}), 14);
    EXPECT_EQ(KillInEveryStep(Prepare, Deleting(L"P"), {L"c4"}), 15);
}

TEST(ClipOperationsFaults, EveryOperation_WithTheCurrentGoneAtAnyMoment_LosesNoClip) {
    const std::vector<std::wstring> all = {L"c1", L"c2", L"c3", L"c4"};
    EXPECT_GT(LoseCurrentInEveryStep(Prepare, Dropping(L"S", L"U", true, true), all, all), 100);
    EXPECT_GT(LoseCurrentInEveryStep(Prepare, Dropping(L"S", L"U", true, false), all, all), 100);
    EXPECT_GT(LoseCurrentInEveryStep(Prepare, Dropping(L"S", L"c3", false, true), all, all), 20);
    EXPECT_GT(LoseCurrentInEveryStep(Prepare, Deleting(L"S"), {L"c3", L"c4"}, {}), 20);
    const auto capture = [](World& world) {
        const std::string data = World::DataOf(L"neu");
        NewClipFile file(world.Get(L"T"));
        const auto size = static_cast<std::uint32_t>(data.size());
        if (!file.IsOpen() || ThePlatform().files.Write(file.Handle(), data.data(), size) != size)
            return false;
        file.Close();
        Node& clip = world.nodes.Add(&world.Get(L"T"), NodeRelation::Child, L"neu", std::wstring(L"Clip"));
        clip.SetTag(MakeClipTag(file.Number(), 1, L"", L""));
        file.Keep();
        return SaveAllProfiles(world.tree);
    };
    EXPECT_GT(LoseCurrentInEveryStep(Prepare, capture, all, {L"neu"}), 20);
}

}  // namespace
