#include "platform/SafeFile.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "platform/ByteBuffer.h"
#include "platform/CheckSum.h"
#include "platform/FileBytes.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kSignature = 0x314A584E;  // "NXJ1"
constexpr std::size_t kHeadSize = 24;
constexpr std::size_t kCheckSumSize = 4;

// One range of a file that gets other bytes. Outside of it the file stays as it is.
struct Change {
    std::size_t oldSize = 0;
    std::size_t newSize = 0;
    std::size_t position = 0;
    Bytes bytes;
    std::uint32_t outside = 0;  // check sum of the old file without the range

    std::size_t End() const { return position + bytes.size(); }
};

std::uint32_t SumOutside(const Bytes& file, std::size_t size, std::size_t position, std::size_t end) {
    const std::uint32_t front = CheckSum(file.data(), position);
    return end < size ? CheckSum(file.data() + end, size - end, front) : front;
}

// From the first to the last byte that differs; none when the file begins with the image already.
std::optional<Change> ChangeTo(const Bytes& image, const Bytes& old) {
    const std::size_t common = std::min(image.size(), old.size());
    const auto imageEnd = image.begin() + static_cast<std::ptrdiff_t>(common);
    const auto first = std::mismatch(image.begin(), imageEnd, old.begin()).first;
    if (first == image.end()) return std::nullopt;
    auto last = image.end();
    if (image.size() <= old.size())
        while (*(last - 1) == old[static_cast<std::size_t>(last - image.begin()) - 1])
            --last;
    Change change;
    change.oldSize = old.size();
    change.newSize = std::max(image.size(), old.size());
    change.position = static_cast<std::size_t>(first - image.begin());
    change.bytes.assign(first, last);
    change.outside = SumOutside(old, old.size(), change.position, change.End());
    return change;
}

// Leads from whatever the change left back to the old bytes; a file that became longer stays so.
Change Reversed(const Change& change, const Bytes& old) {
    Change back = change;
    const std::size_t end = std::min(change.End(), old.size());
    back.bytes.assign(old.begin() + static_cast<std::ptrdiff_t>(change.position),
                      old.begin() + static_cast<std::ptrdiff_t>(end));
    return back;
}

// The file is the one that the change was made for, whatever stands in the range.
bool Fits(const Change& change, const Bytes& file) {
    return file.size() >= change.oldSize && file.size() <= change.newSize &&
           SumOutside(file, change.oldSize, change.position, change.End()) == change.outside;
}

void Apply(const Change& change, Bytes& file) {
    file.resize(std::max(file.size(), change.newSize));
    std::copy(change.bytes.begin(), change.bytes.end(),
              file.begin() + static_cast<std::ptrdiff_t>(change.position));
}

Bytes Encoded(const Change& change) {
    ByteWriter writer;
    writer.UInt32(kSignature);
    for (const std::size_t number : {change.oldSize, change.newSize, change.position, change.bytes.size()})
        writer.UInt32(static_cast<std::uint32_t>(number));
    writer.UInt32(change.outside);
    writer.Bytes(change.bytes.data(), change.bytes.size());
    writer.UInt32(CheckSum(writer.Image().data(), writer.Image().size()));
    return writer.TakeImage();
}

