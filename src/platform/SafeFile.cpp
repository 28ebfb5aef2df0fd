#include "platform/SafeFile.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <span>

#include "platform/CheckSum.h"
#include "platform/FileBytes.h"
#include "platform/FileChange.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kErrorFileExists = 80;

// The copies of one file in its directory.
constexpr int kMostKept = 99;

std::wstring KeptPath(const std::wstring& stem, int number) {
    return stem + (number > 1 ? NumberText(number) : std::wstring()) + L".bak";
}

bool HoldTheSame(const std::wstring& a, const std::wstring& b) {
    try {
        return ReadWholeFile(a) == ReadWholeFile(b);
    } catch (const RuntimeError&) {
        return false;
    }
}

[[noreturn]] void ThrowFileError(const std::wstring& path) {
    throw FileErrorOf(ThePlatform().files.LastError(), path);
}

// None when there is no such file.
std::optional<Bytes> BytesIfThere(const std::wstring& path) {
    try {
        return ReadWholeFile(path);
    } catch (const RuntimeError& error) {
        if (error.Number() == static_cast<int>(ErrorNumber::FileNotFound)) return std::nullopt;
        throw;
    }
}

// `named` is the file that an error speaks of.
void WriteAll(FileHandle file, const Bytes& bytes, const std::wstring& named) {
    const auto written =
        ThePlatform().files.Write(file, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    if (!written) ThrowFileError(named);
    if (*written != bytes.size()) throw RuntimeError(ErrorNumber::DiskFull);
}

void FlushFile(FileHandle file, const std::wstring& named) {
    if (!ThePlatform().files.Flush(file)) ThrowFileError(named);
}

void WriteJournal(const std::wstring& path, const FileChange& change) {
    const FileOwner journal(ThePlatform().files.Open(JournalPathOf(path), FileUse::WriteNew));
    if (!journal.IsSet()) ThrowFileError(path);
    WriteAll(journal.Get(), EncodeJournal(change), path);
    FlushFile(journal.Get(), path);
}

// `touched` tells whether the bytes of the ranges may be others afterwards, be it after a failure or not.
void WriteRanges(const FileOwner& file, const std::wstring& path, const FileChange& change, bool& touched) {
    FilePort& files = ThePlatform().files;
    if (!files.Reserve(file.Get(), static_cast<std::int64_t>(change.newSize))) ThrowFileError(path);
    for (const ChangedRange& range : change.ranges) {
        if (range.bytes.empty()) continue;
        if (!files.Seek(file.Get(), static_cast<std::int64_t>(range.position))) ThrowFileError(path);
        touched = true;
        WriteAll(file.Get(), range.bytes, path);
    }
}

FileOwner OpenInPlace(const std::wstring& path) {
    return FileOwner(ThePlatform().files.Open(path, FileUse::WriteInPlace));
}

// With nothing left to write, the file is only flushed.
void WriteForGood(const std::wstring& path, const FileChange& change, bool written) {
    const FileOwner file = OpenInPlace(path);
    if (!file.IsSet()) ThrowFileError(path);
    bool touched = false;
    if (!written) WriteRanges(file, path, change, touched);
    FlushFile(file.Get(), path);
}

// Takes back a failed write: the old bytes return where new ones may stand. Where that fails too, or the
// journal would lead to the new ones later, a journal takes its place that leads to the old ones.
void TakeBack(const std::wstring& path, const FileChange& back, bool touched) {
    try {
        if (touched) WriteForGood(path, back, false);
        FilePort& files = ThePlatform().files;
        if (files.Remove(JournalPathOf(path)) || IsMissing(files.LastError())) return;
    } catch (const RuntimeError&) {
        // The disk is in trouble; of the two failures the first one is told.
    }
    try {
        WriteJournal(path, back);
    } catch (const RuntimeError&) {
        // The disk takes no write any more.
    }
}

// What was to be made goes again; a half file that stays keeps the journal that completes it.
void TakeBackNew(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    if (files.Remove(path) || IsMissing(files.LastError())) files.Remove(JournalPathOf(path));
}

// A file from its start on, piece by piece, so that one of some megabytes takes no memory.
class PieceReader {
 public:
    explicit PieceReader(const std::wstring& path)
        : path_(path), file_(ThePlatform().files.Open(path, FileUse::Read)) {
        FilePort& files = ThePlatform().files;
        if (!IsThere() && files.LastError() != kErrorFileNotFound) ThrowFileError(path);
        if (!IsThere()) return;
        const std::optional<std::int64_t> size = files.Size(file_.Get());
        if (!size) ThrowFileError(path);
        left_ = static_cast<std::uint64_t>(*size);
    }
    bool IsThere() const { return file_.IsSet(); }
    // No more bytes than this, nor than a piece has; none at the end. Good until the next call.
    std::span<const std::uint8_t> Next(std::size_t most) {
        const std::size_t size = std::min(most, kPiece);
        piece_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(size, left_)));
        if (piece_.empty()) return {};
        const auto read =
            ThePlatform().files.Read(file_.Get(), piece_.data(), static_cast<std::uint32_t>(piece_.size()));
        if (!read) ThrowFileError(path_);
        // Taken for the whole file, its beginning would be saved as if the rest had never been.
        if (*read != piece_.size()) throw RuntimeError(ErrorNumber::FileTooShort);
        left_ -= *read;
        return piece_;
    }

    // Hands all that is left to `use`, piece by piece.
    template <typename Use>
    void Rest(const Use& use) {
        for (auto piece = Next(kPiece); !piece.empty(); piece = Next(kPiece))
            use(piece.data(), piece.size());
    }

    static constexpr std::size_t kPiece = std::size_t{1} << 16;

 private:
    std::wstring path_;
    FileOwner file_;
    std::uint64_t left_ = 0;
    Bytes piece_;
};

