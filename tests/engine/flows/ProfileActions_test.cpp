#include "engine/flows/ProfileActions.h"

#include "engine/profiles/WorldFaults.h"
#include "platform/ByteBuffer.h"

namespace {

using World = ProfileWorld;

constexpr const wchar_t* kTemplate = L"C:\\PROG\\Templates\\Vorlage.nxp";

// A template: what a profile of another machine looks like, clips included.
void AddTemplate(World& world) {
    world.fake.files.AddDirectory(L"C:\\PROG\\Templates");
    Node& profile = world.AddProfile(L"Vorlage");
    profile.SetTag(L"P&3&Q:\\fremd&1&Zum Ausprobieren");
    world.AddFolder(*Profiles().Item(Profiles().Count()).Node, L"Briefe", L"Post");
    world.fake.user.messages.clear();
    Node& clip = world.nodes.Add(&profile, NodeRelation::Child, L"leer", ImageValue());
    clip.SetTag(L"C&3,1&t&");
    world.tree.BuildTreeData(&profile);
    world.tree.SaveDataToFile(kTemplate);
    Profiles().Remove(Profiles().Count());
    world.nodes.Remove(profile);
    world.container.Restore();
    world.fake.files.Remove(L"C:\\Vorlage\\nxclip.nxp");
}

class ProfileActionsTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        AddTemplate(*this);
        fake.files.AddDirectory(L"C:\\Neu");
    }
};

TEST_F(ProfileActionsTest, BuildNewprofile_EmptyOneIsOnDiskAtOnce) {
    Node* const profile = actions.BuildNewprofile(L"Texte", L"C:\\Neu", L"");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(profile->Tag(), L"P&0&C:\\Neu&0&");
    EXPECT_EQ(container.Get(), profile) << "the first one of all is active";
    EXPECT_EQ(ListOutline(), L"Texte=C:\\Neu ");
    EXPECT_EQ(Profiles().Item(1).Node, profile);
    EXPECT_EQ(DiskOutline(), L"Texte");
    fake.files.AddDirectory(L"C:\\Neu2");
    actions.BuildNewprofile(L"Mehr", L"C:\\Neu2", L"");
    EXPECT_EQ(MemoryOutline(), L"Texte Mehr");
    EXPECT_EQ(container.Get(), profile);
}

TEST_F(ProfileActionsTest, BuildNewprofile_DoesNotWriteOverClipsThatLieThere) {
    for (const wchar_t* name : {L"C4.nxc", L"c17.NXC", L"Cx.nxc", L"C99999999999.nxc", L"C20.txt"}) {
        fake.files.SetBytes(std::wstring(L"C:\\Neu\\") + name, "data");
    }
    EXPECT_EQ(actions.BuildNewprofile(L"Texte", L"C:\\Neu", L"")->Tag(), L"P&17&C:\\Neu&0&");
}

TEST_F(ProfileActionsTest, BuildNewprofile_FromATemplateTakesItsFoldersOnly) {
    Node* const profile = actions.BuildNewprofile(L"Meins", L"C:\\Neu\\", kTemplate);
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(MemoryOutline(), L"Meins(Briefe)") << "a clip without data is no use to anybody";
    EXPECT_EQ(profile->Tag(), L"P&3&C:\\Neu\\&1&Zum Ausprobieren");
    EXPECT_EQ(profile->FirstChild()->Tag(), L"S&Post");
    EXPECT_EQ(ListOutline(), L"Meins=C:\\Neu\\ ");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
    EXPECT_TRUE(fake.files.Has(kTemplate));
}

TEST_F(ProfileActionsTest, BuildNewprofile_SaysWhyTheTemplateWasNotCopied) {
    EXPECT_EQ(actions.BuildNewprofile(L"Meins", L"C:\\Neu", L"C:\\weg.nxp"), nullptr);
    EXPECT_EQ(fake.user.LastMessage(), L"Vorlage C:\\weg.nxp nicht verfügbar !!!");
    fake.FailNth(Operation::FilesCopy, 1);
    EXPECT_EQ(actions.BuildNewprofile(L"Meins", L"C:\\Neu", kTemplate), nullptr);
    EXPECT_EQ(fake.user.LastMessage(), L"Der Datenträger ist voll: C:\\Neu\\nxclip.nxp");
}

