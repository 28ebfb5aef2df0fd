#include "fake/FakeMetafiles.h"

#include <cstring>

#include "platform/ByteBuffer.h"
#include "platform/MetafileBits.h"

namespace {

Ledger::Number NumberOf(std::int32_t metafile) {
    return static_cast<Ledger::Number>(static_cast<std::uint32_t>(metafile));
}

Ledger::Number NumberOf(DataHandle metafile) {
    return static_cast<Ledger::Number>(metafile);
}

std::string StringOf(const ByteWriter& writer) {
    return std::string(writer.Image().begin(), writer.Image().end());
}

}  // namespace

MetafilePicture FakeMetafiles::ReadPicture(const void* block) const {
    ByteReader reader(block, PictureBlockSize());
    MetafilePicture picture;
    picture.mappingMode = reader.Int32();
    picture.xExtent = reader.Int32();
    picture.yExtent = reader.Int32();
    picture.metafile = reader.Int32();
    return picture;
}

void FakeMetafiles::WritePicture(const MetafilePicture& picture, void* block) const {
    ByteWriter writer;
    writer.Int32(picture.mappingMode);
    writer.Int32(picture.xExtent);
    writer.Int32(picture.yExtent);
    writer.Int32(picture.metafile);
    std::memcpy(block, writer.Image().data(), PictureBlockSize());
}

std::size_t FakeMetafiles::BitsSize(std::int32_t metafile) {
    return SizeOf(ResourceKind::Metafile, NumberOf(metafile), Operation::MetafilesBitsSize);
}

bool FakeMetafiles::GetBits(std::int32_t metafile, void* buffer, std::size_t size) {
    return Get(ResourceKind::Metafile, NumberOf(metafile), buffer, size, Operation::MetafilesGetBits);
}

std::int32_t FakeMetafiles::Create(const void* bits, std::size_t size) {
    if (failures_.Strikes(Operation::MetafilesCreate) || !AreMetafileBits(bits, size)) return 0;
    return static_cast<std::int32_t>(
        Make(ResourceKind::Metafile, std::string_view(static_cast<const char*>(bits), size)));
}

void FakeMetafiles::Delete(std::int32_t metafile) {
    if (metafile != 0) Free(ResourceKind::Metafile, NumberOf(metafile));
}

std::size_t FakeMetafiles::EnhancedBitsSize(DataHandle metafile) {
    return SizeOf(ResourceKind::EnhancedMetafile, NumberOf(metafile), Operation::MetafilesEnhancedBitsSize);
}

bool FakeMetafiles::GetEnhancedBits(DataHandle metafile, void* buffer, std::size_t size) {
    return Get(ResourceKind::EnhancedMetafile, NumberOf(metafile), buffer, size,
               Operation::MetafilesGetEnhancedBits);
}

DataHandle FakeMetafiles::CreateEnhanced(const void* bits, std::size_t size) {
    if (failures_.Strikes(Operation::MetafilesCreateEnhanced) || !AreEnhancedMetafileBits(bits, size))
        return DataHandle::None;
    ByteReader header(bits, size);
    header.Skip(48);
    const std::size_t wholeSize = header.UInt32();
    return static_cast<DataHandle>(
        Make(ResourceKind::EnhancedMetafile, std::string_view(static_cast<const char*>(bits), wholeSize)));
}

void FakeMetafiles::DeleteEnhanced(DataHandle metafile) {
    if (metafile != DataHandle::None) Free(ResourceKind::EnhancedMetafile, NumberOf(metafile));
}

std::int32_t FakeMetafiles::MakeForClipboard(std::string_view bits) {
    const Number number = Make(ResourceKind::Metafile, bits);
    ledger_.HandOver(number);
    return static_cast<std::int32_t>(number);
}

DataHandle FakeMetafiles::MakeEnhancedForClipboard(std::string_view bits) {
    const Number number = Make(ResourceKind::EnhancedMetafile, bits);
    ledger_.HandOver(number);
    return static_cast<DataHandle>(number);
}

std::string FakeMetafiles::Bits(std::int32_t metafile) const {
    const std::string* bits = Find(ResourceKind::Metafile, NumberOf(metafile));
    return bits == nullptr ? std::string() : *bits;
}

std::string FakeMetafiles::EnhancedBits(DataHandle metafile) const {
    const std::string* bits = Find(ResourceKind::EnhancedMetafile, NumberOf(metafile));
    return bits == nullptr ? std::string() : *bits;
}

