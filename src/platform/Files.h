#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Handles.h"

enum class FileUse {
    Read,          // must exist; others may read it meanwhile
    WriteNew,      // created, or truncated when it exists; others may read
    WriteInPlace,  // created when missing, never truncated; others may read
    Append,        // created when missing; the position is at its end
    NewOnly,       // created; fails when it exists; others may read
    Lock,  // created when missing; nobody else may lock or write it meanwhile, everybody may read it; it
           // goes when it is closed, but stays when the process is killed
};

// What becomes of a call when another program holds the file at the moment.
enum class WhenHeld { Wait, GiveUp };

// A file's time of last change: 100-nanosecond steps since 1 January 1601 UTC.
using FileTime = std::uint64_t;

// Files, by single system calls: partial records are part of the formats that stand on them.
// A failed call leaves its error code in LastError.
class FilePort {
 public:
    virtual ~FilePort() = default;

    virtual FileHandle Open(const std::wstring& path, FileUse use) = 0;
    virtual void Close(FileHandle file) = 0;
    // The number of bytes read, fewer than `size` only at the end of the file; none on an error.
    virtual std::optional<std::uint32_t> Read(FileHandle file, void* buffer, std::uint32_t size) = 0;
    // The number of bytes written; none on an error.
    virtual std::optional<std::uint32_t> Write(FileHandle file, const void* bytes, std::uint32_t size) = 0;
    // The position in bytes from the start.
    virtual std::optional<std::int64_t> Tell(FileHandle file) = 0;
    virtual bool Seek(FileHandle file, std::int64_t position) = 0;
    virtual std::optional<std::int64_t> Size(FileHandle file) = 0;
    // Makes the file at least `size` bytes long, so that a full disk shows before anything is overwritten.
    // The position is not moved; false leaves the old content and length untouched.
    virtual bool Reserve(FileHandle file, std::int64_t size) = 0;
    // Returns when everything written so far will survive the loss of the current.
    virtual bool Flush(FileHandle file) = 0;
    // The same for a file that is closed again.
    virtual bool FlushClosed(const std::wstring& path, WhenHeld held) = 0;

    // True when a listing of `path` yields a name, be it a file or a directory.
    virtual bool Exists(const std::wstring& path) = 0;
    virtual bool IsDirectory(const std::wstring& path) = 0;
    // Of a file; none for a directory.
    virtual std::optional<FileTime> ChangeTime(const std::wstring& path) = 0;
    // The names (without the directory) of the files that match a pattern such as "C:\DIR\*.nxp", sorted;
    // only the last part may hold "*" and "?".
    virtual std::vector<std::wstring> List(const std::wstring& pattern) = 0;
    virtual bool Remove(const std::wstring& path) = 0;
    // Copies a file with its change time; fails when `to` exists unless `replace` is set. The copy may be
    // written even where its source is only to be read. A failure leaves no half copy behind and an old `to`
    // as it was.
    virtual bool Copy(const std::wstring& from, const std::wstring& to, bool replace) = 0;
    // Creates one directory; its parent must exist.
    virtual bool MakeDirectory(const std::wstring& path) = 0;
    // The same text for the same file or directory, whatever spelling or drive leads there, and another one
    // for every other; empty when it cannot be had.
    virtual std::wstring Identity(const std::wstring& path) = 0;

    virtual std::uint32_t LastError() = 0;
};

// The system's error code for a file that is not there.
inline constexpr std::uint32_t kErrorFileNotFound = 2;
// For a file in a directory that is not there.
inline constexpr std::uint32_t kErrorPathNotFound = 3;
inline bool IsMissing(std::uint32_t error) {
    return error == kErrorFileNotFound || error == kErrorPathNotFound;
}
// For a file that another program holds.
inline constexpr std::uint32_t kErrorSharingViolation = 32;