TEST_F(ProfileActionsTest, NewProfileRefusal_NamesWhatIsWrong) {
    AddProfile(L"Da");
    fake.files.SetBytes(L"C:\\Belegt\\nxclip.nxp", "");
    for (const wchar_t* directory : {L"C:\\Neu", L"C:\\Noch\\nicht\\da", L"\\\\server\\ablage\\Clips"})
        EXPECT_EQ(NewProfileRefusal(L"x", directory), L"");
    EXPECT_EQ(NewProfileRefusal(L" ", L"C:\\Neu"), L"Geben Sie bitte einen Namen ein.");
    EXPECT_EQ(NewProfileRefusal(L"x", L"  "), L"Wählen Sie bitte ein Verzeichnis aus.");
    EXPECT_TRUE(NewProfileRefusal(L"x", L"C:\\R&B").starts_with(L"Das Zeichen \"&\""));
    EXPECT_TRUE(NewProfileRefusal(L"x", L"C:\\Belegt\\").starts_with(L"Im angewählten Verzeichnis"));
    EXPECT_EQ(NewProfileRefusal(L"x", L"c:\\DA\\"), L"Das Profil ist schon eingebunden !!!");
    for (const wchar_t* directory : {L"Clips", L"\\Clips", L"C:Clips", L"C:", L"\\\\", L"\\\\\\x"}) {
        EXPECT_NE(NewProfileRefusal(L"x", directory), L"") << "means another place after the next start";
    }
}

TEST_F(ProfileActionsTest, ConfirmNewProfile_OffersToMakeAMissingDirectory) {
    EXPECT_TRUE(ConfirmNewProfile(L"x", L"C:\\Neu", L""));
    EXPECT_FALSE(ConfirmNewProfile(L"x", L"C:\\Neu", L"\x41F")) << "an info text that cannot be stored";
    fake.user.messages.clear();
    EXPECT_TRUE(fake.user.questions.empty());
    EXPECT_FALSE(ConfirmNewProfile(L"x", L"C:\\a\\b\\c\\", L""));
    EXPECT_EQ(fake.user.questions.size(), 1u);
    EXPECT_FALSE(fake.files.IsDirectory(L"C:\\a"));
    EXPECT_TRUE(fake.user.messages.empty());

    fake.user.answers = {true, true, true};
    EXPECT_TRUE(ConfirmNewProfile(L"x", L"C:\\a\\b\\c\\", L""));
    EXPECT_TRUE(fake.files.IsDirectory(L"C:\\a\\b\\c"));
    EXPECT_FALSE(ConfirmNewProfile(L"x", L"Z:\\a", L""));
    EXPECT_EQ(fake.user.messages.back().title, L"Verzeichnisfehler");
    EXPECT_FALSE(ConfirmNewProfile(L"", L"C:\\Neu", L""));
}

TEST_F(ProfileActionsTest, ImportProfileDirect_AttachesWhatTheDirectoryHolds) {
    Fill();
    fake.user.answers = {true};
    ASSERT_TRUE(actions.UnlinkProfile(&Get(L"Q")));
    const auto bytes = fake.files.Bytes(L"C:\\Q\\nxclip.nxp");
    Node* const profile = actions.ImportProfileDirect(L"c:\\q");
    ASSERT_NE(profile, nullptr);
    EXPECT_EQ(MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4))");
    EXPECT_EQ(ListOutline(), L"P=C:\\P Q=c:\\q ");
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
    EXPECT_EQ(fake.files.Bytes(L"C:\\Q\\nxclip.nxp"), bytes) << "an import writes nothing";
    SetProfileChanged(&Get(L"c4"));
    EXPECT_TRUE(Profiles().Item(2).Dirty);
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(ProfileActionsTest, UnlinkProfile_AChangeThatIsNotSavedIsNotForgottenInSilence) {
    Fill();
    fake.files.SetReadOnly(L"C:\\P\\nxclip.nxp", true);
    AddFolder(Get(L"P"), L"neu");
    fake.user.answers = {true, false};
    EXPECT_FALSE(actions.UnlinkProfile(&Get(L"P")));
    EXPECT_EQ(fake.user.questions.size(), 2u);
    fake.files.SetReadOnly(L"C:\\P\\nxclip.nxp", false);
    fake.user.answers = {true};
    EXPECT_TRUE(actions.UnlinkProfile(&Get(L"P")));
    ASSERT_NE(actions.ImportProfileDirect(L"C:\\P"), nullptr);
    EXPECT_NE(MemoryOutline().find(L"neu"), std::wstring::npos) << "the second try saved it";
}

