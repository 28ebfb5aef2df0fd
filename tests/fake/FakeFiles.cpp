#include "fake/FakeFiles.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "platform/FileIdentity.h"
#include "platform/NamePattern.h"
#include "platform/Text.h"

namespace {

constexpr std::uint32_t kErrorAccessDenied = 5, kErrorInvalidHandle = 6, kErrorReadFault = 30,
                        kErrorWriteFault = 29, kErrorFileExists = 80, kErrorInvalidParameter = 87,
                        kErrorDiskFull = 112, kErrorNegativeSeek = 131, kErrorAlreadyExists = 183;

// The path without separators at its end.
std::wstring Trimmed(std::wstring path) {
    while (path.ends_with(L'\\') || path.ends_with(L'/'))
        path.pop_back();
    return path;
}

std::wstring NameOf(const std::wstring& path) {
    const std::wstring trimmed = Trimmed(path);
    return trimmed.substr(trimmed.find_last_of(L"\\/") + 1);
}

bool Writes(FileUse use) {
    return use != FileUse::Read && use != FileUse::Lock;
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

std::shared_ptr<FakeFiles::Content> FakeFiles::ContentAt(const std::wstring& path) const {
    const auto found = entries_.find(FullPath(path));
    return found == entries_.end() ? nullptr : found->second.content;
}

bool FakeFiles::IsDirectoryAt(const std::wstring& fullPath) const {
    if (drives_.contains(fullPath)) return true;
    const auto found = entries_.find(fullPath);
    return found != entries_.end() && found->second.content == nullptr;
}

std::uint32_t FakeFiles::MissingError(const std::wstring& fullPath) const {
    return IsDirectoryAt(ParentOf(fullPath)) ? kErrorFileNotFound : kErrorPathNotFound;
}

std::uint32_t FakeFiles::ChangeError(const std::wstring& fullPath, const Content& content) const {
    if (content.readOnly) return kErrorAccessDenied;
    const bool inUse =
        content.readers > 0 || content.writers > 0 || content.locks > 0 || lockedByOther_.contains(fullPath);
    return inUse ? kErrorSharingViolation : 0;
}

std::uint32_t FakeFiles::OpenError(const std::wstring& fullPath, FileUse use) const {
    if (IsDirectoryAt(fullPath)) return kErrorAccessDenied;
    const auto content = ContentAt(fullPath);
    if (content == nullptr) {
        const std::uint32_t missing = MissingError(fullPath);
        return missing == kErrorPathNotFound || use == FileUse::Read ? missing : 0;
    }
    if (lockedByOther_.contains(fullPath) || content->writers > 0) return kErrorSharingViolation;
    if (use == FileUse::Lock) return content->locks > 0 ? kErrorSharingViolation : 0;
    if (use == FileUse::NewOnly) return kErrorFileExists;
    return Writes(use) ? ChangeError(fullPath, *content) : 0;
}

FileHandle FakeFiles::Open(const std::wstring& path, FileUse use) {
    const bool fails = failures_.Strikes(Operation::FilesOpen);
    const std::wstring fullPath = FullPath(path);
    const std::uint32_t error = fails          ? kErrorAccessDenied
                                : path.empty() ? kErrorPathNotFound
                                               : OpenError(fullPath, use);
    if (error != 0) {
        lastError_ = error;
        return FileHandle::None;
    }
    std::shared_ptr<Content> content = ContentAt(fullPath);
    if (content == nullptr || use == FileUse::WriteNew) {
        if (use != FileUse::Lock) Changing(fullPath);
        if (content == nullptr) content = std::make_shared<Content>();
        content->bytes.clear();
        content->changed = clock_.Now();
        entries_.try_emplace(fullPath, Entry{NameOf(path), content});
    }
    ++content->Users(use);
    const auto position = use == FileUse::Append ? static_cast<std::int64_t>(content->bytes.size()) : 0;
    const auto file = static_cast<FileHandle>(ledger_.Take(ResourceKind::File));
    open_[file] = FileOwner{content, use, fullPath, position};
    return file;
}

void FakeFiles::Close(FileHandle file) {
    if (!ledger_.Free(ResourceKind::File, static_cast<Ledger::Number>(file))) return;
    FileOwner& closing = open_.at(file);
    --closing.content->Users(closing.use);
    if (closing.use == FileUse::Lock && closing.content->readers == 0) entries_.erase(closing.path);
    open_.erase(file);
}

FakeFiles::FileOwner* FakeFiles::FindOpen(FileHandle file) {
    const auto found = open_.find(file);
    if (found != open_.end()) return &found->second;
    ledger_.Complain("a file that is not open was used");
    lastError_ = kErrorInvalidHandle;
    return nullptr;
}

FakeFiles::FileOwner* FakeFiles::FindOpenToWrite(FileHandle file) {
    FileOwner* const open = FindOpen(file);
    if (open == nullptr || Writes(open->use)) return open;
    lastError_ = kErrorAccessDenied;
    return nullptr;
}

std::optional<std::uint32_t> FakeFiles::Read(FileHandle file, void* buffer, std::uint32_t size) {
    const bool fails = Strikes(Operation::FilesRead, kErrorReadFault);
    FileOwner* const open = FindOpen(file);
    if (open == nullptr || (fails && failures_.readFailure == ReadFailure::Error)) return std::nullopt;
    if (Writes(open->use)) {
        lastError_ = kErrorAccessDenied;
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
    const bool fails = Strikes(Operation::FilesWrite, kErrorWriteFault);
    FileOwner* const open = FindOpenToWrite(file);
    if (open == nullptr || (fails && (failures_.writeFailure == WriteFailure::Nothing || failures_.IsDead())))
        return std::nullopt;
    Changing(open->path);
    auto& content = open->content->bytes;
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
    if (Strikes(Operation::Other, kErrorInvalidHandle)) return std::nullopt;
    const FileOwner* const open = FindOpen(file);
    return open == nullptr ? std::nullopt : std::optional(open->position);
}

bool FakeFiles::Seek(FileHandle file, std::int64_t position) {
    if (Strikes(Operation::Other, kErrorInvalidParameter)) return false;
    FileOwner* const open = FindOpen(file);
    if (open == nullptr) return false;
    if (position < 0) return Fail(kErrorNegativeSeek);
    open->position = position;
    return true;
}

std::optional<std::int64_t> FakeFiles::Size(FileHandle file) {
    if (Strikes(Operation::Other, kErrorInvalidHandle)) return std::nullopt;
    const FileOwner* const open = FindOpen(file);
    if (open == nullptr) return std::nullopt;
    return static_cast<std::int64_t>(open->content->bytes.size());
}

bool FakeFiles::Reserve(FileHandle file, std::int64_t size) {
    if (Strikes(Operation::Other, kErrorDiskFull)) return false;
    FileOwner* const open = FindOpenToWrite(file);
    if (open == nullptr) return false;
    Changing(open->path);
    auto& bytes = open->content->bytes;
    const std::int64_t more = size - static_cast<std::int64_t>(bytes.size());
    if (more <= 0) return true;
    if (more > Room()) return Fail(kErrorDiskFull);
    bytes.resize(static_cast<std::size_t>(size));
    return true;
}

bool FakeFiles::Flush(FileHandle file) {
    if (Strikes(Operation::FilesFlush, kErrorWriteFault)) return false;
    FileOwner* const open = FindOpenToWrite(file);
    if (open != nullptr) Flushed(open->path);
    return open != nullptr;
}

bool FakeFiles::FlushClosed(const std::wstring& path, WhenHeld /*held*/) {
    if (Strikes(Operation::FilesFlush, kErrorWriteFault)) return false;
    const std::wstring fullPath = FullPath(path);
    const auto content = ContentAt(fullPath);
    if (content == nullptr) return Fail(MissingError(fullPath));
    if (const std::uint32_t error = ChangeError(fullPath, *content)) return Fail(error);
    Flushed(fullPath);
    return true;
}

bool FakeFiles::Exists(const std::wstring& path) {
    if (Strikes(Operation::Other, kErrorAccessDenied)) return false;
    const std::wstring fullPath = FullPath(path), name = NameOf(path);
    const auto isMeant = [&](const auto& each) {
        return ParentOf(each.first) == ParentOf(fullPath) && MatchesNamePattern(each.second.name, name);
    };
    const bool there = !path.empty() && (IsDirectoryAt(fullPath) || Has(path) ||
                                         (IsNamePattern(name) && std::ranges::any_of(entries_, isMeant)));
    return there || Fail(MissingError(fullPath));
}

bool FakeFiles::IsDirectory(const std::wstring& path) {
    if (Strikes(Operation::Other, kErrorAccessDenied)) return false;
    return !path.empty() && IsDirectoryAt(FullPath(path));
}

std::optional<FileTime> FakeFiles::ChangeTime(const std::wstring& path) {
    if (Strikes(Operation::Other, kErrorAccessDenied)) return std::nullopt;
    const auto content = ContentAt(path);
    if (content == nullptr) lastError_ = MissingError(FullPath(path));
    return content == nullptr ? std::nullopt : std::optional(content->changed);
}

std::vector<std::wstring> FakeFiles::List(const std::wstring& pattern) {
    if (Strikes(Operation::Other, kErrorAccessDenied)) return {};
    const std::wstring directory = ParentOf(FullPath(pattern));
    std::vector<std::wstring> names;
    for (const auto& [path, entry] : entries_)
        if (ParentOf(path) == directory && entry.content && MatchesNamePattern(entry.name, NameOf(pattern)))
            names.push_back(entry.name);
    std::sort(names.begin(), names.end(),
              [](const std::wstring& a, const std::wstring& b) { return CompareNoCase(a, b) < 0; });
    if (names.empty()) lastError_ = MissingError(FullPath(pattern));
    return names;
}

bool FakeFiles::Remove(const std::wstring& path) {
    if (Strikes(Operation::Other, kErrorAccessDenied)) return false;
    const std::wstring fullPath = FullPath(path);
    if (IsDirectoryAt(fullPath)) return Fail(kErrorAccessDenied);
    const auto content = ContentAt(fullPath);
    if (content == nullptr) return Fail(MissingError(fullPath));
    if (const std::uint32_t error = ChangeError(fullPath, *content)) return Fail(error);
    Changing(fullPath);
    entries_.erase(fullPath);
    return true;
}

bool FakeFiles::Copy(const std::wstring& from, const std::wstring& to, bool replace) {
    if (Strikes(Operation::FilesCopy, kErrorDiskFull)) return false;
    const std::wstring source = FullPath(from), target = FullPath(to);
    if (IsDirectoryAt(source) || IsDirectoryAt(target)) return Fail(kErrorAccessDenied);
    const auto content = ContentAt(source);
    if (content == nullptr) return Fail(MissingError(source));
    if (lockedByOther_.contains(source)) return Fail(kErrorSharingViolation);
    if (const auto old = ContentAt(target)) {
        if (!replace) return Fail(kErrorFileExists);
        if (const std::uint32_t error = ChangeError(target, *old)) return Fail(error);
    } else if (!IsDirectoryAt(ParentOf(target))) {
        return Fail(kErrorPathNotFound);
    }
    // The copy is complete before it takes the target's place.
    if (static_cast<std::int64_t>(content->bytes.size()) > Room()) return Fail(kErrorDiskFull);
    auto copy = std::make_shared<Content>();
    copy->bytes = content->bytes;
    copy->changed = content->changed;
    Changing(target);
    entries_[target] = Entry{NameOf(to), copy};
    return true;
}

bool FakeFiles::MakeDirectory(const std::wstring& path) {
    if (Strikes(Operation::FilesMakeDirectory, kErrorAccessDenied)) return false;
    const std::wstring fullPath = FullPath(path);
    if (IsDirectoryAt(fullPath) || Has(fullPath)) return Fail(kErrorAlreadyExists);
    if (path.empty() || !IsDirectoryAt(ParentOf(fullPath))) return Fail(kErrorPathNotFound);
    entries_[fullPath] = Entry{NameOf(path), nullptr};
    return true;
}

std::wstring FakeFiles::Identity(const std::wstring& path) {
    if (Strikes(Operation::Other, kErrorAccessDenied)) return {};
    const std::wstring fullPath = FullPath(path);
    if (!IsDirectoryAt(fullPath) && !Has(fullPath)) return {};
    return numberOfAll ? FileIdentity(1, *numberOfAll) : fullPath;
}

void FakeFiles::SetBytes(const std::wstring& path, std::string_view bytes) {
    const std::wstring fullPath = FullPath(path);
    AddDirectory(path.substr(0, path.find_last_of(L"\\/") + 1));
    auto [entry, isNew] = entries_.try_emplace(fullPath, Entry{NameOf(path), std::make_shared<Content>()});
    entry->second.content->bytes.assign(bytes.begin(), bytes.end());
    entry->second.content->changed = clock_.Now();
    Flushed(fullPath);
}

std::optional<std::string> FakeFiles::Bytes(const std::wstring& path) const {
    const auto content = ContentAt(path);
    if (content == nullptr) return std::nullopt;
    return std::string(content->bytes.begin(), content->bytes.end());
}

void FakeFiles::AddDirectory(const std::wstring& path) {
    const std::wstring trimmed = Trimmed(path), fullPath = FullPath(path);
    if (IsDirectoryAt(fullPath)) return;
    if (ParentOf(fullPath).empty()) {
        drives_.insert(fullPath);
        return;
    }
    AddDirectory(trimmed.substr(0, trimmed.find_last_of(L"\\/") + 1));
    entries_[fullPath] = Entry{NameOf(path), nullptr};
}

void FakeFiles::Changing(const std::wstring& fullPath) {
    ++changes_;
    // A large file is written in many pieces, and copied here but once.
    if (unflushed_.contains(fullPath)) return;
    const auto entry = entries_.find(fullPath);
    if (entry == entries_.end())
        unflushed_.emplace(fullPath, Unflushed{});
    else
        unflushed_.emplace(fullPath, Unflushed{entry->second.name, entry->second.content->bytes});
}

void FakeFiles::Flushed(const std::wstring& fullPath) {
    ++changes_;
    unflushed_.erase(fullPath);
}

FakeFiles::Disk FakeFiles::TakeDisk() const {
    Disk disk{entries_, unflushed_};
    for (auto& [path, entry] : disk.entries)
        if (entry.content) entry.content = std::make_shared<Content>(*entry.content);
    return disk;
}

void FakeFiles::PutDisk(const Disk& disk) {
    entries_ = disk.entries;
    unflushed_ = disk.unflushed;
    for (auto& [path, entry] : entries_)
        if (entry.content) entry.content = std::make_shared<Content>(*entry.content);
}

std::vector<std::optional<FakeFiles::FileBytes>> FakeFiles::Remains(const std::wstring& fullPath,
                                                                    const Unflushed& file) const {
    std::vector<std::optional<FileBytes>> remains = {file.onDisk};
    const auto content = ContentAt(fullPath);
    if (content == nullptr) {
        remains.push_back(std::nullopt);
        return remains;
    }
    const FileBytes& whole = content->bytes;
    FileBytes old = file.onDisk.value_or(FileBytes());
    old.resize(whole.size());
    const auto half = static_cast<std::ptrdiff_t>(whole.size() / 2);
    FileBytes first = old, second = old;
    std::copy(whole.begin(), whole.begin() + half, first.begin());
    std::copy(whole.begin() + half, whole.end(), second.begin() + half);
    for (const FileBytes& one : {whole, old, first, second})
        if (std::find(remains.begin(), remains.end(), one) == remains.end()) remains.emplace_back(one);
    return remains;
}

int FakeFiles::CurrentLosses() const {
    int losses = 1;
    for (const auto& [path, file] : unflushed_)
        losses *= static_cast<int>(Remains(path, file).size());
    return losses;
}

void FakeFiles::LoseCurrent(int which) {
    for (const auto& [path, file] : unflushed_) {
        const auto remains = Remains(path, file);
        const auto count = static_cast<int>(remains.size());
        const auto& left = remains[static_cast<std::size_t>(which % count)];
        which /= count;
        const auto found = entries_.find(path);
        const std::wstring name = found != entries_.end() ? found->second.name : file.name;
        if (found != entries_.end()) entries_.erase(found);
        if (!left) continue;
        auto content = std::make_shared<Content>();
        content->bytes = *left;
        entries_[path] = Entry{name, content};
    }
    unflushed_.clear();
}

std::vector<std::wstring> FakeFiles::AllFiles() const {
    std::vector<std::wstring> files;
    for (const auto& [path, entry] : entries_)
        if (entry.content) files.push_back(path);
    return files;
}
