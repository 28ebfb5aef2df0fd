#include "fake/FakeFiles.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "platform/NamePattern.h"
#include "platform/Text.h"

namespace {

constexpr std::uint32_t kErrorAccessDenied = 5, kErrorInvalidHandle = 6, kErrorReadFault = 30,
                        kErrorWriteFault = 29, kErrorFileExists = 80, kErrorInvalidParameter = 87,
                        kErrorDiskFull = 112, kErrorInvalidName = 123, kErrorNegativeSeek = 131,
                        kErrorAlreadyExists = 183, kErrorNotConnected = 1167;

constexpr std::wstring_view kLongPathPrefix = L"\\\\?\\";

std::wstring NameOf(const std::wstring& path) {
    std::wstring trimmed = path;
    while (!trimmed.empty() && (trimmed.back() == L'\\' || trimmed.back() == L'/'))
        trimmed.pop_back();
    return trimmed.substr(trimmed.find_last_of(L"\\/") + 1);
}

bool EndsInSeparator(const std::wstring& path) {
    return !path.empty() && (path.back() == L'\\' || path.back() == L'/');
}

bool Writes(FileUse use) {
    return use != FileUse::Read;
}

void SortNames(std::vector<std::wstring>& names) {
    std::sort(names.begin(), names.end(),
              [](const std::wstring& a, const std::wstring& b) { return CompareNoCase(a, b) < 0; });
}

}  // namespace

FakeFiles::FakeFiles(Ledger& ledger, Failures& failures, FakeClock& clock)
    : ledger_(ledger), failures_(failures), clock_(clock) {}

bool FakeFiles::Fail(std::uint32_t error) {
    lastError_ = error;
    return false;
}

// "C:\A\..\b\" becomes "C:\B"; a drive alone is "C:".
std::wstring FakeFiles::FullPath(const std::wstring& path) {
    std::wstring upper = UpperCase(path);
    std::replace(upper.begin(), upper.end(), L'/', L'\\');
    if (upper.starts_with(kLongPathPrefix)) upper.erase(0, kLongPathPrefix.size());
    if (upper.size() < 2 || upper[1] != L':')
        upper = upper.starts_with(L'\\') ? L"C:" + upper : L"C:\\" + upper;
    std::vector<std::wstring> parts;
    for (std::size_t start = 0; start < upper.size();) {
        const std::size_t end = std::min(upper.find(L'\\', start), upper.size());
        const std::wstring part = upper.substr(start, end - start);
        if (part == L".." && parts.size() > 1)
            parts.pop_back();
        else if (!part.empty() && part != L"." && part != L"..")
            parts.push_back(part);
        start = end + 1;
    }
    std::wstring full;
    for (const std::wstring& part : parts)
        full += full.empty() ? part : L"\\" + part;
    return full;
}

std::wstring FakeFiles::ParentOf(const std::wstring& fullPath) {
    const std::size_t end = fullPath.rfind(L'\\');
    return end == std::wstring::npos ? std::wstring() : fullPath.substr(0, end);
}

const FakeFiles::Entry* FakeFiles::Find(const std::wstring& path) const {
    const auto found = entries_.find(FullPath(path));
    return found == entries_.end() ? nullptr : &found->second;
}

std::shared_ptr<FakeFiles::Content> FakeFiles::ContentAt(const std::wstring& path) const {
    const Entry* entry = Find(path);
    return entry == nullptr ? nullptr : entry->content;
}

const FakeFiles::Content* FakeFiles::FindFile(const std::wstring& path) const {
    return ContentAt(path).get();
}

bool FakeFiles::IsDirectoryAt(const std::wstring& fullPath) const {
    if (drives_.contains(fullPath)) return true;
    const auto found = entries_.find(fullPath);
    return found != entries_.end() && found->second.content == nullptr;
}

bool FakeFiles::IsDenied(const std::wstring& fullPath) const {
    for (std::wstring path = fullPath; !path.empty(); path = ParentOf(path))
        if (denied_.contains(path)) return true;
    return false;
}

bool FakeFiles::IsInUse(const std::wstring& fullPath, const Content& content) const {
    return content.readers > 0 || content.writers > 0 || lockedByOther_.contains(fullPath);
}

