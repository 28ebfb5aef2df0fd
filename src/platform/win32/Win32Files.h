#pragma once

#include <functional>
#include <map>

#include "platform/Files.h"

class Win32Files : public FilePort {
 public:
    using Pause = std::function<void(std::uint32_t milliseconds)>;
    // `pause` passes the time until a file that somebody holds is tried again.
    explicit Win32Files(Pause pause);
    Win32Files();

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
    FileHandle OpenLock(const std::wstring& name);
    bool Noted(bool succeeded);
    bool Fail(std::uint32_t error);
    bool HasRoomFor(FileHandle file, std::int64_t more);
    bool CopyUnderFreeName(const std::wstring& from, const std::wstring& to, std::wstring& copy);
    std::optional<std::vector<std::wstring>> NamesLike(const std::wstring& pattern, bool directories);

    Pause pause_;
    std::map<FileHandle, std::wstring> locks_;  // with their names
    std::uint32_t lastError_ = 0;
};