// The mark of a missing file says that nothing is known.
FileMark MarkOfFile(const std::wstring& path) {
    PieceReader file(path);
    if (!file.IsThere()) return {};
    std::size_t size = 0;
    std::uint32_t sum = 0;
    file.Rest([&](const std::uint8_t* bytes, std::size_t count) {
        size += count;
        sum = CheckSum(bytes, count, sum);
    });
    return {size, sum};
}

// What the journal of a file says of it, when it belongs to it.
struct Journal {
    std::optional<FileChange> change;
    bool written = false;  // the file holds the change already
};

Journal JournalOf(const std::wstring& path, const Bytes& journal) {
    Journal found{.change = DecodeJournal(journal)};
    if (!found.change) return found;
    PieceReader file(path);
    FileAndChange both(*found.change);
    file.Rest([&](const std::uint8_t* bytes, std::size_t count) { both.Add(bytes, count); });
    found.written = file.IsThere() && both.Holds();
    if (!both.Fits()) found.change.reset();
    return found;
}

// The file on disk becomes what its journal says, and the journal goes.
void Finish(const std::wstring& path) {
    const auto bytes = BytesIfThere(JournalPathOf(path));
    if (!bytes) return;
    const Journal journal = JournalOf(path, *bytes);
    if (journal.change) WriteForGood(path, *journal.change, journal.written);
    // Should it stay: the next save takes its place, and until then it says what the file holds anyway.
    ThePlatform().files.Remove(JournalPathOf(path));
}

// One save of a file. The last save of the same file must be finished.
struct Save {
    bool isNew = false;
    FileChange change;
    FileMark before;
    FileMark after;
};

Save SaveOver(const std::wstring& path, const Bytes& image) {
    Save save;
    PieceReader file(path);
    FileComparison comparison;
    for (std::size_t at = 0; at < image.size();) {
        const std::size_t size = std::min(PieceReader::kPiece, image.size() - at);
        const auto old = file.Next(size);
        comparison.Add(image.data() + at, size, old.data(), old.size());
        at += size;
    }
    file.Rest([&](const std::uint8_t* bytes, std::size_t count) { comparison.AddTail(bytes, count); });
    save.isNew = !file.IsThere();
    save.change = comparison.Take();
    if (!save.isNew) save.before = FileMark(save.change.oldSize, comparison.OldSum());
    save.after = FileMark(save.change.newSize, comparison.NewSum());
    return save;
}

void Write(const std::wstring& path, const Save& save) {
    bool touched = false;
    try {
        WriteJournal(path, save.change);
        const FileOwner file = OpenInPlace(path);
        if (!file.IsSet()) ThrowFileError(path);
        WriteRanges(file, path, save.change, touched);
    } catch (const RuntimeError&) {
        if (save.isNew)
            TakeBackNew(path);
        else
            TakeBack(path, Reversed(save.change), touched);
        throw;
    }
}

}  // namespace