std::uint32_t FakeFiles::MissingError(const std::wstring& fullPath) const {
    return IsDirectoryAt(ParentOf(fullPath)) ? kErrorFileNotFound : kErrorPathNotFound;
}

// 0 when nothing speaks against opening the file.
std::uint32_t FakeFiles::OpenError(const std::wstring& path, const std::wstring& fullPath,
                                   FileUse use) const {
    if (path.empty()) return kErrorPathNotFound;
    if (EndsInSeparator(path) || NameOf(path).find_first_of(L"<>\"|?*") != std::wstring::npos)
        return kErrorInvalidName;
    if (IsDenied(fullPath) || IsDirectoryAt(fullPath)) return kErrorAccessDenied;
    const Content* content = FindFile(fullPath);
    if (content == nullptr) {
        const std::uint32_t missing = MissingError(fullPath);
        return missing == kErrorPathNotFound || use == FileUse::Read ? missing : 0;
    }
    if (lockedByOther_.contains(fullPath) || content->writers > 0) return kErrorSharingViolation;
    if (use == FileUse::NewOnly) return kErrorFileExists;
    if (!Writes(use)) return 0;
    if (content->readOnly) return kErrorAccessDenied;
    return content->readers > 0 ? kErrorSharingViolation : 0;
}

FileHandle FakeFiles::Open(const std::wstring& path, FileUse use) {
    if (failures_.Strikes(Operation::FilesOpen)) {
        lastError_ = kErrorAccessDenied;
        return FileHandle::None;
    }
    const std::wstring fullPath = FullPath(path);
    if (const std::uint32_t error = OpenError(path, fullPath, use)) {
        lastError_ = error;
        return FileHandle::None;
    }
    std::shared_ptr<Content> content = ContentAt(fullPath);
    if (content == nullptr || use == FileUse::WriteNew) {
        if (content == nullptr) content = std::make_shared<Content>();
        content->ToChange().clear();
        content->changed = clock_.Now();
        entries_.try_emplace(fullPath, Entry{NameOf(path), content});
    }
    ++(Writes(use) ? content->writers : content->readers);
    const auto position = use == FileUse::Append ? static_cast<std::int64_t>(content->bytes.size()) : 0;
    const auto file = static_cast<FileHandle>(ledger_.Take(ResourceKind::File));
    open_[file] = FileOwner{content, use, fullPath, position};
    return file;
}

void FakeFiles::Close(FileHandle file) {
    if (!ledger_.Free(ResourceKind::File, static_cast<Ledger::Number>(file))) return;
    FileOwner& closing = open_.at(file);
    --(Writes(closing.use) ? closing.content->writers : closing.content->readers);
    if (closing.use == FileUse::Lock) entries_.erase(closing.path);
    open_.erase(file);
}

FakeFiles::FileOwner* FakeFiles::FindOpen(FileHandle file, const char* operation) {
    const auto found = open_.find(file);
    if (found == open_.end()) {
        ledger_.Complain(std::string("a file that is not open was ") + operation);
        lastError_ = kErrorInvalidHandle;
        return nullptr;
    }
    if (found->second.content->gone) {
        lastError_ = kErrorNotConnected;
        return nullptr;
    }
    return &found->second;
}

std::optional<std::uint32_t> FakeFiles::Read(FileHandle file, void* buffer, std::uint32_t size) {
    const bool fails = failures_.Strikes(Operation::FilesRead);
    FileOwner* open = FindOpen(file, "read");
    if (open == nullptr) return std::nullopt;
    if (Writes(open->use)) {
        lastError_ = kErrorAccessDenied;
        return std::nullopt;
    }
    if (fails && failures_.readFailure == ReadFailure::Error) {
        lastError_ = kErrorReadFault;
        return std::nullopt;
    }
    const auto& bytes = open->content->bytes;
    const std::int64_t left =
        std::max<std::int64_t>(0, static_cast<std::int64_t>(bytes.size()) - open->position);
    auto count = static_cast<std::uint32_t>(std::min<std::int64_t>(size, left));
    if (fails) count /= 2;
    if (count > 0) std::memcpy(buffer, bytes.data() + open->position, count);
    open->position += count;
    return count;
}

std::int64_t FakeFiles::Room() const {
    if (!capacity) return std::numeric_limits<std::int64_t>::max();
    std::int64_t used = 0;
    for (const auto& [path, entry] : entries_)
        if (entry.content) used += static_cast<std::int64_t>(entry.content->bytes.size());
    return std::max<std::int64_t>(0, *capacity - used);
}

