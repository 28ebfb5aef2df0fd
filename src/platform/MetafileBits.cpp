#include "platform/MetafileBits.h"

#include "platform/ByteBuffer.h"

namespace {

constexpr std::size_t kMetafileHeaderSize = 18;
constexpr std::size_t kSmallestEnhancedHeaderSize = 88;
constexpr std::uint16_t kInMemory = 1;
constexpr std::uint16_t kOldMetafileVersion = 0x0100;  // without device-independent bitmaps
constexpr std::uint16_t kMetafileVersion = 0x0300;
constexpr std::uint32_t kHeaderRecord = 1;
constexpr std::uint32_t kEnhancedSignature = 0x464D4520;  // " EMF"
constexpr std::size_t kSignatureOffset = 40;
constexpr std::size_t kSizeOffset = 48;

std::uint32_t UInt32At(const void* bits, std::size_t size, std::size_t offset) {
    ByteReader reader(bits, size);
    reader.Skip(offset);
    return reader.UInt32();
}

}  // namespace

bool AreMetafileBits(const void* bits, std::size_t size) {
    if (bits == nullptr || size < kMetafileHeaderSize || size % 2 != 0) return false;
    ByteReader reader(bits, size);
    const std::uint16_t type = reader.UInt16();
    const std::uint16_t headerWords = reader.UInt16();
    const std::uint16_t version = reader.UInt16();
    return type == kInMemory && headerWords * 2u == kMetafileHeaderSize &&
           (version == kMetafileVersion || version == kOldMetafileVersion);
}

bool AreEnhancedMetafileBits(const void* bits, std::size_t size) {
    if (bits == nullptr || size < kSmallestEnhancedHeaderSize) return false;
    const std::uint32_t headerSize = UInt32At(bits, size, 4);
    const std::uint32_t wholeSize = UInt32At(bits, size, kSizeOffset);
    return UInt32At(bits, size, 0) == kHeaderRecord && headerSize >= kSmallestEnhancedHeaderSize &&
           headerSize <= wholeSize && UInt32At(bits, size, kSignatureOffset) == kEnhancedSignature &&
           wholeSize <= size;
}
