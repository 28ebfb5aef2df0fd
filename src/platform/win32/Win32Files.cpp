#include "platform/win32/Win32Files.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/FileIdentity.h"
#include "platform/NamePattern.h"
#include "platform/Text.h"
#include "platform/win32/SystemHandles.h"
#include "platform/win32/SystemPath.h"

namespace {

constexpr int kMostCopyNames = 100;

// Scanners, indexers, backups and clouds hold a file for moments, together half a second at most.
constexpr std::array<DWORD, 5> kPausesBetweenTries = {5, 15, 45, 135, 300};

bool IsHeldForTheMoment(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

// What is held cannot be renamed either; there it is called a refusal.
bool IsHeldFromRenaming(DWORD error) {
    return IsHeldForTheMoment(error) || error == ERROR_ACCESS_DENIED;
}

// A name whose file was deleted while somebody had it open is refused until that one closes it. Where the
// refusal is a real one, the directory shows the file's attributes nevertheless.
bool IsBeingDeleted(const std::wstring& name, DWORD error) {
    if (error != ERROR_ACCESS_DENIED || GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES)
        return false;
    WIN32_FIND_DATAW found;
    return UniqueFind(FindFirstFileW(name.c_str(), &found)).IsSet() || GetLastError() == ERROR_FILE_NOT_FOUND;
}

// Tries until it succeeds or fails for another reason than that somebody holds the file.
template <typename IsHeld, typename Try>
bool WhileHeld(const IsHeld& isHeld, const Win32Files::Pause& pause, Try&& succeeds) {
    if (succeeds()) return true;
    for (const DWORD milliseconds : kPausesBetweenTries) {
        const DWORD error = GetLastError();
        const bool held = isHeld(error);
        SetLastError(error);
        if (!held) return false;
        pause(milliseconds);
        if (succeeds()) return true;
    }
    return false;
}

template <typename Try>
bool WhileHeld(const std::wstring& name, const Win32Files::Pause& pause, Try&& succeeds) {
    const auto isHeld = [&](DWORD error) { return IsHeldForTheMoment(error) || IsBeingDeleted(name, error); };
    return WhileHeld(isHeld, pause, succeeds);
}

struct OpenWay {
    DWORD access;
    DWORD disposition;
};

OpenWay WayOf(FileUse use) {
    switch (use) {
        case FileUse::WriteNew:
            return {GENERIC_WRITE, CREATE_ALWAYS};
        case FileUse::WriteInPlace:
        case FileUse::Append:
            return {GENERIC_WRITE, OPEN_ALWAYS};
        case FileUse::NewOnly:
            return {GENERIC_WRITE, CREATE_NEW};
        case FileUse::Lock:
        case FileUse::Read:
            break;
    }
    return {GENERIC_READ, OPEN_EXISTING};
}

bool EndsInSeparator(const std::wstring& path) {
    return path.ends_with(L'\\') || path.ends_with(L'/');
}

struct SplitPath {
    std::wstring directory;  // with its separator, empty when there is none
    std::wstring name;
};

SplitPath Split(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L"\\/:") + 1;  // npos + 1 is 0
    return {path.substr(0, end), path.substr(end)};
}

DWORD AttributesOf(const std::wstring& path) {
    return GetFileAttributesW(SystemPath(path).c_str());
}

// Some file systems keep the mark but let a privileged user write nevertheless.
bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = AttributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
           (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace

Win32Files::Win32Files(Pause pause) : pause_(std::move(pause)) {}

Win32Files::Win32Files() : Win32Files(&Sleep) {}

// Keeps the error code of a failed call before anything else can replace it.
bool Win32Files::Noted(bool succeeded) {
    if (!succeeded) lastError_ = GetLastError();
    return succeeded;
}

bool Win32Files::Fail(std::uint32_t error) {
    lastError_ = error;
    return false;
}

FileHandle Win32Files::Open(const std::wstring& path, FileUse use) {
    if (use == FileUse::Lock) return OpenLock(SystemPath(path));
    if (use != FileUse::Read && IsReadOnly(path)) {
        Fail(ERROR_ACCESS_DENIED);
        return FileHandle::None;
    }
    const OpenWay way = WayOf(use);
    const std::wstring name = SystemPath(path);
    UniqueFile file;
    const auto open = [&] {
        file.Reset(CreateFileW(name.c_str(), way.access, FILE_SHARE_READ, nullptr, way.disposition,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
        return file.IsSet();
    };
    if (!Noted(WhileHeld(name, pause_, open))) return FileHandle::None;
    if (use == FileUse::Append && !Noted(SetFilePointerEx(file.Get(), LARGE_INTEGER{}, nullptr, FILE_END)))
        return FileHandle::None;
    return EngineFile(file.Release());
}

// What keeps others out is a locked byte far behind the content: backups copy the file, and who only reads is
// in nobody's way. The holder has it for long, so there is nothing to wait for.
FileHandle Win32Files::OpenLock(const std::wstring& name) {
    UniqueFile file(CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_HIDDEN, nullptr));
    if (!Noted(file.IsSet())) return FileHandle::None;
    OVERLAPPED place{};
    place.OffsetHigh = 1;
    if (!Noted(
            LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place))) {
        if (lastError_ == ERROR_LOCK_VIOLATION) lastError_ = ERROR_SHARING_VIOLATION;
        return FileHandle::None;
    }
    locks_[EngineFile(file.Get())] = name;
    return EngineFile(file.Release());
}

// The file of a lock stays when somebody reads it, or has taken it already.
void Win32Files::Close(FileHandle file) {
    if (file == FileHandle::None) return;
    const auto lock = locks_.extract(file);
    CloseHandle(SystemFile(file));
    if (lock) DeleteFileW(lock.mapped().c_str());
}

std::optional<std::uint32_t> Win32Files::Read(FileHandle file, void* buffer, std::uint32_t size) {
    DWORD count = 0;
    if (!Noted(ReadFile(SystemFile(file), buffer, size, &count, nullptr))) return std::nullopt;
    return count;
}

std::optional<std::uint32_t> Win32Files::Write(FileHandle file, const void* bytes, std::uint32_t size) {
    DWORD count = 0;
    if (!Noted(WriteFile(SystemFile(file), bytes, size, &count, nullptr))) return std::nullopt;
    return count;
}

std::optional<std::int64_t> Win32Files::Tell(FileHandle file) {
    LARGE_INTEGER position;
    if (!Noted(SetFilePointerEx(SystemFile(file), LARGE_INTEGER{}, &position, FILE_CURRENT)))
        return std::nullopt;
    return position.QuadPart;
}

bool Win32Files::Seek(FileHandle file, std::int64_t position) {
    LARGE_INTEGER target;
    target.QuadPart = position;
    return Noted(SetFilePointerEx(SystemFile(file), target, nullptr, FILE_BEGIN));
}

std::optional<std::int64_t> Win32Files::Size(FileHandle file) {
    LARGE_INTEGER size;
    if (!Noted(GetFileSizeEx(SystemFile(file), &size))) return std::nullopt;
    return size.QuadPart;
}

bool Win32Files::Reserve(FileHandle file, std::int64_t size) {
    const std::optional<std::int64_t> length = Size(file);
    if (!length) return false;
    if (size <= *length) return true;
    const std::optional<std::int64_t> position = Tell(file);
    if (!position || !HasRoomFor(file, size - *length) || !Seek(file, size)) return false;
    const bool longer = Noted(SetEndOfFile(SystemFile(file)));
    const std::uint32_t error = lastError_;
    const bool positioned = Seek(file, *position);
    if (!longer) lastError_ = error;
    return longer && positioned;
}

// Not every file system sets the room aside when a file is made longer, so the free space is asked for as
// well. Where it cannot be asked for, making the file longer decides alone.
bool Win32Files::HasRoomFor(FileHandle file, std::int64_t more) {
    const DWORD needed = GetFinalPathNameByHandleW(SystemFile(file), nullptr, 0, VOLUME_NAME_DOS);
    if (needed == 0) return true;
    std::wstring path(needed, L'\0');
    path.resize(GetFinalPathNameByHandleW(SystemFile(file), path.data(), needed, VOLUME_NAME_DOS));
    ULARGE_INTEGER free;
    if (!GetDiskFreeSpaceExW(Split(path).directory.c_str(), &free, nullptr, nullptr)) return true;
    return free.QuadPart >= static_cast<ULONGLONG>(more) || Fail(ERROR_DISK_FULL);
}

bool Win32Files::Flush(FileHandle file) {
    return Noted(FlushFileBuffers(SystemFile(file)));
}

bool Win32Files::FlushClosed(const std::wstring& path, WhenHeld held) {
    const std::wstring name = SystemPath(path);
    UniqueFile file;
    // Flushing changes nothing, and what others do with the file meanwhile is theirs to decide.
    const auto open = [&] {
        file.Reset(CreateFileW(name.c_str(), GENERIC_WRITE,
                               FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
        return file.IsSet();
    };
    const bool opened = held == WhenHeld::Wait ? WhileHeld(name, pause_, open) : open();
    return Noted(opened) && Noted(FlushFileBuffers(file.Get()));
}

bool Win32Files::Exists(const std::wstring& path) {
    if (IsNamePattern(Split(path).name)) {
        for (const bool directories : {false, true}) {
            const auto names = NamesLike(path, directories);
            if (!names) return false;
            if (!names->empty()) return true;
        }
        return Fail(ERROR_FILE_NOT_FOUND);
    }
    const DWORD attributes = AttributesOf(path);
    if (attributes != INVALID_FILE_ATTRIBUTES)
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 || !EndsInSeparator(path) ||
               Fail(ERROR_DIRECTORY);
    // What another program holds exclusively gives no attributes but is still listed.
    WIN32_FIND_DATAW found;
    const UniqueFind find(FindFirstFileW(SystemPath(path).c_str(), &found));
    return Noted(find.IsSet());
}

bool Win32Files::IsDirectory(const std::wstring& path) {
    const DWORD attributes = AttributesOf(path);
    return Noted(attributes != INVALID_FILE_ATTRIBUTES) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::optional<FileTime> Win32Files::ChangeTime(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!Noted(GetFileAttributesExW(SystemPath(path).c_str(), GetFileExInfoStandard, &data)))
        return std::nullopt;
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        Fail(ERROR_ACCESS_DENIED);
        return std::nullopt;
    }
    return static_cast<FileTime>(data.ftLastWriteTime.dwHighDateTime) << 32 |
           data.ftLastWriteTime.dwLowDateTime;
}

// The names of the files, or of the directories, of a directory that match; none when it cannot be read.
std::optional<std::vector<std::wstring>> Win32Files::NamesLike(const std::wstring& pattern,
                                                               bool directories) {
    const SplitPath wanted = Split(pattern);
    std::wstring directory = wanted.directory.empty() ? L".\\" : wanted.directory;
    if (!EndsInSeparator(directory)) directory += L'\\';
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const UniqueFind find(FindFirstFileW(SystemPath(directory + L'*').c_str(), &found));
    if (!Noted(find.IsSet())) {
        // A drive's top directory may hold nothing at all, not even itself.
        if (lastError_ == ERROR_FILE_NOT_FOUND) return names;
        return std::nullopt;
    }
    do {
        const std::wstring name = found.cFileName;
        const bool isDirectory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isDirectory == directories && name != L"." && name != L".." &&
            MatchesNamePattern(name, wanted.name))
            names.push_back(name);
    } while (FindNextFileW(find.Get(), &found));
    if (GetLastError() != ERROR_NO_MORE_FILES) {
        Noted(false);
        return std::nullopt;
    }
    return names;
}

// Only what matches is put in order: to compare two names of a large directory costs more than to read them.
std::vector<std::wstring> Win32Files::List(const std::wstring& pattern) {
    std::vector<std::wstring> names = NamesLike(pattern, false).value_or(std::vector<std::wstring>());
    std::sort(names.begin(), names.end(),
              [](const std::wstring& a, const std::wstring& b) { return CompareNoCase(a, b) < 0; });
    return names;
}

bool Win32Files::Remove(const std::wstring& path) {
    const std::wstring name = SystemPath(path);
    return Noted(WhileHeld(name, pause_, [&] { return DeleteFileW(name.c_str()) != 0; }));
}

// The copy takes its name only when it is complete, so that neither a half copy nor a half overwritten target
// is ever left.
bool Win32Files::Copy(const std::wstring& from, const std::wstring& to, bool replace) {
    const DWORD attributes = AttributesOf(to);
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        if (!replace) return Fail(ERROR_FILE_EXISTS);
        if ((attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0)
            return Fail(ERROR_ACCESS_DENIED);
    }
    std::wstring copy;
    if (!CopyUnderFreeName(SystemPath(from), to, copy)) return false;
    const std::wstring target = SystemPath(to);
    if (Noted(WhileHeld(IsHeldFromRenaming, pause_, [&] {
            return MoveFileExW(copy.c_str(), target.c_str(), replace ? MOVEFILE_REPLACE_EXISTING : 0) != 0;
        })))
        return true;
    DeleteFileW(copy.c_str());
    return false;
}

// Copies to a name beside `to` that is not taken yet.
bool Win32Files::CopyUnderFreeName(const std::wstring& from, const std::wstring& to, std::wstring& copy) {
    for (int i = 0; i < kMostCopyNames; ++i) {
        copy = SystemPath(to + L".~" + NumberText(i));
        if (GetFileAttributesW(copy.c_str()) != INVALID_FILE_ATTRIBUTES) continue;
        const auto copies = [&] { return CopyFileW(from.c_str(), copy.c_str(), TRUE) != 0; };
        if (Noted(WhileHeld(from, pause_, copies))) {
            SetFileAttributesW(copy.c_str(), FILE_ATTRIBUTE_NORMAL);
            return true;
        }
        if (lastError_ == ERROR_FILE_EXISTS) continue;
        DeleteFileW(copy.c_str());
        return false;
    }
    return Fail(ERROR_FILE_EXISTS);
}

bool Win32Files::MakeDirectory(const std::wstring& path) {
    return Noted(CreateDirectoryW(SystemPath(path).c_str(), nullptr));
}

std::wstring Win32Files::Identity(const std::wstring& path) {
    // Without this flag a directory cannot be opened; no access is asked for, so nothing stands in the way.
    const UniqueFile file(CreateFileW(SystemPath(path).c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION found;
    if (!Noted(file.IsSet()) || !Noted(GetFileInformationByHandle(file.Get(), &found))) return {};
    const auto index = static_cast<std::uint64_t>(found.nFileIndexHigh) << 32 | found.nFileIndexLow;
    return FileIdentity(found.dwVolumeSerialNumber, index);
}
