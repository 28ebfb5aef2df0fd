#include "engine/profiles/StructureLock.h"

#include "engine/profiles/ProfileWorldTest.h"

namespace {

class StructureLockTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        Fill();
        Get(L"Q").SetTag(L"P&1&C:\\Q&1&");
    }
};

TEST_F(StructureLockTest, LockBlocks_TheStructureButNotTheClips) {
    for (const TreeAction action :
         {TreeAction::NewProfile, TreeAction::DeleteFolder, TreeAction::DragAndDrop}) {
        EXPECT_TRUE(LockBlocks(action, &Get(L"c1"), true));
        EXPECT_TRUE(LockBlocks(action, nullptr, true));
        EXPECT_FALSE(LockBlocks(action, &Get(L"c1"), false));
        EXPECT_FALSE(LockBlocks(action, &Get(L"c4"), true)) << "its profile has the global release";
    }
    for (const TreeAction action : {TreeAction::DeleteClip, TreeAction::EditClip})
        EXPECT_FALSE(LockBlocks(action, &Get(L"c1"), true));
    EXPECT_TRUE(LockBlocks(TreeAction::Snap, &Get(L"U"), true)) << "no release for snapping";
    EXPECT_FALSE(LockBlocks(TreeAction::Snap, &Get(L"U"), false));
}

TEST_F(StructureLockTest, ActionAllowed_FollowsTheOptionAndTellsTheUser) {
    EXPECT_TRUE(ActionAllowed(TreeAction::NewFolder, &Get(L"P")));
    Options().LockEdit = true;
    EXPECT_TRUE(ActionAllowed(TreeAction::NewFolder, &Get(L"Q")));
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_FALSE(ActionAllowed(TreeAction::NewFolder, &Get(L"P")));
    EXPECT_EQ(fake.user.messages.size(), 1u);
}

}  // namespace
