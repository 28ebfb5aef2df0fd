#include "platform/posix/PosixFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "platform/FileBytes.h"
#include "platform/FileIdentity.h"
#include "platform/NamePattern.h"
#include "platform/Text.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kAccessDenied = 5;
constexpr std::uint32_t kWriteProtected = 19;
constexpr std::uint32_t kReadFault = 30;
constexpr std::uint32_t kFileExists = 80;
constexpr std::uint32_t kDiskFull = 112;
constexpr std::uint32_t kInvalidName = 123;

// The byte that a lock takes, far behind the content, in all programs alike.
constexpr off_t kLockedByte = off_t{1} << 32;

// A lock that belongs to the open file where the system knows such ones, and else to the process.
#ifdef F_OFD_SETLK
constexpr int kSetLock = F_OFD_SETLK;
#else
constexpr int kSetLock = F_SETLK;
#endif

bool LocksItsByte(int file) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kLockedByte;
    lock.l_len = 1;
    return fcntl(file, kSetLock, &lock) == 0;
}

// The program that held the lock before removes its file.
bool IsRemoved(int file) {
    struct stat found;
    return fstat(file, &found) != 0 || found.st_nlink == 0;
}

std::string SystemName(const std::wstring& path) {
    std::string name = Utf8FromText(path);
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

int FileOf(FileHandle file) {
    return static_cast<int>(static_cast<std::uintptr_t>(file)) - 1;
}

FileHandle HandleOf(int file) {
    return static_cast<FileHandle>(static_cast<std::uintptr_t>(file) + 1);
}

std::uint32_t ErrorOf(int error) {
    switch (error) {
        case ENOENT:
            return kErrorFileNotFound;
        case ENOTDIR:
            return kErrorPathNotFound;
        case EACCES:
        case EPERM:
        case EISDIR:
        case EBADF:
            return kAccessDenied;
        case EROFS:
            return kWriteProtected;
        case EEXIST:
            return kFileExists;
        case ENOSPC:
        case EDQUOT:
            return kDiskFull;
        case EWOULDBLOCK:
        case EBUSY:
            return kErrorSharingViolation;
        case ENAMETOOLONG:
        case EINVAL:
            return kInvalidName;
        default:
            return kReadFault;
    }
}

int FlagsOf(FileUse use) {
    switch (use) {
        case FileUse::WriteNew:
            return O_WRONLY | O_CREAT | O_TRUNC;
        case FileUse::WriteInPlace:
        case FileUse::Append:
            return O_WRONLY | O_CREAT;
        case FileUse::NewOnly:
            return O_WRONLY | O_CREAT | O_EXCL;
        default:
            return O_RDONLY;
    }
}

bool DirectoryIsMissing(const std::string& name) {
    const fs::path above = fs::path(name).parent_path();
    std::error_code ignored;
    return name.empty() || (!above.empty() && !fs::is_directory(above, ignored));
}

}  // namespace

bool PosixFiles::Noted(bool succeeded) {
    if (!succeeded) lastError_ = ErrorOf(errno);
    return succeeded;
}

FileHandle PosixFiles::Open(const std::wstring& path, FileUse use) {
    const std::string name = SystemName(path);
    const int file =
        use == FileUse::Lock ? OpenLock(name) : open(name.c_str(), FlagsOf(use) | O_CLOEXEC, 0666);
    if (!Noted(file >= 0)) {
        if (lastError_ == kErrorFileNotFound && DirectoryIsMissing(name)) lastError_ = kErrorPathNotFound;
        return FileHandle::None;
    }
    struct stat found;
    if (fstat(file, &found) != 0 || S_ISDIR(found.st_mode)) {
        close(file);
        lastError_ = kAccessDenied;
        return FileHandle::None;
    }
    if (use == FileUse::Append) lseek(file, 0, SEEK_END);
    if (use == FileUse::Lock) locks_[HandleOf(file)] = name;
    return HandleOf(file);
}

// What counts is the lock, which the system takes from a program that ends, also from one that runs under
// Wine or over a network; a file that was left behind is nobody's.
int PosixFiles::OpenLock(const std::string& path) {
    int file = -1;
    do {
        if (file >= 0) close(file);
        file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (file >= 0 && !LocksItsByte(file)) {
            const int error = errno == EACCES || errno == EAGAIN ? EWOULDBLOCK : errno;
            close(file);
            errno = error;
            return -1;
        }
    } while (file >= 0 && IsRemoved(file));
    return file;
}

void PosixFiles::Close(FileHandle file) {
    const auto lock = locks_.find(file);
    if (lock != locks_.end()) {
        unlink(lock->second.c_str());
        locks_.erase(lock);
    }
    if (file != FileHandle::None) close(FileOf(file));
}

std::optional<std::uint32_t> PosixFiles::Read(FileHandle file, void* buffer, std::uint32_t size) {
    std::uint32_t done = 0;
    while (done < size) {
        const ssize_t count = read(FileOf(file), static_cast<char*>(buffer) + done, size - done);
        if (count < 0 && errno == EINTR) continue;
        if (!Noted(count >= 0)) return std::nullopt;
        if (count == 0) break;
        done += static_cast<std::uint32_t>(count);
    }
    return done;
}

