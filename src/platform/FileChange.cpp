#include "platform/FileChange.h"

#include <algorithm>
#include <cstring>

#include "platform/ByteBuffer.h"
#include "platform/CheckSum.h"

namespace {

constexpr std::uint32_t kSignature = 0x334A584E;            // "NXJ3"
constexpr std::uint32_t kSignatureWithoutOld = 0x324A584E;  // "NXJ2"
constexpr std::size_t kHeadSize = 20;
constexpr std::size_t kRangeHeadSize = 12;
constexpr std::size_t kRangeHeadSizeWithoutOld = 8;
constexpr std::size_t kCheckSumSize = 4;

// Differences that are nearer to each other are mostly written together: another write costs more than some
// bytes too many.
constexpr std::size_t kNear = 1024;

std::size_t SameAtStart(const std::uint8_t* a, const std::uint8_t* b, std::size_t size) {
    constexpr std::size_t kAtOnce = 4096;
    std::size_t same = 0;
    while (same < size) {
        const std::size_t next = std::min(kAtOnce, size - same);
        if (std::memcmp(a + same, b + same, next) != 0)
            return static_cast<std::size_t>(std::mismatch(a + same, a + size, b + same).first - a);
        same += next;
    }
    return same;
}

// How many bytes lie in front of those that are the same at the end.
std::size_t WithoutSameEnd(const std::uint8_t* a, const std::uint8_t* b, std::size_t size) {
    while (size > 0 && a[size - 1] == b[size - 1])
        --size;
    return size;
}

// False when there are not so many left.
bool ReadBytes(ByteReader& reader, std::size_t size, std::vector<std::uint8_t>& bytes) {
    if (size > reader.Remaining()) return false;
    bytes.resize(size);
    reader.Bytes(bytes.data(), size);
    return true;
}

// True when the ranges are in order, do not overlap, and lie inside the file.
bool AreSound(const FileChange& change) {
    std::size_t end = 0;
    for (const ChangedRange& range : change.ranges) {
        if (range.position < end || range.position > change.newSize ||
            range.bytes.size() > change.newSize - range.position)
            return false;
        end = range.End();
    }
    return change.oldSize <= change.newSize;
}

}  // namespace

FileChange Reversed(const FileChange& change) {
    FileChange back = change;
    for (ChangedRange& range : back.ranges)
        std::swap(range.bytes, range.old);
    return back;
}

void FileAndChange::Add(const std::uint8_t* bytes, std::size_t size) {
    while (size > 0) {
        while (range_ != change_.ranges.end() && range_->End() <= size_)
            ++range_;
        const bool isLast = range_ == change_.ranges.end();
        const bool inside = !isLast && range_->position <= size_;
        const std::size_t end = inside ? range_->End() : isLast ? size_ + size : range_->position;
        const std::size_t next = std::min(size, end - size_);
        if (inside)
            AddInRange(bytes, next);
        else if (size_ < change_.oldSize)
            outside_ = CheckSum(bytes, std::min(next, change_.oldSize - size_), outside_);
        size_ += next;
        bytes += next;
        size -= next;
    }
}

// The system puts zeros where a file becomes longer.
void FileAndChange::AddInRange(const std::uint8_t* bytes, std::size_t size) {
    const std::size_t start = size_ - range_->position;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t at = start + i;
        if (bytes[i] == range_->bytes[at]) continue;
        same_ = false;
        known_ = known_ && bytes[i] == (at < range_->old.size() ? range_->old[at] : 0);
    }
}

bool FileAndChange::Fits() const {
    if (change_.knowsOld && !known_) return false;
    return size_ >= change_.oldSize && size_ <= change_.newSize && outside_ == change_.outside;
}

void Apply(const FileChange& change, std::vector<std::uint8_t>& file) {
    file.resize(std::max(file.size(), change.newSize));
    for (const ChangedRange& range : change.ranges)
        std::copy(range.bytes.begin(), range.bytes.end(),
                  file.begin() + static_cast<std::ptrdiff_t>(range.position));
}

