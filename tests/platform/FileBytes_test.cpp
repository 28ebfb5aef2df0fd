#include "platform/FileBytes.h"

#include "fake/FakePlatformTest.h"
#include "platform/RuntimeError.h"

namespace {

const std::wstring kPath = L"C:\\DATA\\FILE.BIN";

class FileBytesTest : public FakePlatformTest {
 protected:
    FileBytesTest() { fake.files.AddDirectory(L"C:\\DATA"); }
};

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