std::optional<std::uint32_t> FakeFiles::Write(FileHandle file, const void* bytes, std::uint32_t size) {
    const bool fails = failures_.Strikes(Operation::FilesWrite);
    FileOwner* open = FindOpen(file, "written");
    if (open == nullptr) return std::nullopt;
    if (!Writes(open->use)) {
        lastError_ = kErrorAccessDenied;
        return std::nullopt;
    }
    if (fails && (failures_.writeFailure == WriteFailure::Nothing || failures_.IsDead())) {
        lastError_ = kErrorWriteFault;
        return std::nullopt;
    }
    auto& content = open->content->ToChange();
    const auto length = static_cast<std::int64_t>(content.size());
    const std::int64_t room = Room();
    // The bytes that can go out: what lies inside the file, and what the disk still takes behind it.
    const std::int64_t most =
        room > std::numeric_limits<std::int64_t>::max() - length ? size : length + room - open->position;
    const auto fitting = static_cast<std::uint32_t>(std::clamp<std::int64_t>(most, 0, size));
    const std::uint32_t count = fails ? std::min(fitting, size / 2) : fitting;
    if (count > 0) {
        const std::int64_t end = open->position + count;
        if (end > length) content.resize(static_cast<std::size_t>(end));
        std::memcpy(content.data() + open->position, bytes, count);
        open->position = end;
        open->content->changed = clock_.Now();
    }
    const bool shortOnPurpose = fails && failures_.writeFailure == WriteFailure::Short;
    if (count < size && !shortOnPurpose) {
        lastError_ = kErrorDiskFull;
        return std::nullopt;
    }
    return count;
}

std::optional<std::int64_t> FakeFiles::Tell(FileHandle file) {
    const bool fails = failures_.Strikes(Operation::FilesTell);
    const FileOwner* open = FindOpen(file, "asked for its position");
    if (open == nullptr || fails) {
        if (fails) lastError_ = kErrorInvalidHandle;
        return std::nullopt;
    }
    return open->position;
}

bool FakeFiles::Seek(FileHandle file, std::int64_t position) {
    const bool fails = failures_.Strikes(Operation::FilesSeek);
    FileOwner* open = FindOpen(file, "positioned");
    if (open == nullptr) return false;
    if (fails) return Fail(kErrorInvalidParameter);
    if (position < 0) return Fail(kErrorNegativeSeek);
    open->position = position;
    return true;
}

std::optional<std::int64_t> FakeFiles::Size(FileHandle file) {
    const bool fails = failures_.Strikes(Operation::FilesSize);
    const FileOwner* open = FindOpen(file, "asked for its size");
    if (open == nullptr || fails) {
        if (fails) lastError_ = kErrorInvalidHandle;
        return std::nullopt;
    }
    return static_cast<std::int64_t>(open->content->bytes.size());
}

bool FakeFiles::Reserve(FileHandle file, std::int64_t size) {
    const bool fails = failures_.Strikes(Operation::FilesReserve);
    FileOwner* open = FindOpen(file, "made longer");
    if (open == nullptr) return false;
    if (!Writes(open->use)) return Fail(kErrorAccessDenied);
    if (fails) return Fail(kErrorDiskFull);
    auto& bytes = open->content->ToChange();
    if (size <= static_cast<std::int64_t>(bytes.size())) return true;
    if (size - static_cast<std::int64_t>(bytes.size()) > Room()) return Fail(kErrorDiskFull);
    bytes.resize(static_cast<std::size_t>(size));
    return true;
}

bool FakeFiles::Flush(FileHandle file) {
    const bool fails = failures_.Strikes(Operation::FilesFlush);
    FileOwner* open = FindOpen(file, "flushed");
    if (open == nullptr) return false;
    if (!Writes(open->use)) return Fail(kErrorAccessDenied);
    if (fails) return Fail(kErrorWriteFault);
    open->content->flushed.reset();
    return true;
}