void FakeMetafiles::FreeBySystem(std::int32_t metafile) {
    if (Find(ResourceKind::Metafile, NumberOf(metafile)) == nullptr) return;
    ledger_.FreeBySystem(NumberOf(metafile));
    bits_.erase(NumberOf(metafile));
}

void FakeMetafiles::FreeEnhancedBySystem(DataHandle metafile) {
    ledger_.FreeBySystem(NumberOf(metafile));
    bits_.erase(NumberOf(metafile));
}

Ledger::Number FakeMetafiles::Make(ResourceKind kind, std::string_view bits) {
    const Number number = ledger_.Take(kind);
    bits_[number] = bits;
    return number;
}

const std::string* FakeMetafiles::Find(ResourceKind kind, Number number) const {
    const auto found = bits_.find(number);
    return found != bits_.end() && ledger_.Knows(kind, number) ? &found->second : nullptr;
}

std::size_t FakeMetafiles::SizeOf(ResourceKind kind, Number number, Operation operation) {
    const bool fails = failures_.Strikes(operation);
    ledger_.Use(number, "asked for its size");
    const std::string* bits = Find(kind, number);
    return bits == nullptr || fails ? 0 : bits->size();
}

bool FakeMetafiles::Get(ResourceKind kind, Number number, void* buffer, std::size_t size,
                        Operation operation) {
    const bool fails = failures_.Strikes(operation);
    ledger_.Use(number, "asked for its bits");
    const std::string* bits = Find(kind, number);
    if (bits == nullptr || fails || size < bits->size()) return false;
    std::memcpy(buffer, bits->data(), bits->size());
    return true;
}

void FakeMetafiles::Free(ResourceKind kind, Number number) {
    if (ledger_.Free(kind, number)) bits_.erase(number);
}

std::string MetafileBitsWith(std::string_view content) {
    constexpr std::uint32_t kHeaderWords = 9;
    constexpr std::uint32_t kEndRecordWords = 3;
    // A comment escape holds the content; an odd byte is filled up, as records count words.
    std::string padded(content);
    if (padded.size() % 2 != 0) padded += '\0';
    const auto recordWords = static_cast<std::uint32_t>(5 + padded.size() / 2);
    ByteWriter writer;
    writer.UInt16(1);  // in memory
    writer.UInt16(kHeaderWords);
    writer.UInt16(0x0300);
    writer.UInt32(kHeaderWords + recordWords + kEndRecordWords);
    writer.UInt16(0);
    writer.UInt32(recordWords);
    writer.UInt16(0);
    writer.UInt32(recordWords);
    writer.UInt16(0x0626);  // escape
    writer.UInt16(15);      // comment
    writer.UInt16(static_cast<std::uint16_t>(padded.size()));
    writer.Bytes(padded.data(), padded.size());
    writer.UInt32(kEndRecordWords);
    writer.UInt16(0);
    return StringOf(writer);
}

std::string EnhancedMetafileBitsWith(std::string_view content) {
    constexpr std::uint32_t kHeaderSize = 88;
    constexpr std::uint32_t kEndSize = 20;
    std::string padded(content);
    while (padded.size() % 4 != 0)
        padded += '\0';
    const auto commentSize = static_cast<std::uint32_t>(12 + padded.size());
    ByteWriter writer;
    writer.UInt32(1);
    writer.UInt32(kHeaderSize);
    for (int i = 0; i < 8; ++i)
        writer.Int32(i % 4 < 2 ? 0 : 100);  // bounds, frame
    writer.UInt32(0x464D4520);
    writer.UInt32(0x10000);
    writer.UInt32(kHeaderSize + commentSize + kEndSize);
    writer.UInt32(3);  // records
    writer.UInt16(1);  // handles
    writer.UInt16(0);
    writer.UInt32(0);
    writer.UInt32(0);
    writer.UInt32(0);
    for (const int extent : {1000, 1000, 300, 300})
        writer.Int32(extent);  // device in pixels, millimetres
    writer.UInt32(70);         // comment
    writer.UInt32(commentSize);
    writer.UInt32(static_cast<std::uint32_t>(padded.size()));
    writer.Bytes(padded.data(), padded.size());
    writer.UInt32(14);  // end
    writer.UInt32(kEndSize);
    writer.UInt32(0);
    writer.UInt32(16);
    writer.UInt32(kEndSize);
    return StringOf(writer);
}
