#include "engine/search/ClipFileReader.h"

#include <algorithm>
#include <utility>

#include "engine/clipboard/ClipFileLayout.h"
#include "engine/search/TextDecoder.h"
#include "platform/ByteBuffer.h"

namespace {

// Most clips are smaller; of a picture no more is read in vain.
constexpr std::size_t kFirstRead = 16 << 10;
// The size of a header with the longest name that anybody gives.
constexpr std::size_t kHeaderRead = 512;
// A long text is read in pieces that stay in the processor's cache.
constexpr std::size_t kPiece = 128 << 10;
constexpr std::size_t kFixedHeader = kRecordIdSize + kRecordNameLengthSize;
constexpr std::size_t kUnit = sizeof(char16_t);

std::size_t PieceOf(std::int64_t rest) {
    return static_cast<std::size_t>(std::min<std::int64_t>(rest, static_cast<std::int64_t>(kPiece)));
}

}  // namespace

bool ClipFileReader::Open(const std::wstring& path) {
    Close();
    file_ = files_.Open(path, FileUse::Read);
    if (file_ == FileHandle::None) return false;
    part_.resize(kFirstRead);
    const auto read = files_.Read(file_, part_.data(), static_cast<std::uint32_t>(kFirstRead));
    if (!read) return false;
    partSize_ = *read;
    position_ = size_ = static_cast<std::int64_t>(partSize_);
    if (partSize_ < kFirstRead) return true;
    const auto size = files_.Size(file_);
    size_ = size.value_or(0);
    return size.has_value();
}

void ClipFileReader::Close() {
    if (file_ != FileHandle::None) files_.Close(std::exchange(file_, FileHandle::None));
    records_.clear();
    partBegin_ = 0;
    partSize_ = 0;
}

std::size_t ClipFileReader::ReadAt(std::int64_t offset, void* to, std::size_t count) {
    if (offset != position_ && !files_.Seek(file_, offset)) return 0;
    const std::size_t read = files_.Read(file_, to, static_cast<std::uint32_t>(count)).value_or(0);
    position_ = offset + static_cast<std::int64_t>(read);
    return read;
}

std::string_view ClipFileReader::BytesAt(std::int64_t offset, std::size_t count) {
    const std::int64_t end = offset + std::min<std::int64_t>(static_cast<std::int64_t>(count),
                                                             std::max<std::int64_t>(size_ - offset, 0));
    if (offset < partBegin_ || end > partBegin_ + static_cast<std::int64_t>(partSize_)) {
        const std::size_t most = std::max(count, kHeaderRead);
        part_.resize(std::max(part_.size(), most));
        partSize_ = ReadAt(offset, part_.data(), most);
        partBegin_ = offset;
    }
    const auto begin = static_cast<std::size_t>(offset - partBegin_);
    if (begin >= partSize_) return {};
    return std::string_view(part_.data(), partSize_).substr(begin, count);
}

const std::vector<ClipFileReader::Record>& ClipFileReader::ReadRecords(int count) {
    records_.clear();
    std::int64_t offset = 0;
    for (int i = 0; i < count; ++i) {
        const auto record = NextRecord(offset);
        if (!record) break;
        records_.push_back(*record);
    }
    return records_;
}

// None at the file's end and where it is damaged.
std::optional<ClipFileReader::Record> ClipFileReader::NextRecord(std::int64_t& offset) {
    const std::string_view fixed = BytesAt(offset, kFixedHeader);
    if (fixed.size() < kFixedHeader) return std::nullopt;
    ByteReader front(fixed.data(), fixed.size());
    const std::int32_t id = front.Int32();
    const std::int16_t nameSize = front.Int16();
    if (nameSize < 0) return std::nullopt;
    const std::size_t restSize = static_cast<std::size_t>(nameSize) + kRecordDataSizeSize;
    const std::string_view rest = BytesAt(offset + static_cast<std::int64_t>(kFixedHeader), restSize);
    if (rest.size() < restSize) return std::nullopt;
    const std::string_view name = rest.substr(0, static_cast<std::size_t>(nameSize));
    Record record;
    record.size = ByteReader(rest.data() + nameSize, kRecordDataSizeSize).Int32();
    record.offset = offset + static_cast<std::int64_t>(kFixedHeader + restSize);
    if (record.size < 0 || record.size > size_ - record.offset) return std::nullopt;
    record.content = ContentOfFormat(static_cast<FormatNumber>(id), name);
    offset = record.offset + record.size;
    return record;
}

bool ClipFileReader::ReadText(const Record& record, std::size_t overlap, const Taker& taker) {
    const std::int64_t end = record.offset + record.size;
    if (record.offset >= partBegin_ && end <= partBegin_ + static_cast<std::int64_t>(partSize_))
        return ReadShortText(record, taker);
    // One that has no whole unit has no text.
    if (record.content.form == TextForm::Utf16 && record.size > 1)
        return ReadLongUtf16(record, overlap, taker);
    return ReadLongText(record, overlap, taker);
}

// What was read with the headers.
bool ClipFileReader::ReadShortText(const Record& record, const Taker& taker) {
    const auto text = VisibleText::Of(record.content.form);
    window_.clear();
    text->Take(BytesAt(record.offset, static_cast<std::size_t>(record.size)), window_);
    text->End(window_);
    taker({window_, 0, true});
    return true;
}

bool ClipFileReader::ReadLongText(const Record& record, std::size_t overlap, const Taker& taker) {
    const auto text = VisibleText::Of(record.content.form);
    window_.clear();
    piece_.resize(kPiece);
    std::size_t begin = 0;
    std::int64_t offset = record.offset;
    const std::int64_t end = record.offset + record.size;
    for (;;) {
        if (offset < end) {
            const std::size_t read = ReadAt(offset, piece_.data(), PieceOf(end - offset));
            if (read == 0) return false;
            text->Take({piece_.data(), read}, window_);
            offset += static_cast<std::int64_t>(read);
        }
        const bool last = offset >= end || text->Ended();
        if (last) text->End(window_);
        if (!taker({window_, begin, last}) || last) return true;
        const std::size_t gone = window_.size() - std::min(overlap, window_.size());
        window_.erase(0, gone);
        begin += gone;
    }
}

// Up to its first zero. It lies in the file as it lies in memory: to copy it once more would take as long as
// to search it.
bool ClipFileReader::ReadLongUtf16(const Record& record, std::size_t overlap, const Taker& taker) {
    units_.resize(std::max(units_.size(), overlap + kPiece / kUnit));
    std::size_t kept = 0;
    std::size_t begin = 0;
    std::int64_t offset = record.offset;
    const std::int64_t end = record.offset + record.size - record.size % std::int64_t{kUnit};
    for (;;) {
        const std::size_t read = ReadAt(offset, &units_[kept], PieceOf(end - offset)) / kUnit;
        if (read == 0) return false;
        offset += static_cast<std::int64_t>(read * kUnit);
        const std::size_t size = FirstZero({units_.data(), kept + read}, kept);
        const bool last = offset >= end || size < kept + read;
        if (!taker({{units_.data(), size}, begin, last}) || last) return true;
        const std::size_t gone = size - std::min(overlap, size);
        kept = size - gone;
        begin += gone;
        std::copy_n(units_.data() + gone, kept, units_.data());
    }
}
