#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/Handles.h"

// The header of a metafile picture as it is stored: 16 bytes, four signed 32-bit values. In a 64-bit process
// the block on the clipboard is wider; the port translates.
struct MetafilePicture {
    std::int32_t mappingMode = 0;
    std::int32_t xExtent = 0;
    std::int32_t yExtent = 0;
    std::int32_t metafile = 0;  // handle; GDI handles have 32 significant bits in every process
};

// The bits of metafiles and enhanced metafiles, in both directions.
class MetafilePort {
 public:
    virtual ~MetafilePort() = default;

    // The size in bytes of a metafile picture's block on this platform's clipboard (16 in a 32-bit process).
    virtual std::size_t PictureBlockSize() const = 0;
    // `block` points to PictureBlockSize() bytes.
    virtual MetafilePicture ReadPicture(const void* block) const = 0;
    virtual void WritePicture(const MetafilePicture& picture, void* block) const = 0;

    // The bits' size in bytes, 0 when the handle is no metafile; then the bits themselves into `buffer` of
    // that size.
    virtual std::size_t BitsSize(std::int32_t metafile) = 0;
    virtual bool GetBits(std::int32_t metafile, void* buffer, std::size_t size) = 0;
    // A new metafile made of the bits, owned by the caller; 0 when the bits are none.
    virtual std::int32_t Create(const void* bits, std::size_t size) = 0;
    virtual void Delete(std::int32_t metafile) = 0;

    // The same for enhanced metafiles, whose handles stand on the clipboard themselves.
    virtual std::size_t EnhancedBitsSize(DataHandle metafile) = 0;
    virtual bool GetEnhancedBits(DataHandle metafile, void* buffer, std::size_t size) = 0;
    virtual DataHandle CreateEnhanced(const void* bits, std::size_t size) = 0;
    virtual void DeleteEnhanced(DataHandle metafile) = 0;
};
