#pragma once

#include "platform/Metafiles.h"

class Win32Metafiles : public MetafilePort {
 public:
    std::size_t PictureBlockSize() const override;
    MetafilePicture ReadPicture(const void* block) const override;
    void WritePicture(const MetafilePicture& picture, void* block) const override;

    std::size_t BitsSize(std::int32_t metafile) override;
    bool GetBits(std::int32_t metafile, void* buffer, std::size_t size) override;
    std::int32_t Create(const void* bits, std::size_t size) override;
    void Delete(std::int32_t metafile) override;

    std::size_t EnhancedBitsSize(DataHandle metafile) override;
    bool GetEnhancedBits(DataHandle metafile, void* buffer, std::size_t size) override;
    DataHandle CreateEnhanced(const void* bits, std::size_t size) override;
    void DeleteEnhanced(DataHandle metafile) override;
};