bool FakeFiles::Exists(const std::wstring& path) {
    if (failures_.Strikes(Operation::FilesExists)) return Fail(kErrorAccessDenied);
    const std::wstring fullPath = FullPath(path);
    if (path.empty() || IsDenied(fullPath)) return Fail(kErrorFileNotFound);
    if (!IsNamePattern(NameOf(path))) {
        const bool there =
            IsDirectoryAt(fullPath) || (FindFile(fullPath) != nullptr && !EndsInSeparator(path));
        return there || Fail(MissingError(fullPath));
    }
    for (const bool directories : {false, true})
        for (const std::wstring& name : NamesIn(ParentOf(fullPath), directories))
            if (MatchesNamePattern(name, NameOf(path))) return true;
    return Fail(kErrorFileNotFound);
}

bool FakeFiles::IsDirectory(const std::wstring& path) {
    if (failures_.Strikes(Operation::FilesIsDirectory)) return Fail(kErrorAccessDenied);
    return !path.empty() && IsDirectoryAt(FullPath(path));
}

std::optional<FileTime> FakeFiles::ChangeTime(const std::wstring& path) {
    const bool fails = failures_.Strikes(Operation::FilesChangeTime);
    const Content* content = FindFile(path);
    if (content == nullptr || fails || IsDenied(FullPath(path))) {
        lastError_ = content == nullptr ? MissingError(FullPath(path)) : kErrorAccessDenied;
        return std::nullopt;
    }
    return content->changed;
}

std::vector<std::wstring> FakeFiles::NamesIn(const std::wstring& directory, bool directories) const {
    std::vector<std::wstring> names;
    for (const auto& [path, entry] : entries_)
        if (ParentOf(path) == directory && (entry.content == nullptr) == directories)
            names.push_back(entry.name);
    SortNames(names);
    return names;
}

std::vector<std::wstring> FakeFiles::List(const std::wstring& pattern) {
    const std::wstring directory = ParentOf(FullPath(pattern));
    if (failures_.Strikes(Operation::FilesList) || IsDenied(directory)) {
        lastError_ = kErrorAccessDenied;
        return {};
    }
    std::vector<std::wstring> names = NamesIn(directory, false);
    std::erase_if(names,
                  [&](const std::wstring& name) { return !MatchesNamePattern(name, NameOf(pattern)); });
    if (names.empty()) lastError_ = MissingError(FullPath(pattern));
    return names;
}

bool FakeFiles::Remove(const std::wstring& path) {
    if (failures_.Strikes(Operation::FilesRemove)) return Fail(kErrorAccessDenied);
    const std::wstring fullPath = FullPath(path);
    if (IsDenied(fullPath) || IsDirectoryAt(fullPath)) return Fail(kErrorAccessDenied);
    const Content* content = FindFile(fullPath);
    if (content == nullptr) return Fail(MissingError(fullPath));
    if (content->readOnly) return Fail(kErrorAccessDenied);
    if (IsInUse(fullPath, *content)) return Fail(kErrorSharingViolation);
    entries_.erase(fullPath);
    return true;
}

bool FakeFiles::Copy(const std::wstring& from, const std::wstring& to, bool replace) {
    if (failures_.Strikes(Operation::FilesCopy)) return Fail(kErrorDiskFull);
    const std::wstring source = FullPath(from), target = FullPath(to);
    if (IsDenied(source) || IsDenied(target) || IsDirectoryAt(source) || IsDirectoryAt(target))
        return Fail(kErrorAccessDenied);
    const Content* content = FindFile(source);
    if (content == nullptr) return Fail(MissingError(source));
    if (lockedByOther_.contains(source)) return Fail(kErrorSharingViolation);
    if (const Content* old = FindFile(target)) {
        if (!replace) return Fail(kErrorFileExists);
        if (old->readOnly) return Fail(kErrorAccessDenied);
        if (IsInUse(target, *old)) return Fail(kErrorSharingViolation);
    } else if (!IsDirectoryAt(ParentOf(target))) {
        return Fail(kErrorPathNotFound);
    }
    // The copy is complete before it takes the target's place.
    if (static_cast<std::int64_t>(content->bytes.size()) > Room()) return Fail(kErrorDiskFull);
    auto copy = std::make_shared<Content>();
    copy->bytes = content->bytes;
    copy->changed = content->changed;
    copy->readOnly = content->readOnly;
    entries_[target] = Entry{NameOf(to), copy};
    return true;
}

