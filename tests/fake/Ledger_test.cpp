#include "fake/Ledger.h"

#include <gtest/gtest.h>

#include "fake/FakePlatformTest.h"

// The faults that the fakes are there to find, committed on purpose.

namespace {

class LedgerTest : public testing::Test {
 protected:
    // Expects the fault as the first one, and takes the complaints back so that the test itself ends well.
    void ExpectFound(const std::string& fault) {
        const std::vector<std::string> problems = fake.ledger.Problems();
        ASSERT_FALSE(problems.empty());
        EXPECT_NE(problems[0].find(fault), std::string::npos) << problems[0];
        fake.ledger.ForgetComplaints();
    }

    FakePlatform fake;
};

}  // namespace

TEST_F(LedgerTest, Free_SecondTimeIsFound) {
    const DataHandle block = fake.memory.Allocate(8);
    fake.memory.Free(block);
    fake.memory.Free(block);
    ExpectFound("freed twice");
}

TEST_F(LedgerTest, Problems_LeakAndLockAreFound) {
    const DataHandle block = fake.memory.Allocate(8);
    ExpectFound("never freed");
    fake.memory.Lock(block);
    EXPECT_EQ(fake.ledger.Problems().size(), 2u);
    fake.memory.Unlock(block);
    fake.memory.Free(block);
}

TEST_F(LedgerTest, Unlock_WithoutLockIsFound) {
    const DataHandle block = fake.memory.Allocate(8);
    fake.memory.Lock(block);
    fake.memory.Unlock(block);
    fake.memory.Unlock(block);
    fake.memory.Free(block);
    ExpectFound("without a lock");
}

TEST_F(LedgerTest, Put_BlockBelongsToTheClipboardFromThenOn) {
    const WindowHandle window = fake.windows.AddWindow();
    const DataHandle block = fake.memory.Make("abc");
    ASSERT_TRUE(fake.clipboard.Open(window));
    ASSERT_TRUE(fake.clipboard.Put(8, block));
    fake.memory.Free(block);
    ExpectFound("freed although the clipboard owns it");
    EXPECT_NE(fake.memory.Lock(block), nullptr);
    ExpectFound("locked although the clipboard owns it");
    fake.clipboard.Close();
    ExpectFound("still locked when the clipboard was closed");
    fake.ledger.Unlock(static_cast<Ledger::Number>(block));
    EXPECT_EQ(fake.clipboard.OtherProgramReads(8), "abc");
}

TEST_F(LedgerTest, Data_IsLentUntilTheClipboardIsClosed) {
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, "abc")});
    ASSERT_TRUE(fake.clipboard.Open(fake.windows.AddWindow()));
    const DataHandle block = fake.clipboard.Data(1);
    EXPECT_EQ(fake.memory.Size(block), 3u);
    fake.clipboard.Close();
    EXPECT_TRUE(fake.ledger.Problems().empty());
    fake.memory.Size(block);
    ExpectFound("although the clipboard owns it");
}

TEST_F(LedgerTest, Problems_OpenFileAndOpenClipboardAreFound) {
    const FileHandle file = fake.files.Open(L"C:\\A", FileUse::WriteNew);
    ExpectFound("left open");
    fake.files.Close(file);
    fake.files.Close(file);
    ExpectFound("freed twice");
    ASSERT_TRUE(fake.clipboard.Open(fake.windows.AddWindow()));
    ExpectFound("the clipboard: left open");
    fake.clipboard.Close();
}

TEST_F(LedgerTest, AbandonOwnedBlocks_ForgivesExactlyThese) {
    fake.memory.Make("one");
    const DataHandle other = fake.memory.Make("two");
    fake.ledger.Abandon(static_cast<Ledger::Number>(other));
    EXPECT_EQ(fake.ledger.AbandonOwnedBlocks(), 1);
    EXPECT_EQ(fake.ledger.AbandonOwnedBlocks(), 0);
    EXPECT_TRUE(fake.ledger.Problems().empty());
    fake.memory.Lock(other);
    ExpectFound("after it was abandoned");
    fake.memory.Unlock(other);
    fake.ledger.ForgetComplaints();
}

TEST_F(LedgerTest, Lock_AddressMovesWhenTheLastLockGoes) {
    const DataHandle block = fake.memory.Make("abc");
    const void* first = fake.memory.Lock(block);
    EXPECT_EQ(fake.memory.Lock(block), first);
    fake.memory.Unlock(block);
    fake.memory.Unlock(block);
    const void* second = fake.memory.Lock(block);
    EXPECT_NE(second, first);
    fake.memory.Unlock(block);
    fake.memory.Free(block);
}

TEST(FailuresTest, FailNth_FiresOnceAtTheNthCallOfItsKind) {
    Failures failures;
    failures.FailNth(Operation::FilesWrite, 2);
    EXPECT_FALSE(failures.Strikes(Operation::FilesWrite));
    EXPECT_FALSE(failures.Strikes(Operation::FilesRead));
    EXPECT_FALSE(failures.Fired());
    EXPECT_TRUE(failures.Strikes(Operation::FilesWrite));
    EXPECT_TRUE(failures.Fired());
    EXPECT_FALSE(failures.Strikes(Operation::FilesWrite));
    failures.FailNthOfAny(3);
    EXPECT_FALSE(failures.Fired());
    EXPECT_FALSE(failures.Strikes(Operation::FilesOpen));
    EXPECT_FALSE(failures.Strikes(Operation::FilesWrite));
    EXPECT_TRUE(failures.Strikes(Operation::MemoryLock));
    EXPECT_EQ(failures.Calls(Operation::FilesWrite), 4);
}
