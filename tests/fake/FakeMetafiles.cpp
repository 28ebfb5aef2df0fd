#include "fake/FakeMetafiles.h"

#include <cstring>
#include <initializer_list>

#include "platform/ByteBuffer.h"
#include "platform/MetafileBits.h"

namespace {

std::string_view Bytes(const void* bytes, std::size_t size) {
    return {static_cast<const char*>(bytes), size};
}

// The content filled up to whole units of its kind of metafile.
std::string Padded(std::string_view content, std::size_t unit) {
    std::string padded(content);
    padded.resize((content.size() + unit - 1) / unit * unit);
    return padded;
}

}  // namespace

MetafilePicture FakeMetafiles::ReadPicture(const void* block) const {
    ByteReader reader(block, PictureBlockSize());
    MetafilePicture picture;
    for (std::int32_t* field : {&picture.mappingMode, &picture.xExtent, &picture.yExtent, &picture.metafile})
        *field = reader.Int32();
    return picture;
}

void FakeMetafiles::WritePicture(const MetafilePicture& picture, void* block) const {
    ByteWriter writer;
    for (const std::int32_t field : {picture.mappingMode, picture.xExtent, picture.yExtent, picture.metafile})
        writer.Int32(field);
    std::memcpy(block, writer.Image().data(), PictureBlockSize());
}

std::int32_t FakeMetafiles::Create(const void* bits, std::size_t size) {
    if (failures_.Strikes() || !AreMetafileBits(bits, size)) return 0;
    return static_cast<std::int32_t>(Make(ResourceKind::Metafile, Bytes(bits, size)));
}

DataHandle FakeMetafiles::CreateEnhanced(const void* bits, std::size_t size) {
    if (failures_.Strikes() || !AreEnhancedMetafileBits(bits, size)) return DataHandle::None;
    ByteReader header(bits, size);
    header.Skip(48);
    const std::size_t wholeSize = header.UInt32();
    return static_cast<DataHandle>(Make(ResourceKind::EnhancedMetafile, Bytes(bits, wholeSize)));
}

Ledger::Number FakeMetafiles::Make(ResourceKind kind, std::string_view bits) {
    const Number number = ledger_.Take(kind);
    bits_[number] = bits;
    return number;
}

Ledger::Number FakeMetafiles::MakeForClipboard(ResourceKind kind, std::string_view bits) {
    const Number number = Make(kind, bits);
    ledger_.HandOver(number);
    return number;
}

const std::string* FakeMetafiles::Find(ResourceKind kind, Number number) const {
    const auto found = bits_.find(number);
    return found != bits_.end() && ledger_.Knows(kind, number) ? &found->second : nullptr;
}

std::size_t FakeMetafiles::SizeOf(ResourceKind kind, Number number) {
    const bool fails = failures_.Strikes();
    ledger_.Use(number, "asked for its size");
    const std::string* bits = Find(kind, number);
    return bits == nullptr || fails ? 0 : bits->size();
}

bool FakeMetafiles::Get(ResourceKind kind, Number number, void* buffer, std::size_t size) {
    const bool fails = failures_.Strikes();
    ledger_.Use(number, "asked for its bits");
    const std::string* bits = Find(kind, number);
    if (bits == nullptr || fails || size < bits->size()) return false;
    std::memcpy(buffer, bits->data(), bits->size());
    return true;
}

void FakeMetafiles::Free(ResourceKind kind, Number number) {
    if (number != 0 && ledger_.Free(kind, number)) bits_.erase(number);
}

std::string MetafileBitsWith(std::string_view content) {
    // Sizes count words. A comment escape holds the content.
    constexpr std::uint16_t kHeader = 9, kEscape = 0x0626, kComment = 15, kEnd = 3;
    const std::string padded = Padded(content, 2);
    const auto length = static_cast<std::uint16_t>(padded.size());
    const auto record = static_cast<std::uint16_t>(5 + length / 2);
    const auto whole = static_cast<std::uint16_t>(kHeader + record + kEnd);
    ByteWriter writer;
    for (const std::uint16_t word : std::initializer_list<std::uint16_t>{
             1, kHeader, 0x0300, whole, 0, 0, record, 0, 0, record, 0, kEscape, kComment, length})
        writer.UInt16(word);
    writer.Bytes(padded.data(), padded.size());
    writer.UInt32(kEnd);
    writer.UInt16(0);
    return std::string(writer.Image().begin(), writer.Image().end());
}

std::string EnhancedMetafileBitsWith(std::string_view content) {
    constexpr std::uint32_t kHeader = 88, kComment = 70, kEnd = 14, kEndSize = 20;
    const std::string padded = Padded(content, 4);
    const auto length = static_cast<std::uint32_t>(padded.size()), record = 12 + length;
    ByteWriter writer;
    // Header: bounds, frame, signature, version, size, three records, one handle, the device's extents.
    for (const std::uint32_t number : std::initializer_list<std::uint32_t>{1,
                                                                           kHeader,
                                                                           0,
                                                                           0,
                                                                           100,
                                                                           100,
                                                                           0,
                                                                           0,
                                                                           100,
                                                                           100,
                                                                           0x464D4520,
                                                                           0x10000,
                                                                           kHeader + record + kEndSize,
                                                                           3,
                                                                           1,
                                                                           0,
                                                                           0,
                                                                           0,
                                                                           1000,
                                                                           1000,
                                                                           300,
                                                                           300,
                                                                           kComment,
                                                                           record,
                                                                           length})
        writer.UInt32(number);
    writer.Bytes(padded.data(), padded.size());
    for (const std::uint32_t number : {kEnd, kEndSize, 0u, 16u, kEndSize})
        writer.UInt32(number);
    return std::string(writer.Image().begin(), writer.Image().end());
}
