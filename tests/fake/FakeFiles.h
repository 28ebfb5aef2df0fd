#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fake/Failures.h"
#include "fake/FakeClock.h"
#include "fake/Ledger.h"
#include "platform/Files.h"

// Drives, directories and files in memory. Paths are those of Windows: separated by "\" or "/", compared
// without regard to case; those without a drive stand on C:. There is a drive C: at first, and nothing on it.
class FakeFiles : public FilePort {
 public:
    FakeFiles(Ledger& ledger, Failures& failures, FakeClock& clock);

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

    // What follows arranges and looks at the files; none of it is a call of the port.

    // Puts a file there, with the directories above it, or replaces its content, even while it is open.
    void SetBytes(const std::wstring& path, std::string_view bytes);
    // A file's content; none when there is no such file.
    std::optional<std::string> Bytes(const std::wstring& path) const;
    // Makes a directory, those above it and its drive.
    void AddDirectory(const std::wstring& path);
    // Somebody else removed a file or an empty directory, whatever is open.
    void Vanish(const std::wstring& path) {
        entries_.erase(FullPath(path));
        unflushed_.erase(FullPath(path));
    }
    void SetReadOnly(const std::wstring& path, bool readOnly) { ContentAt(path)->readOnly = readOnly; }
    // Another program has the file open; for writing it keeps everybody else from opening it.
    void LockByOther(const std::wstring& path) { lockedByOther_.insert(FullPath(path)); }
    void UnlockByOther(const std::wstring& path) { lockedByOther_.erase(FullPath(path)); }
    bool Has(const std::wstring& path) const { return ContentAt(path) != nullptr; }
    // The full paths of all files, in upper case and sorted.
    std::vector<std::wstring> AllFiles() const;

    // The number by which a server knows all its files; none for one that tells them apart.
    std::optional<std::uint64_t> numberOfAll;
    // The bytes that all files may have together; none for no limit.
    std::optional<std::int64_t> capacity;

 private:
    using FileBytes = std::vector<std::uint8_t>;
    struct Content {
        FileBytes bytes;
        FileTime changed = 0;
        bool readOnly = false;
        int readers = 0;
        int writers = 0;
        int locks = 0;
        int& Users(FileUse use) {
            return use == FileUse::Lock ? locks : use == FileUse::Read ? readers : writers;
        }
    };
    struct Entry {
        std::wstring name;                 // as it was written when it was made
        std::shared_ptr<Content> content;  // none for a directory
    };
    // What the disk surely holds of a file that was made, written or removed and not flushed since; none when
    // it surely holds no such file.
    struct Unflushed {
        std::wstring name;
        std::optional<FileBytes> onDisk;
    };

 public:
    // The files as they are at one moment, and what the disk surely holds of them.
    struct Disk {
        std::map<std::wstring, Entry> entries;
        std::map<std::wstring, Unflushed> unflushed;
    };
    Disk TakeDisk() const;
    void PutDisk(const Disk& disk);
    // How often something has changed that a loss of the current could show.
    int Changes() const { return changes_; }
    // In how many ways the loss of the current can leave the disk: of each file that was not flushed,
    // whatever becomes of the others, the old content, the new one, half of the one and half of the other, or
    // only the new length; a removed file is gone or back.
    int CurrentLosses() const;
    // The current is gone and back; `which` counts from 0.
    void LoseCurrent(int which);

 private:
    struct FileOwner {
        std::shared_ptr<Content> content;
        FileUse use;
        std::wstring path;
        std::int64_t position = 0;
    };

    static std::wstring FullPath(const std::wstring& path);
    static std::wstring ParentOf(const std::wstring& fullPath);
    std::shared_ptr<Content> ContentAt(const std::wstring& path) const;
    bool IsDirectoryAt(const std::wstring& fullPath) const;
    std::uint32_t MissingError(const std::wstring& fullPath) const;
    // What speaks against opening, or changing a file that is there; 0 when nothing does.
    std::uint32_t OpenError(const std::wstring& fullPath, FileUse use) const;
    std::uint32_t ChangeError(const std::wstring& fullPath, const Content& content) const;
    // The open file, if it was opened for that.
    FileOwner* FindOpen(FileHandle file);
    FileOwner* FindOpenToWrite(FileHandle file);
    std::int64_t Room() const;
    // To be called before each change of what is at `fullPath`.
    void Changing(const std::wstring& fullPath);
    void Flushed(const std::wstring& fullPath);
    // What a loss of the current can leave of a file, none for no file.
    std::vector<std::optional<FileBytes>> Remains(const std::wstring& fullPath, const Unflushed& file) const;
    bool Fail(std::uint32_t error);
    // True, with `error` as the last one, when the planned failure strikes.
    bool Strikes(Operation operation, std::uint32_t error) {
        return failures_.Strikes(operation) && !Fail(error);
    }

    Ledger& ledger_;
    Failures& failures_;
    FakeClock& clock_;
    std::set<std::wstring> drives_{L"C:"};
    std::map<std::wstring, Entry> entries_;  // by full path in upper case
    std::map<std::wstring, Unflushed> unflushed_;
    int changes_ = 0;
    std::map<FileHandle, FileOwner> open_;
    std::set<std::wstring> lockedByOther_;
    std::uint32_t lastError_ = 0;
};
