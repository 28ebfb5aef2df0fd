#include "fake/FakeFiles.h"

#include "fake/FakePlatformTest.h"

// What only the fake can arrange, and what a real machine cannot be asked to show: full disks, lost drives.

namespace {

class FakeFilesTest : public FakePlatformTest {
 protected:
    std::optional<std::uint32_t> Write(FileHandle file, const std::string& bytes) {
        return fake.files.Write(file, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    }
};

}  // namespace

TEST_F(FakeFilesTest, Write_FullDiskTakesWhatFitsAndFails) {
    fake.files.SetBytes(L"C:\\old", "12345");
    fake.files.capacity = 8;
    const FileHandle file = fake.files.Open(L"C:\\new", FileUse::WriteNew);
    EXPECT_FALSE(fake.files.Reserve(file, 4));
    EXPECT_EQ(fake.files.Size(file), 0);
    EXPECT_EQ(Write(file, "abcd"), std::nullopt);
    EXPECT_EQ(fake.files.LastError(), 112u);
    EXPECT_EQ(fake.files.Bytes(L"C:\\new"), "abc");
    EXPECT_TRUE(fake.files.Seek(file, 0));
    EXPECT_EQ(Write(file, "xyz"), 3u);  // what is there already needs no room
    fake.files.Close(file);
}

TEST_F(FakeFilesTest, Write_FailsInEachOfItsWays) {
    const auto fail = [&](WriteFailure how) {
        const FileHandle file = fake.files.Open(L"C:\\file", FileUse::WriteNew);
        fake.failures.writeFailure = how;
        fake.FailNth(Operation::FilesWrite, 1);
        const auto written = Write(file, "abcd");
        fake.files.Close(file);
        return written;
    };
    EXPECT_EQ(fail(WriteFailure::DiskFullWithPart), std::nullopt);
    EXPECT_EQ(fake.files.Bytes(L"C:\\file"), "ab");
    EXPECT_EQ(fail(WriteFailure::Nothing), std::nullopt);
    EXPECT_EQ(fake.files.Bytes(L"C:\\file"), "");
    EXPECT_EQ(fail(WriteFailure::Short), 2u);
    EXPECT_EQ(fake.files.Bytes(L"C:\\file"), "ab");
}

TEST_F(FakeFilesTest, UnplugDrive_TakesItsFilesEvenWhileTheyAreOpen) {
    fake.files.SetBytes(L"D:\\Profil\\C1.nxc", "abc");
    fake.files.SetBytes(L"C:\\stays", "abc");
    const FileHandle file = fake.files.Open(L"D:\\Profil\\C1.nxc", FileUse::Read);
    fake.files.UnplugDrive(L"d:");
    char buffer[3];
    EXPECT_EQ(fake.files.Read(file, buffer, 3), std::nullopt);
    fake.files.Close(file);
    EXPECT_EQ(fake.files.Open(L"D:\\Profil\\C1.nxc", FileUse::Read), FileHandle::None);
    EXPECT_FALSE(fake.files.Exists(L"D:\\"));
    EXPECT_EQ(fake.files.AllFiles(), std::vector<std::wstring>{L"C:\\STAYS"});
}

TEST_F(FakeFilesTest, Deny_ClosesADirectoryWithAllInIt) {
    fake.files.SetBytes(L"C:\\Zu\\Datei", "abc");
    fake.files.Deny(L"C:\\Zu");
    EXPECT_EQ(fake.files.Open(L"C:\\Zu\\Datei", FileUse::Read), FileHandle::None);
    EXPECT_EQ(fake.files.LastError(), 5u);
    EXPECT_EQ(fake.files.Open(L"C:\\Zu\\Neu", FileUse::WriteNew), FileHandle::None);
    EXPECT_FALSE(fake.files.Remove(L"C:\\Zu\\Datei"));
    EXPECT_EQ(fake.files.ListDirectories(L"C:\\Zu"), std::nullopt);
    fake.files.Allow(L"C:\\Zu");
    EXPECT_TRUE(fake.files.Remove(L"C:\\Zu\\Datei"));
}
