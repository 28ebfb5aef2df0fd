#include "engine/profiles/ActiveContainer.h"

#include "engine/profiles/ProfileWorldTest.h"
#include "fake/FaultLoop.h"

namespace {

class ActiveContainerTest : public ProfileWorldTest {
 protected:
    void SetUp() override { Fill(); }
    std::wstring ImageOf(const std::wstring& name) { return Get(name).Image().Key(); }
};

TEST_F(ActiveContainerTest, SetActiveContainer_TakesProfilesAndFoldersOnly) {
    int told = 0;
    container.SetListener([&] { ++told; });
    container.SetActiveContainer(&Get(L"T"));
    EXPECT_EQ(container.Title(), L"T");
    EXPECT_EQ(ImageOf(L"T"), L"Camera");
    EXPECT_EQ(ImageOf(L"P"), L"Profile");
    container.SetActiveContainer(&Get(L"c1"));
    EXPECT_EQ(container.Get(), &Get(L"T"));
    EXPECT_EQ(told, 1);
    container.SetActiveContainer(&Get(L"Q"));
    EXPECT_EQ(ImageOf(L"T"), L"Structure");
    container.SetActiveContainer(&Get(L"Q"));
    EXPECT_EQ(ImageOf(L"Q"), L"Camera");
    container.SetActiveContainer(nullptr);
    EXPECT_EQ(ImageOf(L"Q"), L"Profile");
    EXPECT_EQ(container.Title(), L"<Keine aktive Ablage>");
}

TEST_F(ActiveContainerTest, StoreAndRestore_FindTheSameNodeAfterANewStart) {
    // The nodes were added in another order than the one they are loaded in.
    for (const wchar_t* name : {L"U", L"T", L"P", L"Q", L"S"}) {
        container.SetActiveContainer(&Get(name));
        container.Store();
        StoreProfileList();
        LoadListedProfiles(tree, askForMissing);
        container.Restore();
        ASSERT_NE(container.Get(), nullptr);
        EXPECT_EQ(container.Title(), name);
        EXPECT_EQ(ImageOf(name), L"Camera");
    }
}

TEST_F(ActiveContainerTest, Restore_AProfileThatIsMissingShiftsNothing) {
    StoreProfileList();
    for (const auto& [name, missing, expected, told] :
         {std::tuple{L"U", L"C:\\P", L"U", 0u}, {L"T", L"C:\\P", L"Q", 1u}, {L"T", L"C:\\Q", L"T", 0u}}) {
        LoadListedProfiles(tree, askForMissing);
        container.Restore();
        container.SetActiveContainer(&Get(name));
        container.Store();
        fake.files.LockByOther(missing + std::wstring(L"\\nxclip.nxp"));
        LoadListedProfiles(tree, askForMissing);
        fake.user.messages.clear();
        container.Restore();
        EXPECT_EQ(container.Title(), expected);
        EXPECT_EQ(fake.user.messages.size(), told) << "captures do not go elsewhere in silence";
        fake.files.UnlockByOther(missing + std::wstring(L"\\nxclip.nxp"));
    }
}

// The two values that are stored of it fit together, or the older one still leads to one of the two.
TEST_F(ActiveContainerTest, Store_FailingTwiceOrKilledInAnyCall_LeavesTheOldOneOrTheNewOne) {
    for (const auto& [before, after] : {std::pair{L"T", L"U"}, {L"U", L"S"}, {L"P", L"Q"}}) {
        for (const Fault fault : {Fault::OneCall, Fault::TwoCalls, Fault::Kill}) {
            const auto store = [&](const wchar_t* name) {
                container.SetActiveContainer(&Get(name));
                container.Store();
            };
            const auto check = [&](bool) {
                container.Restore();
                EXPECT_TRUE(container.Title() == before || container.Title() == after);
                EXPECT_TRUE(fake.user.messages.empty());
            };
            StrikeEverywhere(
                fault, fake, [&] { store(before); }, [&] { store(after); }, check);
        }
    }
}

TEST_F(ActiveContainerTest, Restore_FallsBackToTheFirstProfile) {
    container.SetActiveContainer(&Get(L"U"));
    container.Store();
    fake.settings.Set(L"Settings", L"ActiveContainer", std::to_wstring(tree.PositionOf(&Get(L"Q"))));
    container.Restore();
    EXPECT_EQ(container.Title(), L"Q") << "the place was stored for another position";
    for (const wchar_t* stored : {L"-1", L"0", L"9999", L"abc", L"", L"3"}) {  // 3 is a clip
        fake.settings.Set(L"Settings", L"ActiveContainer", stored);
        container.SetActiveContainer(&Get(L"U"));
        container.Restore();
        EXPECT_EQ(container.Get(), &Get(L"P")) << AnsiFromText(stored);
    }
    nodes.Clear();
    Profiles().Clear();
    container.Restore();
    EXPECT_EQ(container.Get(), nullptr);
    container.Store();
    EXPECT_EQ(fake.settings.Value(L"Settings", L"ActiveContainer"), L"-1");
}

TEST_F(ActiveContainerTest, LeaveSubtree_MovesUpToALivingNode) {
    container.SetActiveContainer(&Get(L"T"));
    for (const auto& [left, then] : {std::pair{L"U", L"T"}, {L"S", L"P"}, {L"P", L"Q"}, {L"Q", L"P"}}) {
        container.LeaveSubtree(Get(left));
        EXPECT_EQ(container.Title(), then);
    }
    nodes.Remove(Get(L"Q"));
    EXPECT_TRUE(fake.settings.Value(L"Settings", L"ActiveContainerPlace")->ends_with(L"C:\\P|"))
        << "the next start finds it, should this one be killed";
    container.LeaveSubtree(Get(L"P"));
    EXPECT_EQ(container.Get(), nullptr);
}

}  // namespace