TEST_F(ProfileActionsTest, UnlinkProfile_TouchesNoFile) {
    Fill();
    container.SetActiveContainer(&Get(L"T"));
    const WorldState before = StateOf(*this);
    EXPECT_FALSE(actions.UnlinkProfile(&Get(L"P")));
    ASSERT_EQ(fake.user.questions.size(), 1u);
    EXPECT_TRUE(fake.user.questions[0].noIsDefault);
    EXPECT_FALSE(actions.UnlinkProfile(&Get(L"S"))) << "no profile";
    EXPECT_EQ(StateOf(*this), before);

    fake.user.answers = {true};
    EXPECT_TRUE(actions.UnlinkProfile(&Get(L"P")));
    EXPECT_EQ(MemoryOutline(), L"Q(U(c4))");
    EXPECT_EQ(ListOutline(), L"Q=C:\\Q ");
    EXPECT_EQ(Files(), before.files);
    EXPECT_EQ(container.Title(), L"Q");
}

// A journal that is being written, or whose save is under way, is the other program's.
TEST_F(ProfileActionsTest, UnlinkProfile_OfOneThatAnotherProgramSaves_LeavesItItsJournal) {
    Fill();
    GiveToOther(Get(L"P"));
    fake.files.SetBytes(L"C:\\P\\nxclip.jnl", "half a journal");
    fake.user.answers = {true};
    EXPECT_TRUE(actions.UnlinkProfile(&Get(L"P")));
    EXPECT_TRUE(fake.files.Has(L"C:\\P\\nxclip.jnl"));
}

TEST_F(ProfileActionsTest, UnlinkProfile_OfAProfileInsideAProfileTouchesNeither) {
    Fill();
    Node& inner = nodes.Add(&Get(L"S"), NodeRelation::Child, L"innen", std::wstring(L"Profile"));
    inner.SetTag(L"P&7&C:\\P&0&");
    fake.user.answers = {true};
    EXPECT_FALSE(actions.UnlinkProfile(&inner));
    EXPECT_EQ(ListOutline(), L"P=C:\\P Q=C:\\Q ");
    EXPECT_EQ(inner.Text(), L"innen");
}

TEST_F(ProfileActionsTest, ProfileProperties_LeaveRoomForALongerCounterAndDirectory) {
    Fill();
    ProfileProperties properties = ReadProfileProperties(Get(L"P"));
    const std::size_t taken = MakeProfileTag(3, L"C:\\P", false, L"").size();
    properties.info = std::wstring(kLongestStoredText - taken, L'x');
    EXPECT_FALSE(ApplyProfileProperties(tree, Get(L"P"), properties));
    // What an older version has let in is no reason to refuse another name.
    Get(L"P").SetTag(MakeProfileTag(3, L"C:\\P", false, properties.info));
    properties.name = L"R";
    EXPECT_TRUE(ApplyProfileProperties(tree, Get(L"P"), properties));
}

TEST_F(ProfileActionsTest, ProfileProperties_AreReadAndTakenOver) {
    Fill();
    ProfileProperties properties = ReadProfileProperties(Get(L"P"));
    EXPECT_EQ(properties.name + properties.directory, L"PC:\\P");
    EXPECT_EQ(properties.folders, 2);
    EXPECT_EQ(properties.clips, 3);
    EXPECT_FALSE(properties.globalFree || properties.locked);

    properties.name = L"Größe";
    properties.info = L"a & b\r\nc";
    properties.globalFree = true;
    EXPECT_TRUE(ApplyProfileProperties(tree, Get(L"P"), properties));
    EXPECT_EQ(Get(L"Größe").Tag(), L"P&3&C:\\P&1&a & b\r\nc");
    EXPECT_EQ(Profiles().Item(1).Name, L"Größe");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    Options().LockEdit = true;
    EXPECT_FALSE(ReadProfileProperties(Get(L"Größe")).locked);
    EXPECT_TRUE(ReadProfileProperties(Get(L"Q")).locked);
}

