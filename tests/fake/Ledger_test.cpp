#include "fake/Ledger.h"

#include "fake/FakePlatformTest.h"

// The faults that the fakes are there to find, committed on purpose.

namespace {

class LedgerTest : public FakePlatformTest {
 protected:
    // Takes the complaints back, so that the test itself ends well.
    void ExpectFound(const std::string& fault) {
        std::string problems;
        for (const std::string& problem : fake.ledger.Problems())
            problems += problem + '\n';
        EXPECT_NE(problems.find(fault), std::string::npos) << fault << "\nis not among\n" << problems;
        fake.ledger.ForgetComplaints();
    }
};

}  // namespace

TEST_F(LedgerTest, Problems_OfAnOwnBlockAreFound) {
    const DataHandle block = fake.memory.Make("abc");
    ExpectFound("never freed");
    const void* first = fake.memory.Lock(block);
    EXPECT_EQ(fake.ledger.Problems().size(), 2u) << "a leak and a lock";
    fake.memory.Unlock(block);
    EXPECT_NE(fake.memory.Lock(block), first) << "an address kept too long must not work by luck";
    fake.memory.Unlock(block);
    fake.memory.Unlock(block);
    ExpectFound("without a lock");
    fake.memory.Free(block);
    fake.memory.Free(block);
    ExpectFound("freed twice");
}

TEST_F(LedgerTest, Problems_OfWhatTheClipboardOwnsAreFound) {
    const WindowHandle window = fake.windows.AddWindow();
    const DataHandle block = fake.memory.Make("abc");
    ASSERT_TRUE(fake.clipboard.Open(window));
    ExpectFound("never freed");
    ASSERT_TRUE(fake.clipboard.Put(8, block));
    fake.memory.Free(block);
    ExpectFound("freed although the clipboard owns it");
    EXPECT_EQ(fake.clipboard.Data(8), block);
    EXPECT_NE(fake.memory.Lock(block), nullptr);
    ExpectFound("the clipboard: left open");
    fake.clipboard.Close();
    ExpectFound("still locked when the clipboard was closed");
    fake.memory.Size(block);
    ExpectFound("although the clipboard owns it");
    fake.ledger.Unlock(static_cast<Ledger::Number>(block));
}

TEST_F(LedgerTest, Problems_OfAFileAreFound) {
    const FileHandle file = fake.files.Open(L"C:\\A", FileUse::WriteNew);
    ExpectFound("left open");
    fake.files.Close(file);
    fake.files.Close(file);
    ExpectFound("freed twice");
}