bool FakeFiles::MakeDirectory(const std::wstring& path) {
    if (failures_.Strikes(Operation::FilesMakeDirectory)) return Fail(kErrorAccessDenied);
    const std::wstring fullPath = FullPath(path);
    if (IsDirectoryAt(fullPath) || FindFile(fullPath) != nullptr) return Fail(kErrorAlreadyExists);
    if (path.empty() || !IsDirectoryAt(ParentOf(fullPath))) return Fail(kErrorPathNotFound);
    if (IsDenied(fullPath)) return Fail(kErrorAccessDenied);
    entries_[fullPath] = Entry{NameOf(path), nullptr};
    return true;
}

std::wstring FakeFiles::Identity(const std::wstring& path) {
    const std::wstring fullPath = FullPath(path);
    if (failures_.Strikes(Operation::FilesIdentity) || IsDenied(fullPath)) return {};
    return IsDirectoryAt(fullPath) || FindFile(fullPath) != nullptr ? fullPath : std::wstring();
}

void FakeFiles::SetBytes(const std::wstring& path, std::string_view bytes) {
    const std::wstring fullPath = FullPath(path);
    AddDirectory(path.substr(0, path.find_last_of(L"\\/") + 1));
    auto [entry, isNew] = entries_.try_emplace(fullPath, Entry{NameOf(path), std::make_shared<Content>()});
    entry->second.content->bytes.assign(bytes.begin(), bytes.end());
    entry->second.content->flushed.reset();
    entry->second.content->changed = clock_.Now();
}

std::optional<std::string> FakeFiles::Bytes(const std::wstring& path) const {
    const Content* content = FindFile(path);
    if (content == nullptr) return std::nullopt;
    return std::string(content->bytes.begin(), content->bytes.end());
}

void FakeFiles::AddDirectory(const std::wstring& path) {
    const std::wstring fullPath = FullPath(path);
    if (IsDirectoryAt(fullPath)) return;
    const std::wstring parent = ParentOf(fullPath);
    if (parent.empty()) {
        drives_.insert(fullPath);
        return;
    }
    std::wstring trimmed = path;
    while (EndsInSeparator(trimmed))
        trimmed.pop_back();
    AddDirectory(trimmed.find_last_of(L"\\/") == std::wstring::npos
                     ? parent
                     : trimmed.substr(0, trimmed.find_last_of(L"\\/") + 1));
    entries_[fullPath] = Entry{NameOf(path), nullptr};
}

void FakeFiles::UnplugDrive(const std::wstring& drive) {
    const std::wstring upper = UpperCase(drive);
    drives_.erase(upper);
    std::erase_if(entries_, [&](const auto& item) {
        if (!item.first.starts_with(upper)) return false;
        if (item.second.content) item.second.content->gone = true;
        return true;
    });
}

void FakeFiles::Truncate(const std::wstring& path, std::size_t size) {
    ContentAt(path)->bytes.resize(size);
}

void FakeFiles::LoseCurrent(const std::wstring& path, int kept, int parts) {
    const std::shared_ptr<Content> content = ContentAt(path);
    if (content == nullptr || !content->flushed) return;
    const std::vector<std::uint8_t>& old = *content->flushed;
    std::vector<std::uint8_t>& bytes = content->bytes;
    const std::size_t end = bytes.size() * static_cast<std::size_t>(kept) / static_cast<std::size_t>(parts);
    if (kept == 0) bytes.resize(old.size());
    for (std::size_t i = end; i < bytes.size(); ++i)
        bytes[i] = i < old.size() ? old[i] : 0;
    content->flushed.reset();
}

void FakeFiles::SetReadOnly(const std::wstring& path, bool readOnly) {
    ContentAt(path)->readOnly = readOnly;
}

void FakeFiles::SetChangeTime(const std::wstring& path, FileTime time) {
    ContentAt(path)->changed = time;
}

void FakeFiles::Deny(const std::wstring& path) {
    denied_.insert(FullPath(path));
}

void FakeFiles::Allow(const std::wstring& path) {
    denied_.erase(FullPath(path));
}

bool FakeFiles::HasDirectory(const std::wstring& path) const {
    return IsDirectoryAt(FullPath(path));
}

std::vector<std::wstring> FakeFiles::AllFiles() const {
    std::vector<std::wstring> files;
    for (const auto& [path, entry] : entries_)
        if (entry.content) files.push_back(path);
    return files;
}