std::vector<std::uint8_t> EncodeJournal(const FileChange& change) {
    std::size_t size = kHeadSize + kCheckSumSize;
    for (const ChangedRange& range : change.ranges)
        size += kRangeHeadSize + range.bytes.size() + range.old.size();
    ByteWriter writer;
    writer.Reserve(size);
    writer.UInt32(kSignature);
    for (const std::size_t number : {change.oldSize, change.newSize, change.ranges.size()})
        writer.UInt32(static_cast<std::uint32_t>(number));
    writer.UInt32(change.outside);
    for (const ChangedRange& range : change.ranges) {
        for (const std::size_t number : {range.position, range.bytes.size(), range.old.size()})
            writer.UInt32(static_cast<std::uint32_t>(number));
        writer.Bytes(range.bytes.data(), range.bytes.size());
        writer.Bytes(range.old.data(), range.old.size());
    }
    writer.UInt32(CheckSum(writer.Image().data(), writer.Image().size()));
    return writer.TakeImage();
}

std::optional<FileChange> DecodeJournal(const std::vector<std::uint8_t>& journal) {
    if (journal.size() < kHeadSize + kCheckSumSize) return std::nullopt;
    const std::size_t summed = journal.size() - kCheckSumSize;
    if (ByteReader(journal.data() + summed, kCheckSumSize).UInt32() != CheckSum(journal.data(), summed))
        return std::nullopt;
    ByteReader reader(journal.data(), summed);
    const std::uint32_t signature = reader.UInt32();
    if (signature != kSignature && signature != kSignatureWithoutOld) return std::nullopt;
    FileChange change;
    change.knowsOld = signature == kSignature;
    const std::size_t headSize = change.knowsOld ? kRangeHeadSize : kRangeHeadSizeWithoutOld;
    change.oldSize = reader.UInt32();
    change.newSize = reader.UInt32();
    std::size_t count = reader.UInt32();
    change.outside = reader.UInt32();
    for (; count > 0 && reader.Remaining() >= headSize; --count) {
        ChangedRange& range = change.ranges.emplace_back();
        range.position = reader.UInt32();
        const std::size_t size = reader.UInt32();
        const std::size_t oldSize = change.knowsOld ? reader.UInt32() : 0;
        if (!ReadBytes(reader, size, range.bytes) || !ReadBytes(reader, oldSize, range.old))
            return std::nullopt;
    }
    if (count > 0 || reader.Remaining() > 0 || !AreSound(change)) return std::nullopt;
    return change;
}

void FileComparison::Add(const std::uint8_t* image, std::size_t size, const std::uint8_t* old,
                         std::size_t oldSize) {
    const std::size_t both = std::min(size, oldSize);
    for (std::size_t at = 0; at < both;) {
        const std::size_t same = SameAtStart(image + at, old + at, both - at);
        Same(image + at, same);
        at += same;
        const std::size_t differ = WithoutSameEnd(image + at, old + at, std::min(kNear, both - at));
        Differ(image + at, differ, old + at, differ);
        at += differ;
    }
    Differ(image + both, size - both, nullptr, 0);
}

void FileComparison::Same(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) return;
    sameSum_ = CheckSum(bytes, size, sameSum_);
    sameSize_ += size;
    change_.oldSize += size;
    change_.newSize += size;
}

void FileComparison::Differ(const std::uint8_t* image, std::size_t size, const std::uint8_t* old,
                            std::size_t oldSize) {
    if (size == 0) return;
    EndSame();
    std::vector<ChangedRange>& ranges = change_.ranges;
    if (ranges.empty() || ranges.back().End() != change_.newSize)
        ranges.push_back({.position = change_.newSize, .bytes = {}, .old = {}});
    ranges.back().bytes.insert(ranges.back().bytes.end(), image, image + size);
    ranges.back().old.insert(ranges.back().old.end(), old, old + oldSize);
    oldSum_ = CheckSum(old, oldSize, oldSum_);
    newSum_ = CheckSum(image, size, newSum_);
    change_.oldSize += oldSize;
    change_.newSize += size;
}

void FileComparison::EndSame() {
    for (std::uint32_t* const sum : {&change_.outside, &oldSum_, &newSum_})
        *sum = JoinedCheckSum(*sum, sameSum_, sameSize_);
    sameSum_ = 0;
    sameSize_ = 0;
}

FileChange FileComparison::Take() {
    EndSame();
    return std::move(change_);
}
