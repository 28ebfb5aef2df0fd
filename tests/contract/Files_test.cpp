#include "platform/Files.h"

#include "contract/ContractTest.h"

namespace {

constexpr std::uint32_t kPathNotFound = 3, kAccessDenied = 5, kSharingViolation = 32, kFileExists = 80,
                        kDiskFull = 112, kAlreadyExists = 183;

class FileContract : public ContractTest {
 protected:
    void WriteFile(const std::wstring& name, const std::string& bytes, FileUse use = FileUse::WriteNew) {
        const FileHandle file = files.Open(name, use);
        ASSERT_NE(file, FileHandle::None) << files.LastError();
        EXPECT_EQ(files.Write(file, bytes.data(), static_cast<std::uint32_t>(bytes.size())), bytes.size());
        files.Close(file);
    }

    std::optional<std::string> ReadFile(const std::wstring& name) {
        const FileHandle file = files.Open(name, FileUse::Read);
        if (file == FileHandle::None) return std::nullopt;
        std::string bytes(static_cast<std::size_t>(files.Size(file).value_or(0)) + 10, '\0');
        const auto count = files.Read(file, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        files.Close(file);
        bytes.resize(count.value_or(0));
        return bytes;
    }

    // The error of an Open that must fail.
    std::uint32_t OpenError(const std::wstring& name, FileUse use) {
        const FileHandle file = files.Open(name, use);
        EXPECT_EQ(file, FileHandle::None);
        if (file == FileHandle::None) return files.LastError();
        files.Close(file);
        return 0;
    }

    std::wstring directory = home->Directory();
    std::wstring path = directory + L"Datei.bin";
};

}  // namespace

TEST_F(FileContract, Open_TellsWhatIsMissing) {
    EXPECT_EQ(OpenError(path, FileUse::Read), kErrorFileNotFound);
    for (const FileUse use : {FileUse::Read, FileUse::WriteNew, FileUse::WriteInPlace, FileUse::Append})
        EXPECT_EQ(OpenError(directory + L"none\\Datei", use), kPathNotFound);
    EXPECT_EQ(OpenError(L"", FileUse::Read), kPathNotFound);
    ASSERT_TRUE(files.MakeDirectory(directory + L"Ordner"));
    EXPECT_EQ(OpenError(directory + L"Ordner", FileUse::WriteNew), kAccessDenied);
    EXPECT_FALSE(files.Exists(path));
}

TEST_F(FileContract, OpenNewOnly_NeverTakesAFileThatIsThere) {
    WriteFile(path, "new", FileUse::NewOnly);
    EXPECT_EQ(OpenError(path, FileUse::NewOnly), kFileExists);
    EXPECT_EQ(ReadFile(path), "new");
}

TEST_F(FileContract, OpenLock_KeepsLocksAndWritersOutAndLeavesNoFile) {
    for (int i = 0; i < 2; ++i) {
        const FileHandle lock = files.Open(path, FileUse::Lock);
        ASSERT_NE(lock, FileHandle::None) << files.LastError();
        for (const FileUse use : {FileUse::Lock, FileUse::WriteInPlace})
            EXPECT_EQ(OpenError(path, use), kErrorSharingViolation);
        EXPECT_TRUE(ReadFile(path)) << "for backups";
        EXPECT_TRUE(files.Copy(path, directory + L"Kopie", true));
        EXPECT_FALSE(files.Remove(path));
        files.Close(lock);
        EXPECT_FALSE(files.Exists(path));
        WriteFile(path, "left by a crash");  // does not stand in the way of the next one
    }
}

TEST_F(FileContract, OpenLock_OfAFileThatABackupReads_TakesItAndLeavesIt) {
    WriteFile(path, "");
    const FileHandle backup = files.Open(path, FileUse::Read);
    const FileHandle lock = files.Open(path, FileUse::Lock);
    EXPECT_NE(lock, FileHandle::None);
    files.Close(lock);
    EXPECT_TRUE(files.Exists(path));
    files.Close(backup);
}

TEST_F(FileContract, Identity_IsThatOfTheThingNotOfItsSpelling) {
    ASSERT_TRUE(files.MakeDirectory(directory + L"Ordner"));
    ASSERT_TRUE(files.MakeDirectory(directory + L"Anderer"));
    const std::wstring identity = files.Identity(directory + L"Ordner");
    EXPECT_NE(identity, L"");
    for (const wchar_t* spelling : {L"ORDNER", L"Ordner\\", L"Anderer\\..\\Ordner", L".\\Ordner"})
        EXPECT_EQ(files.Identity(directory + spelling), identity);
    EXPECT_NE(files.Identity(directory + L"Anderer"), identity);
    EXPECT_EQ(files.Identity(directory + L"none"), L"");
}

TEST_F(FileContract, Open_EachUseTreatsOldContentItsOwnWay) {
    WriteFile(path, "first and longer");
    WriteFile(path, "second");
    EXPECT_EQ(ReadFile(path), "second");
    WriteFile(path, "IN", FileUse::WriteInPlace);
    EXPECT_EQ(ReadFile(path), "INcond");
    WriteFile(path, "+end", FileUse::Append);
    EXPECT_EQ(ReadFile(path), "INcond+end");
    WriteFile(directory + L"new", "a", FileUse::WriteInPlace);
    WriteFile(directory + L"new", "b", FileUse::Append);
    EXPECT_EQ(ReadFile(directory + L"new"), "ab");
}

TEST_F(FileContract, Read_GivesFewerBytesOnlyAtTheEnd) {
    WriteFile(path, "12345");
    const FileHandle file = files.Open(path, FileUse::Read);
    char buffer[8] = {};
    EXPECT_EQ(files.Read(file, buffer, 3), 3u);
    EXPECT_EQ(files.Read(file, buffer, 8), 2u);
    EXPECT_EQ(std::string(buffer, 2), "45");
    EXPECT_EQ(files.Read(file, buffer, 8), 0u);
    EXPECT_EQ(files.Tell(file), 5);
    EXPECT_EQ(files.Write(file, "x", 1), std::nullopt);
    EXPECT_EQ(files.LastError(), kAccessDenied);
    EXPECT_FALSE(files.Flush(file));
    EXPECT_FALSE(files.Reserve(file, 100));
    files.Close(file);
}

TEST_F(FileContract, Seek_ReachesBeyondTheEndButNotBelowTheStart) {
    const FileHandle file = files.Open(path, FileUse::WriteNew);
    EXPECT_EQ(files.Write(file, "abcd", 4), 4u);
    EXPECT_TRUE(files.Seek(file, 1));
    EXPECT_EQ(files.Write(file, "X", 1), 1u);
    EXPECT_FALSE(files.Seek(file, -1));
    EXPECT_EQ(files.Tell(file), 2);
    EXPECT_TRUE(files.Seek(file, 6));
    EXPECT_EQ(files.Size(file), 4);
    EXPECT_EQ(files.Write(file, "", 0), 0u);
    EXPECT_EQ(files.Size(file), 4);
    EXPECT_EQ(files.Write(file, "z", 1), 1u);
    EXPECT_EQ(files.Size(file), 7);
    files.Close(file);
    EXPECT_EQ(ReadFile(path), std::string("aXcd\0\0z", 7));
}

TEST_F(FileContract, Reserve_OnlyGrowsAsFarAsTheDiskAllowsAndKeepsThePosition) {
    WriteFile(path, "abcdef");
    const FileHandle file = files.Open(path, FileUse::WriteInPlace);
    EXPECT_TRUE(files.Seek(file, 2));
    EXPECT_FALSE(files.Reserve(file, std::int64_t{1} << 50));
    EXPECT_EQ(files.LastError(), kDiskFull);
    EXPECT_TRUE(files.Reserve(file, 3));
    EXPECT_EQ(files.Size(file), 6);
    EXPECT_TRUE(files.Reserve(file, 9));
    EXPECT_EQ(files.Size(file), 9);
    EXPECT_EQ(files.Tell(file), 2);
    EXPECT_TRUE(files.Flush(file));
    files.Close(file);
    EXPECT_EQ(ReadFile(path), std::string("abcdef\0\0\0", 9));
}

TEST_F(FileContract, Sharing_ReadersShareAndAWriterIsAlone) {
    WriteFile(path, "abc");
    const FileHandle first = files.Open(path, FileUse::Read);
    const FileHandle second = files.Open(path, FileUse::Read);
    EXPECT_NE(second, FileHandle::None);
    EXPECT_EQ(OpenError(path, FileUse::WriteNew), kSharingViolation);
    EXPECT_FALSE(files.Remove(path));
    EXPECT_EQ(files.LastError(), kSharingViolation);
    files.Close(first);
    files.Close(second);
    EXPECT_EQ(ReadFile(path), "abc");

    for (const FileUse use : {FileUse::WriteInPlace, FileUse::Append}) {
        const FileHandle writer = files.Open(path, use);
        ASSERT_NE(writer, FileHandle::None);
        EXPECT_EQ(OpenError(path, FileUse::Read), kSharingViolation);
        EXPECT_EQ(OpenError(path, FileUse::Append), kSharingViolation);
        files.Close(writer);
    }
    EXPECT_TRUE(files.Remove(path));
}

TEST_F(FileContract, Open_ReadOnlyFileIsNotWritten) {
    WriteFile(path, "abc");
    home->SetReadOnly(path, true);
    for (const FileUse use : {FileUse::WriteNew, FileUse::WriteInPlace, FileUse::Append})
        EXPECT_EQ(OpenError(path, use), kAccessDenied);
    EXPECT_FALSE(files.Remove(path));
    EXPECT_EQ(files.LastError(), kAccessDenied);
    EXPECT_EQ(ReadFile(path), "abc");
    home->SetReadOnly(path, false);
    EXPECT_TRUE(files.Remove(path));
    EXPECT_FALSE(files.Remove(path));
    EXPECT_EQ(files.LastError(), kErrorFileNotFound);
}

TEST_F(FileContract, Exists_KnowsFilesAndDirectories) {
    WriteFile(path, "abc");
    ASSERT_TRUE(files.MakeDirectory(directory + L"Ordner"));
    EXPECT_TRUE(files.Exists(path));
    EXPECT_TRUE(files.Exists(directory + L"DATEI.BIN"));
    EXPECT_TRUE(files.Exists(directory + L"Ordner"));
    EXPECT_TRUE(files.Exists(directory + L"*.bin"));
    EXPECT_TRUE(files.Exists(directory + L"Ord*"));
    EXPECT_FALSE(files.Exists(directory + L"*.nxp"));
    EXPECT_TRUE(files.Exists(L"C:\\"));
    EXPECT_FALSE(files.Exists(L"Q:\\"));

    EXPECT_TRUE(files.IsDirectory(directory));
    EXPECT_FALSE(files.IsDirectory(path));
    EXPECT_FALSE(files.IsDirectory(directory + L"none"));
}

TEST_F(FileContract, List_GivesMatchingFilesSorted) {
    for (const wchar_t* name : {L"b.nxp", L"Änderung.nxp", L"A.NXP", L"c10.nxp2", L"d.nxp.old", L"nxp"})
        WriteFile(directory + name, "");
    ASSERT_TRUE(files.MakeDirectory(directory + L"z.nxp"));
    using Names = std::vector<std::wstring>;
    EXPECT_EQ(files.List(directory + L"*.nxp"), (Names{L"A.NXP", L"Änderung.nxp", L"b.nxp"}));
    EXPECT_EQ(files.List(directory + L"?.nxp"), (Names{L"A.NXP", L"b.nxp"}));
    EXPECT_EQ(files.List(directory + L"*.*").size(), 6u);
    EXPECT_EQ(files.List(directory + L"none\\*"), Names{});
}

TEST_F(FileContract, Copy_IsWholeAndKeepsTheChangeTime) {
    const std::wstring target = directory + L"Kopie.bin";
    const std::string bytes(100'000, 'c');
    WriteFile(path, bytes);
    EXPECT_TRUE(files.Copy(path, target, false));
    EXPECT_EQ(ReadFile(target), bytes);
    EXPECT_EQ(files.ChangeTime(target), files.ChangeTime(path));
    EXPECT_TRUE(files.FlushClosed(target, WhenHeld::GiveUp));
    WriteFile(path, "other");
    EXPECT_FALSE(files.Copy(path, target, false));
    EXPECT_EQ(files.LastError(), kFileExists);
    EXPECT_EQ(ReadFile(target), bytes);
    EXPECT_TRUE(files.Copy(path, target, true));
    EXPECT_EQ(ReadFile(target), "other");
    EXPECT_EQ(files.List(directory + L"*").size(), 2u);

    // Of what may only be read there is a copy that may be written.
    home->SetReadOnly(path, true);
    EXPECT_TRUE(files.Copy(path, target, true));
    WriteFile(target, "mine");
    home->SetReadOnly(path, false);
    EXPECT_TRUE(files.Remove(path));
    EXPECT_FALSE(files.FlushClosed(path, WhenHeld::Wait));
    EXPECT_EQ(files.LastError(), kErrorFileNotFound);
    const FileHandle reader = files.Open(target, FileUse::Read);
    EXPECT_FALSE(files.FlushClosed(target, WhenHeld::GiveUp));
    EXPECT_EQ(files.LastError(), kSharingViolation);
    files.Close(reader);
}

TEST_F(FileContract, Copy_FailureLeavesTheTargetAndNothingElse) {
    const std::wstring target = directory + L"Kopie.bin";
    EXPECT_FALSE(files.Copy(path, target, true));
    EXPECT_EQ(files.LastError(), kErrorFileNotFound);
    EXPECT_FALSE(files.Exists(target));
    WriteFile(path, "new");
    EXPECT_FALSE(files.Copy(path, directory + L"none\\x", true));
    EXPECT_EQ(files.LastError(), kPathNotFound);
    EXPECT_FALSE(files.Copy(directory, target, true));

    WriteFile(target, "old");
    home->SetReadOnly(target, true);
    EXPECT_FALSE(files.Copy(path, target, true));
    EXPECT_EQ(files.LastError(), kAccessDenied);
    home->SetReadOnly(target, false);
    const FileHandle reader = files.Open(target, FileUse::Read);
    EXPECT_FALSE(files.Copy(path, target, true));
    files.Close(reader);
    EXPECT_EQ(ReadFile(target), "old");
    ASSERT_TRUE(files.MakeDirectory(directory + L"Ordner"));
    EXPECT_FALSE(files.Copy(path, directory + L"Ordner", true));
    EXPECT_EQ(files.List(directory + L"*").size(), 2u);
}

TEST_F(FileContract, MakeDirectory_NeedsItsParentAndAFreeName) {
    EXPECT_TRUE(files.MakeDirectory(directory + L"Ordner\\"));
    EXPECT_TRUE(files.MakeDirectory(directory + L"Ordner\\Innen"));
    EXPECT_FALSE(files.MakeDirectory(directory + L"ORDNER"));
    EXPECT_EQ(files.LastError(), kAlreadyExists);
    EXPECT_FALSE(files.MakeDirectory(directory + L"none\\Innen"));
    EXPECT_EQ(files.LastError(), kPathNotFound);
    WriteFile(path, "");
    EXPECT_FALSE(files.MakeDirectory(path));
    EXPECT_EQ(files.LastError(), kAlreadyExists);
    EXPECT_FALSE(files.Remove(directory + L"Ordner"));
    EXPECT_TRUE(files.IsDirectory(directory + L"Ordner"));
}

TEST_F(FileContract, Paths_MayBeLongerThanTheUsualLimit) {
    std::wstring deep = directory;
    for (int i = 0; i < 8; ++i) {
        deep += std::wstring(50, static_cast<wchar_t>(L'a' + i)) + L"\\";
        ASSERT_TRUE(files.MakeDirectory(deep)) << i << ": " << files.LastError();
    }
    const std::wstring file = deep + L"Datei.bin";
    WriteFile(file, "deep");
    EXPECT_TRUE(files.Copy(file, deep + L"Kopie.bin", false));
    EXPECT_EQ(ReadFile(deep + L"Kopie.bin"), "deep");
    EXPECT_EQ(files.List(deep + L"*.bin"), (std::vector<std::wstring>{L"Datei.bin", L"Kopie.bin"}));
    EXPECT_TRUE(files.ChangeTime(file).has_value());
    EXPECT_TRUE(files.Remove(file));
    EXPECT_FALSE(files.Exists(file));
}