std::optional<std::uint32_t> PosixFiles::Write(FileHandle file, const void* bytes, std::uint32_t size) {
    std::uint32_t done = 0;
    while (done < size) {
        const ssize_t count = write(FileOf(file), static_cast<const char*>(bytes) + done, size - done);
        if (count < 0 && errno == EINTR) continue;
        if (!Noted(count >= 0)) return std::nullopt;
        done += static_cast<std::uint32_t>(count);
    }
    return done;
}

std::optional<std::int64_t> PosixFiles::Tell(FileHandle file) {
    const off_t position = lseek(FileOf(file), 0, SEEK_CUR);
    if (!Noted(position >= 0)) return std::nullopt;
    return position;
}

bool PosixFiles::Seek(FileHandle file, std::int64_t position) {
    return Noted(lseek(FileOf(file), position, SEEK_SET) >= 0);
}

std::optional<std::int64_t> PosixFiles::Size(FileHandle file) {
    struct stat found;
    if (!Noted(fstat(FileOf(file), &found) == 0)) return std::nullopt;
    return found.st_size;
}

bool PosixFiles::Reserve(FileHandle file, std::int64_t size) {
    const auto length = Size(file);
    if (!length) return false;
    if (size <= *length) return true;
    struct statvfs disk;
    const auto free = fstatvfs(FileOf(file), &disk) == 0 ? static_cast<std::int64_t>(disk.f_bavail) *
                                                               static_cast<std::int64_t>(disk.f_frsize)
                                                         : size;
    if (free < size - *length) errno = ENOSPC;
    return Noted(free >= size - *length && ftruncate(FileOf(file), size) == 0);
}

bool PosixFiles::Flush(FileHandle file) {
    return Noted(fsync(FileOf(file)) == 0);
}

// Nobody keeps a file from being opened here, so there is nothing to wait for.
bool PosixFiles::FlushClosed(const std::wstring& path, WhenHeld /*held*/) {
    const int file = open(SystemName(path).c_str(), O_WRONLY | O_CLOEXEC);
    if (!Noted(file >= 0)) return false;
    const bool flushed = Noted(fsync(file) == 0);
    close(file);
    return flushed;
}

bool PosixFiles::Exists(const std::wstring& path) {
    struct stat found;
    return Noted(stat(SystemName(path).c_str(), &found) == 0);
}

bool PosixFiles::IsDirectory(const std::wstring& path) {
    struct stat found;
    return Noted(stat(SystemName(path).c_str(), &found) == 0) && S_ISDIR(found.st_mode);
}

std::optional<FileTime> PosixFiles::ChangeTime(const std::wstring& path) {
    constexpr std::int64_t kStepsOfASecond = 10'000'000;
    constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
    struct stat found;
    if (!Noted(stat(SystemName(path).c_str(), &found) == 0) || S_ISDIR(found.st_mode)) return std::nullopt;
    return static_cast<FileTime>((found.st_mtim.tv_sec + kSecondsTo1970) * kStepsOfASecond +
                                 found.st_mtim.tv_nsec / 100);
}

std::vector<std::wstring> PosixFiles::List(const std::wstring& pattern) {
    const std::size_t end = pattern.find_last_of(L"\\/") + 1;  // npos + 1 is 0
    const std::wstring directory = end == 0 ? L"." : pattern.substr(0, end);
    std::vector<std::wstring> names;
    std::error_code error;
    for (fs::directory_iterator entry(SystemName(directory), error), last; !error && entry != last;
         entry.increment(error)) {
        const std::wstring name = TextFromUtf8(entry->path().filename().string());
        std::error_code ignored;
        if (!entry->is_directory(ignored) && MatchesNamePattern(name, pattern.substr(end)))
            names.push_back(name);
    }
    std::sort(names.begin(), names.end(),
              [](const std::wstring& a, const std::wstring& b) { return CompareNoCase(a, b) < 0; });
    return names;
}

bool PosixFiles::Remove(const std::wstring& path) {
    return Noted(unlink(SystemName(path).c_str()) == 0);
}

// The copy takes its name only when it is complete.
bool PosixFiles::Copy(const std::wstring& from, const std::wstring& to, bool replace) {
    const std::wstring half = to + L".~0";
    if (!replace && Exists(to)) {
        errno = EEXIST;
        return Noted(false);
    }
    if (!CopyBytes(from, half)) return false;
    const std::string name = SystemName(half), target = SystemName(to);
    const bool taken = replace ? rename(name.c_str(), target.c_str()) == 0
                               : link(name.c_str(), target.c_str()) == 0 && unlink(name.c_str()) == 0;
    if (Noted(taken)) return true;
    unlink(name.c_str());
    return false;
}

bool PosixFiles::CopyBytes(const std::wstring& from, const std::wstring& to) {
    std::error_code error;
    fs::copy_file(SystemName(from), SystemName(to), fs::copy_options::overwrite_existing, error);
    if (!error) fs::last_write_time(SystemName(to), fs::last_write_time(SystemName(from), error), error);
    if (error) unlink(SystemName(to).c_str());
    errno = error.value();
    return Noted(!error);
}

bool PosixFiles::MakeDirectory(const std::wstring& path) {
    if (Noted(mkdir(SystemName(path).c_str(), 0777) == 0)) return true;
    if (lastError_ == kErrorFileNotFound) lastError_ = kErrorPathNotFound;
    return false;
}

std::wstring PosixFiles::Identity(const std::wstring& path) {
    struct stat found;
    if (!Noted(stat(SystemName(path).c_str(), &found) == 0)) return {};
    return FileIdentity(found.st_dev, found.st_ino);
}