std::wstring JournalPathOf(const std::wstring& path) {
    constexpr std::size_t kExtension = 4;
    const bool isTreeFile = UpperCase(path).ends_with(L".NXP");
    return (isTreeFile ? path.substr(0, path.size() - kExtension) : path) + L".jnl";
}

bool MayBeThere(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    return files.Exists(path) || !IsMissing(files.LastError());
}

bool SafeFileExists(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    return files.Exists(path) || files.Exists(JournalPathOf(path));
}

JournalState StateOfJournal(const std::wstring& path) {
    const auto bytes = BytesIfThere(JournalPathOf(path));
    if (!bytes) return JournalState::None;
    const Journal journal = JournalOf(path, *bytes);
    if (!journal.change) return JournalState::Foreign;
    return journal.written ? JournalState::Written : JournalState::Pending;
}

std::vector<std::uint8_t> ReadSafeFile(const std::wstring& path) {
    const auto journal = BytesIfThere(JournalPathOf(path));
    const auto change = journal ? JournalOf(path, *journal).change : std::nullopt;
    auto bytes = BytesIfThere(path);
    if (!bytes && !change) throw FileErrorOf(kErrorFileNotFound, path);
    if (!bytes) bytes.emplace();
    if (change) Apply(*change, *bytes);
    return std::move(*bytes);
}

void WriteSafeFile(const std::wstring& path, const std::vector<std::uint8_t>& image) {
    FileMark any;
    WriteSafeFile(path, image, any);
}

bool WriteSafeFile(const std::wstring& path, const std::vector<std::uint8_t>& image, FileMark& mark) {
    if (image.size() > std::numeric_limits<std::uint32_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
    Finish(path);
    const Save save = SaveOver(path, image);
    if (mark.IsKnown() && save.before.IsKnown() && mark != save.before) return false;
    if (!save.change.ranges.empty()) {
        mark = FileMark();
        Write(path, save);
    }
    mark = save.after;
    return true;
}

bool FinishSave(const std::wstring& path) {
    try {
        Finish(path);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

KeptCopy KeepCopy(const std::wstring& path, const std::wstring& stem) {
    FilePort& files = ThePlatform().files;
    for (int number = 1;; ++number) {
        const std::wstring copy = KeptPath(stem, number);
        if (files.Copy(path, copy, false)) {
            // What is copied is about to be written over, and that may be on the disk first.
            files.FlushClosed(copy, WhenHeld::Wait);
            return {copy, true};
        }
        const std::uint32_t error = files.LastError();
        if (error == kErrorFileExists && HoldTheSame(path, copy)) return {copy, false};
        if (error != kErrorFileExists || number == kMostKept) throw FileErrorOf(error, copy);
    }
}

std::wstring FreeKeptPath(const std::wstring& stem) {
    for (int number = 1; number <= kMostKept; ++number)
        if (!MayBeThere(KeptPath(stem, number))) return KeptPath(stem, number);
    throw FileErrorOf(kErrorFileExists, KeptPath(stem, kMostKept));
}

std::vector<std::wstring> KeptCopies(const std::wstring& stem) {
    std::vector<std::wstring> copies;
    for (int number = 1; number <= kMostKept; ++number) {
        if (!MayBeThere(KeptPath(stem, number))) break;
        copies.push_back(KeptPath(stem, number));
    }
    return copies;
}

bool RemoveSafeFile(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    // A file that stays must be whole without its journal.
    FinishSave(path);
    const bool gone = files.Remove(path) || IsMissing(files.LastError());
    if (gone) files.Remove(JournalPathOf(path));
    return gone;
}

FileMark FileMark::Of(const std::wstring& path) {
    try {
        if (ThePlatform().files.Exists(JournalPathOf(path))) return OfBytes(ReadSafeFile(path));
        return MarkOfFile(path);
    } catch (const RuntimeError&) {
        return {};
    }
}

FileMark FileMark::OfBytes(const std::vector<std::uint8_t>& bytes) {
    return FileMark(bytes.size(), CheckSum(bytes.data(), bytes.size()));
}
