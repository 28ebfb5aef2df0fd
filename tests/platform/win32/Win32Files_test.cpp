#include "platform/win32/Win32Files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <utility>

#include "desktop/ScratchDirectory.h"

// A scanner, an indexer or a backup holds a file: here until the port pauses for the first time.
TEST(Win32Files, Held_IsTriedAgainUnlessItIsALock) {
    const ScratchDirectory directory;
    const std::wstring file = (directory.Path() / L"C1.nxc").wstring();
    const std::wstring target = (directory.Path() / L"C2.nxc").wstring();
    HANDLE held = INVALID_HANDLE_VALUE;
    DWORD reason = 0;
    Win32Files files([&](std::uint32_t) {
        reason = GetLastError();
        CloseHandle(std::exchange(held, INVALID_HANDLE_VALUE));
    });
    files.Close(files.Open(file, FileUse::NewOnly));
    files.Close(files.Open(target, FileUse::NewOnly));
    const auto hold = [&](const std::wstring& path) {
        reason = 0;
        held = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(held, INVALID_HANDLE_VALUE);
    };

    hold(target);
    EXPECT_TRUE(files.Copy(file, target, true));
    EXPECT_EQ(reason, static_cast<DWORD>(ERROR_ACCESS_DENIED)) << "what a rename is told";
    hold(file);
    EXPECT_TRUE(files.Copy(file, target, true));
    EXPECT_EQ(reason, static_cast<DWORD>(ERROR_SHARING_VIOLATION));
    // A scanner still has what was deleted, as a journal is at each save.
    reason = 0;
    held = CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                       OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(DeleteFileW(file.c_str()));
    const FileHandle anew = files.Open(file, FileUse::WriteNew);
    EXPECT_NE(anew, FileHandle::None);
    EXPECT_NE(reason, 0u);
    files.Close(anew);
    // A real refusal is answered at once.
    reason = 0;
    EXPECT_EQ(files.Open(directory.Path().wstring(), FileUse::WriteNew), FileHandle::None);
    EXPECT_EQ(reason, 0u);
    hold(file);
    const FileHandle opened = files.Open(file, FileUse::Read);
    EXPECT_NE(opened, FileHandle::None);
    files.Close(opened);
    hold(file);
    EXPECT_TRUE(files.Remove(file));
    EXPECT_EQ(reason, static_cast<DWORD>(ERROR_SHARING_VIOLATION));

    hold(target);
    EXPECT_EQ(files.Open(target, FileUse::Lock), FileHandle::None);
    EXPECT_EQ(reason, 0u) << "its holder has it for long";
    CloseHandle(held);
}