// None for a journal that was not written to its end, whose file was not touched yet then.
std::optional<Change> Decoded(const Bytes& journal) {
    if (journal.size() < kHeadSize + kCheckSumSize) return std::nullopt;
    const std::size_t summed = journal.size() - kCheckSumSize;
    ByteReader reader(journal);
    if (reader.UInt32() != kSignature) return std::nullopt;
    Change change;
    change.oldSize = reader.UInt32();
    change.newSize = reader.UInt32();
    change.position = reader.UInt32();
    if (reader.UInt32() != summed - kHeadSize) return std::nullopt;
    change.outside = reader.UInt32();
    change.bytes.resize(summed - kHeadSize);
    reader.Bytes(change.bytes.data(), change.bytes.size());
    const bool whole = reader.UInt32() == CheckSum(journal.data(), summed);
    const bool inside = change.position <= change.oldSize && change.newSize >= change.oldSize &&
                        change.bytes.size() <= change.newSize - change.position;
    if (!whole || !inside) return std::nullopt;
    return change;
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

void WriteJournal(const std::wstring& path, const Change& change) {
    const FileOwner journal(ThePlatform().files.Open(JournalPathOf(path), FileUse::WriteNew));
    if (!journal.IsSet()) ThrowFileError(path);
    WriteAll(journal.Get(), Encoded(change), path);
    FlushFile(journal.Get(), path);
}

// `touched` tells whether the bytes of the range may be others afterwards, be it after a failure or not.
void WriteRange(const FileOwner& file, const std::wstring& path, const Change& change, bool& touched) {
    FilePort& files = ThePlatform().files;
    if (!files.Reserve(file.Get(), static_cast<std::int64_t>(change.newSize)) ||
        !files.Seek(file.Get(), static_cast<std::int64_t>(change.position)))
        ThrowFileError(path);
    touched = true;
    WriteAll(file.Get(), change.bytes, path);
}

FileOwner OpenInPlace(const std::wstring& path) {
    return FileOwner(ThePlatform().files.Open(path, FileUse::WriteInPlace));
}

// With nothing left to write it is only brought onto the disk.
void WriteRangeForGood(const std::wstring& path, const Change& change, bool written) {
    const FileOwner file = OpenInPlace(path);
    if (!file.IsSet()) ThrowFileError(path);
    bool touched = false;
    if (!written) WriteRange(file, path, change, touched);
    FlushFile(file.Get(), path);
}

// After a failure: the old bytes come back where new ones may stand. Where that fails too, or where the
// journal would lead to the new ones later, a journal takes its place that leads to the old ones.
void TakeBack(const std::wstring& path, const Change& back, bool touched) {
    try {
        if (touched) WriteRangeForGood(path, back, false);
        if (ThePlatform().files.Remove(JournalPathOf(path))) return;
    } catch (const RuntimeError&) {
        // The disk is in trouble; of the two failures the first one is told.
    }
    try {
        WriteJournal(path, back);
    } catch (const RuntimeError&) {
        // Nothing can be written any more.
    }
}

// What was to be made goes again; a half file that stays keeps the journal that completes it.
void TakeBackNew(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    if (files.Remove(path) || files.LastError() == kErrorFileNotFound) files.Remove(JournalPathOf(path));
}

// What a file holds: with the save that its journal describes, where there is one.
struct Content {
    std::optional<Bytes> bytes;    // none for no file
    std::optional<Change> change;  // the journal's, when it belongs to this file
    bool hasJournal = false;
    bool written = false;  // the file holds the change already
};

Content ContentOf(const std::wstring& path) {
    Content content;
    content.bytes = BytesIfThere(path);
    const auto journal = BytesIfThere(JournalPathOf(path));
    content.hasJournal = journal.has_value();
    if (!journal) return content;
    content.change = Decoded(*journal);
    const Bytes none;
    if (content.change && !Fits(*content.change, content.bytes ? *content.bytes : none))
        content.change.reset();
    if (!content.change) return content;
    const std::optional<Bytes> onDisk = content.bytes;
    if (!content.bytes) content.bytes.emplace();
    Apply(*content.change, *content.bytes);
    content.written = content.bytes == onDisk;
    return content;
}

// The file on disk becomes what `content` says, and the journal goes.
void Finish(const std::wstring& path, const Content& content) {
    if (!content.hasJournal) return;
    if (content.change) WriteRangeForGood(path, *content.change, content.written);
    // Should it stay: the next save takes its place, and until then it says what the file holds anyway.
    ThePlatform().files.Remove(JournalPathOf(path));
}

}  // namespace

std::wstring JournalPathOf(const std::wstring& path) {
    constexpr std::size_t kExtension = 4;
    const bool isTreeFile = UpperCase(path).ends_with(L".NXP");
    return (isTreeFile ? path.substr(0, path.size() - kExtension) : path) + L".jnl";
}

bool SafeFileExists(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    return files.Exists(path) || files.Exists(JournalPathOf(path));
}

std::vector<std::uint8_t> ReadSafeFile(const std::wstring& path) {
    Content content = ContentOf(path);
    if (!content.bytes) throw FileErrorOf(kErrorFileNotFound, path);
    return std::move(*content.bytes);
}

void WriteSafeFile(const std::wstring& path, const std::vector<std::uint8_t>& image) {
    if (image.size() > std::numeric_limits<std::uint32_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
    const Content content = ContentOf(path);
    Finish(path, content);
    const bool isNew = !content.bytes;
    const Bytes old = content.bytes.value_or(Bytes());
    const std::optional<Change> change = ChangeTo(image, old);
    if (!change) return;

    bool touched = false;
    try {
        WriteJournal(path, *change);
        const FileOwner file = OpenInPlace(path);
        if (!file.IsSet()) ThrowFileError(path);
        WriteRange(file, path, *change, touched);
    } catch (const RuntimeError&) {
        if (isNew)
            TakeBackNew(path);
        else
            TakeBack(path, Reversed(*change, old), touched);
        throw;
    }
}

bool FinishSave(const std::wstring& path) {
    try {
        Finish(path, ContentOf(path));
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

bool RemoveSafeFile(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    // A file that stays must be whole without its journal.
    FinishSave(path);
    const bool gone = files.Remove(path) || IsMissing(files.LastError());
    if (gone) files.Remove(JournalPathOf(path));
    return gone;
}

FileMark::FileMark(const std::wstring& path) {
    try {
        const Bytes bytes = ReadSafeFile(path);
        changed_ = ThePlatform().files.ChangeTime(path).value_or(0);
        size_ = bytes.size();
        checkSum_ = CheckSum(bytes.data(), bytes.size());
        known_ = true;
    } catch (const RuntimeError&) {
        // Nothing is known then.
    }
}

bool FileMark::StillHolds(const std::wstring& path) const {
    if (!known_ || ThePlatform().files.ChangeTime(path) == changed_) return true;
    const FileMark now(path);
    return !now.known_ || (now.size_ == size_ && now.checkSum_ == checkSum_);
}
