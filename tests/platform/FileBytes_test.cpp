#include "platform/FileBytes.h"

#include "fake/FakePlatformTest.h"
#include "platform/RuntimeError.h"

namespace {

const std::wstring kPath = L"C:\\DATA\\FILE.BIN";

class FileBytesTest : public FakePlatformTest {
 protected:
    FileBytesTest() { fake.files.AddDirectory(L"C:\\DATA"); }

    static int WriteError(const std::string& image) {
        try {
            WriteFileInPlace(kPath, {image.begin(), image.end()});
        } catch (const RuntimeError& error) {
            return error.Number();
        }
        return 0;
    }
};

TEST_F(FileBytesTest, WriteFileInPlace_OverALongerFile_KeepsItsTail) {
    fake.files.SetBytes(kPath, "older content");
    EXPECT_EQ(WriteError("NEW"), 0);
    EXPECT_EQ(fake.files.Bytes(kPath), "NEWer content");
    EXPECT_EQ(WriteError("longer than it was before"), 0);
    EXPECT_EQ(fake.files.Bytes(kPath), "longer than it was before");
    EXPECT_EQ(fake.failures.Calls(Operation::FilesWrite), 2);
}

TEST_F(FileBytesTest, WriteFileInPlace_DiskFull_LeavesOldContentAndLength) {
    fake.files.SetBytes(kPath, "old");
    fake.files.capacity = 10;
    EXPECT_EQ(WriteError("much longer than ten"), static_cast<int>(ErrorNumber::DiskFull));
    EXPECT_EQ(fake.files.Bytes(kPath), "old");
}

TEST_F(FileBytesTest, WriteFileInPlace_ShortWrite_IsAnError) {
    fake.failures.writeFailure = WriteFailure::Short;
    fake.FailNth(Operation::FilesWrite, 1);
    EXPECT_EQ(WriteError("content"), static_cast<int>(ErrorNumber::DiskFull));
}

TEST_F(FileBytesTest, ReadWholeFile_ReturnsAllBytesOrTheCause) {
    fake.files.SetBytes(kPath, std::string_view("a\0b", 3));
    EXPECT_EQ(ReadWholeFile(kPath), (std::vector<std::uint8_t>{'a', 0, 'b'}));
    fake.files.SetBytes(kPath, "");
    EXPECT_TRUE(ReadWholeFile(kPath).empty());
    for (int n = 1;; ++n) {
        fake.FailNthOfAny(n);
        try {
            ReadWholeFile(kPath);
            break;
        } catch (const RuntimeError& error) {
            EXPECT_NE(error.Description().find(kPath), std::wstring::npos);
        }
        ASSERT_TRUE(fake.Fired());
    }
    EXPECT_FALSE(fake.Fired());
    EXPECT_EQ(fake.failures.Calls(Operation::FilesOpen), 6);
}

}  // namespace