TEST(ProfileActionsFaults, NewProfileImportAndUnlink_WithAnyCallFailing_AreDoneWholeOrNotAtAll) {
    const auto prepare = [](World& world) {
        AddTemplate(world);
        world.Fill();
        world.fake.user.answers = {true};
        world.container.SetActiveContainer(&world.Get(L"T"));
    };
    const auto prepareImport = [&](World& world) {
        prepare(world);
        world.fake.user.answers = {true};
        world.actions.UnlinkProfile(&world.Get(L"Q"));
    };
    const auto building = [](const wchar_t* from) {
        return [from](World& world) {
            return ConfirmNewProfile(L"Neu", L"C:\\Neu", L"") &&
                   world.actions.BuildNewprofile(L"Neu", L"C:\\Neu", from) != nullptr;
        };
    };
    const auto import = [](World& world) { return world.actions.ImportProfileDirect(L"C:\\Q") != nullptr; };
    const auto expecting = [](const wchar_t* list) {
        return [list](World& world) {
            EXPECT_EQ(world.ListOutline(), list);
            EXPECT_EQ(world.container.Title(), L"T");
        };
    };
    const auto unlink = [](World& world) {
        world.fake.user.answers = {true};
        return world.actions.UnlinkProfile(&world.Get(L"Q"));
    };
    const auto prepareChanged = [&](World& world) {
        prepare(world);
        world.AddFolder(world.Get(L"U"), L"neu");
    };
    // The profile is gone with its last change on the disk, or it is there with it.
    const auto keepsChange = [](TriedWorld& world, bool struck) {
        EXPECT_TRUE(world.done || struck);
        EXPECT_TRUE(!world.done || world.actions.ImportProfileDirect(L"C:\\Q") != nullptr);
        EXPECT_EQ(world.MemoryOutline(), L"P(S(c1 T(c2)) c3) Q(U(c4 neu))");
        EXPECT_TRUE(SaveAllProfiles(world.tree));
        EXPECT_EQ(world.DiskOutline(), world.MemoryOutline());
        EXPECT_EQ(world.Damage(), std::vector<std::wstring>());
    };
    const std::vector<std::wstring> all = {L"c1", L"c2", L"c3"};
    EXPECT_GT(KillInEveryStep(prepare, building(kTemplate), all), 30);
    EXPECT_GT(KillInEveryStep(prepareImport, import, all), 15);
    EXPECT_GT(KillInEveryStep(prepareChanged, unlink, all), 20);
    for (const Fault fault : {Fault::OneCall, Fault::TwoCalls})
        EXPECT_GT(StrikeWorld(fault, WriteFailure::DiskFullWithPart, prepareChanged, unlink, keepsChange),
                  20);
    EXPECT_GT(FailEveryPair(WriteFailure::DiskFullWithPart, prepare, building(kTemplate)), 300);
    EXPECT_GT(FailEveryPair(WriteFailure::DiskFullWithPart, prepareImport, import), 100);
    EXPECT_GT(LoseCurrentInEveryStep(prepare, building(kTemplate), all, all), 20);
    for (const WriteFailure mode : {WriteFailure::Nothing, WriteFailure::DiskFullWithPart}) {
        const auto withNew = expecting(L"P=C:\\P Q=C:\\Q Neu=C:\\Neu ");
        EXPECT_GT(FailEveryStep(mode, prepare, building(L""), withNew), 25);
        EXPECT_GT(FailEveryStep(mode, prepare, building(kTemplate), withNew), 30);
        EXPECT_GT(FailEveryStep(mode, prepareImport, import, expecting(L"P=C:\\P Q=C:\\Q ")), 15);
        EXPECT_GT(FailEveryStep(mode, prepare, unlink, expecting(L"P=C:\\P ")), 5);
    }
}

}  // namespace
