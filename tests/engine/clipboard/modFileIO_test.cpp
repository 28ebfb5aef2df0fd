#include "engine/clipboard/modFileIO.h"

#include "fake/FakePlatformTest.h"

using ClipFileTest = FakePlatformTest;

TEST_F(ClipFileTest, OpenClipFile_TellsEveryFailureButAMissingFileThatMustExist) {
    EXPECT_EQ(OpenClipFile(L"C:\\C1.nxc", false, true), FileHandle::None);
    EXPECT_TRUE(fake.user.messages.empty());

    EXPECT_EQ(OpenClipFile(L"C:\\C1.nxc", false, false), FileHandle::None);
    EXPECT_EQ(fake.user.LastMessage(), L"CreateFile fehlgeschlagen mit Fehlercode: 2");

    fake.files.SetBytes(L"C:\\C1.nxc", "x");
    fake.files.LockByOther(L"C:\\C1.nxc");
    EXPECT_EQ(OpenClipFile(L"C:\\C1.nxc", false, true), FileHandle::None);
    EXPECT_EQ(fake.user.LastMessage(), L"CreateFile fehlgeschlagen mit Fehlercode: 32");
}

TEST(FindByte, FindByte_StopsAtTheBlocksEnd) {
    const std::string_view zero("\0", 1);
    // The byte behind the block must not be found.
    EXPECT_EQ(FindByte("abc", 3, zero), std::nullopt);
    EXPECT_EQ(FindByte("abc", 4, zero), 3u);
    EXPECT_EQ(FindByte("abc", 0, zero), std::nullopt);
    EXPECT_EQ(FindByte(nullptr, 0, zero), std::nullopt);
    EXPECT_EQ(FindByte("abcbc", 5, "bc"), 1u);
    EXPECT_EQ(FindByte("abc", 3, "bcd"), std::nullopt);
}
