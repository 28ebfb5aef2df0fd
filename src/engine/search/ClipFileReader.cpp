#include "engine/search/ClipFileReader.h"

#include <algorithm>
#include <utility>

#include "engine/clipboard/ClipFileLayout.h"
#include "platform/ByteBuffer.h"

namespace {

// Most clips are smaller; of a picture no more is read in vain.
constexpr std::size_t kFirstRead = 16 << 10;
// The size of a header with the longest name that anybody gives.
constexpr std::size_t kHeaderRead = 512;
// A long text is read in pieces that stay in the processor's cache.
constexpr std::size_t kPiece = 128 << 10;
constexpr std::size_t kFixedHeader = kRecordIdSize + kRecordNameLengthSize;

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

std::size_t ClipFileReader::ReadAt(std::int64_t offset, std::vector<char>& buffer, std::size_t count) {
    if (offset != position_ && !files_.Seek(file_, offset)) return 0;
    buffer.resize(std::max(buffer.size(), count));
    const std::size_t read = files_.Read(file_, buffer.data(), static_cast<std::uint32_t>(count)).value_or(0);
    position_ = offset + static_cast<std::int64_t>(read);
    return read;
}

std::string_view ClipFileReader::BytesAt(std::int64_t offset, std::size_t count) {
    const std::int64_t end = offset + std::min<std::int64_t>(static_cast<std::int64_t>(count),
                                                             std::max<std::int64_t>(size_ - offset, 0));
    if (offset < partBegin_ || end > partBegin_ + static_cast<std::int64_t>(partSize_)) {
        partSize_ = ReadAt(offset, part_, std::max(count, kHeaderRead));
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
    const auto text = VisibleText::Of(record.content.form);
    window_.clear();
    std::size_t begin = 0;
    std::int64_t offset = record.offset;
    const std::int64_t end = record.offset + record.size;
    const bool isRead = offset >= partBegin_ && end <= partBegin_ + static_cast<std::int64_t>(partSize_);
    for (;;) {
        std::string_view bytes;
        if (isRead) {
            bytes = BytesAt(offset, static_cast<std::size_t>(record.size));
        } else if (offset < end) {
            const auto count = static_cast<std::size_t>(
                std::min<std::int64_t>(end - offset, static_cast<std::int64_t>(kPiece)));
            const std::size_t read = ReadAt(offset, piece_, count);
            if (read == 0) return false;
            bytes = std::string_view(piece_.data(), read);
        }
        offset += static_cast<std::int64_t>(bytes.size());
        text->Take(bytes, window_);
        const bool last = offset >= end || text->Ended();
        if (last) text->End(window_);
        if (!taker({window_, begin, last}) || last) return true;
        const std::size_t gone = window_.size() - std::min(overlap, window_.size());
        window_.erase(0, gone);
        begin += gone;
    }
}
