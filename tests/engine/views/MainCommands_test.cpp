#include "engine/views/MainCommands.h"

#include <set>

#include "engine/profiles/ProfileWorldTest.h"
#include "resources/controls.h"

namespace {

using enum MainCommand;
using Commands = std::set<MainCommand>;

class MainCommandsTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        Fill();
        Get(L"Q").SetTag(L"P&1&C:\\Q&1&");  // with the global release
        situation.activeContainer = &Get(L"P");
    }
    const CommandRow& Row(MainCommand command) {
        return MainCommandRows()[static_cast<std::size_t>(command)];
    }
    // Which commands that look at the tree are allowed while this node is chosen.
    Commands AllowedFor(Node* chosen) {
        situation.chosen = situation.open = chosen;
        Commands allowed;
        for (const MainCommand command : {NewProfile, ImportProfile, UnlinkProfile, Delete, NewFolder, Rename,
                                          Snap, ToClipboard, Activate, Properties, QuickStart}) {
            if (IsAllowed(Row(command), situation)) allowed.insert(command);
        }
        return allowed;
    }

    CommandSituation situation;
};

TEST_F(MainCommandsTest, IsAllowed_FollowsTheChosenNodeAndTheLock) {
    const Commands anywhere{NewProfile, ImportProfile, QuickStart, Snap};
    const auto with = [&](Commands more) {
        more.insert(anywhere.begin(), anywhere.end());
        return more;
    };
    EXPECT_EQ(AllowedFor(nullptr), anywhere);
    EXPECT_EQ(AllowedFor(&Get(L"P")), with({UnlinkProfile, Delete, NewFolder, Rename, Properties}))
        << "it is the active container already";
    EXPECT_EQ(AllowedFor(&Get(L"Q")), with({UnlinkProfile, Delete, NewFolder, Rename, Properties, Activate}));
    EXPECT_EQ(AllowedFor(&Get(L"S")), with({Delete, NewFolder, Rename, Properties, Activate}));
    EXPECT_EQ(AllowedFor(&Get(L"c1")), with({Delete, NewFolder, Rename, Properties, ToClipboard}));

    situation.lockEdit = true;
    EXPECT_EQ(AllowedFor(&Get(L"P")), (Commands{Properties}));
    EXPECT_EQ(AllowedFor(&Get(L"S")), (Commands{Properties, Activate}));
    EXPECT_EQ(AllowedFor(&Get(L"c1")), (Commands{Delete, Rename, Properties, ToClipboard}));
    EXPECT_EQ(AllowedFor(&Get(L"Q")),
              (Commands{UnlinkProfile, Delete, NewFolder, Rename, Properties, Activate}));

    situation.lockEdit = false;
    situation.activeContainer = nullptr;
    EXPECT_FALSE(IsAllowed(Row(Snap), situation));
}

TEST_F(MainCommandsTest, IsAllowed_ChangesNothingInAProfileThatAnotherProgramHas) {
    GiveToOther(Get(L"P"));
    EXPECT_EQ(AllowedFor(&Get(L"c1")), (Commands{NewProfile, ImportProfile, QuickStart, ToClipboard}));
    EXPECT_FALSE(IsPermitted(Row(Properties), &Get(L"c1")));
    EXPECT_EQ(fake.user.LastMessage(), kEditedByOther);
}

TEST_F(MainCommandsTest, NodeFor_IsTheChosenRowAndOnlyForSomeTheOpenNode) {
    situation.open = &Get(L"S");
    situation.chosen = &Get(L"c1");
    for (const CommandRow& row : MainCommandRows())
        EXPECT_EQ(NodeFor(row, situation), row.actsOn == ActsOn::Nothing ? nullptr : &Get(L"c1"));
    situation.chosen = nullptr;
    EXPECT_EQ(NodeFor(Row(Properties), situation), &Get(L"S"));
    EXPECT_EQ(NodeFor(Row(Delete), situation), nullptr) << "the folder was not what was pointed at";
    EXPECT_FALSE(IsAllowed(Row(Delete), situation));
}

TEST_F(MainCommandsTest, IsAllowed_OfSeveralChosenOnlyWhatTakesThemAll) {
    situation.chosen = situation.open = &Get(L"c1");
    situation.severalChosen = true;
    for (const CommandRow& row : MainCommandRows()) {
        if (row.actsOn == ActsOn::Nothing) continue;
        const bool takesAll = row.command == Delete || row.command == MoveTo || row.command == Export;
        EXPECT_EQ(IsAllowed(row, situation), takesAll);
    }
    situation.severalChosen = false;
    situation.chosen = &Get(L"P");
    EXPECT_FALSE(IsAllowed(Row(MoveTo), situation)) << "a profile's place is dragged";
    EXPECT_FALSE(IsAllowed(Row(EmptyDeleted), situation));
    ::Options().KeepDeleted = true;
    operations.Delete(&Get(L"c1"));
    EXPECT_TRUE(IsAllowed(Row(EmptyDeleted), situation));
}

TEST_F(MainCommandsTest, IsOffered_UnderADialogOnlyToBringTheWindowBack) {
    const BusyScope dialog(Busy::Dialog);
    situation.chosen = situation.open = &Get(L"Q");
    for (const CommandRow& row : MainCommandRows())
        EXPECT_EQ(IsOffered(row, situation), row.command == Restore);
}

TEST_F(MainCommandsTest, Numbers_LeadToOneCommandEach) {
    std::set<int> seen;
    for (const CommandRow& row : MainCommandRows()) {
        for (const int number : row.numbers) {
            EXPECT_TRUE(seen.insert(number).second) << number;
            EXPECT_EQ(CommandRowOf(number), &row);
        }
    }
    // Whatever stands in a menu or on the tool bar has its command.
    for (const auto& [first, last] : {std::pair<int, int>{mnuFileNew, mnuHelpAbout},
                                      {m_pNN_NewProfil, m_clip_prop},
                                      {m_tray_restore, m_tray_quit},
                                      {tbbProfil, tbbAutoDetect}}) {
        for (int number = first; number <= last; ++number)
            EXPECT_TRUE(seen.contains(number)) << number;
    }
    EXPECT_EQ(CommandRowOf(tvTreeView), nullptr);
}

}  // namespace
