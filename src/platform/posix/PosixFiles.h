#pragma once

#include <map>

#include "platform/Files.h"

// The files of a system that is none of Windows'. Paths may be written with "\" or "/", and names are told
// apart by their case. Sharing is kept among programs that ask for it, as the lock of a profile does.
class PosixFiles : public FilePort {
 public:
    FileHandle Open(const std::wstring& path, FileUse use) override;
    void Close(FileHandle file) override;
    std::optional<std::uint32_t> Read(FileHandle file, void* buffer, std::uint32_t size) override;
    std::optional<std::uint32_t> Write(FileHandle file, const void* bytes, std::uint32_t size) override;
    std::optional<std::int64_t> Tell(FileHandle file) override;
    bool Seek(FileHandle file, std::int64_t position) override;
    std::optional<std::int64_t> Size(FileHandle file) override;
    bool Reserve(FileHandle file, std::int64_t size) override;
    bool Flush(FileHandle file) override;
    bool FlushClosed(const std::wstring& path, WhenHeld held) override;
    bool Exists(const std::wstring& path) override;
    bool IsDirectory(const std::wstring& path) override;
    std::optional<FileTime> ChangeTime(const std::wstring& path) override;
    std::vector<std::wstring> List(const std::wstring& pattern) override;
    bool Remove(const std::wstring& path) override;
    bool Copy(const std::wstring& from, const std::wstring& to, bool replace) override;
    bool MakeDirectory(const std::wstring& path) override;
    std::wstring Identity(const std::wstring& path) override;
    std::uint32_t LastError() override { return lastError_; }

 private:
    int OpenLock(const std::string& path);
    bool CopyBytes(const std::wstring& from, const std::wstring& to);
    // Keeps the error of a failed call, as Windows numbers it.
    bool Noted(bool succeeded);

    std::map<FileHandle, std::string> locks_;  // that go when they are closed
    std::uint32_t lastError_ = 0;
};
