#include "platform/win32/Win32Metafiles.h"

#include <cstring>
#include <limits>

#include "platform/MetafileBits.h"
#include "platform/win32/SystemHandles.h"

namespace {

HMETAFILE SystemMetafile(std::int32_t metafile) {
    return static_cast<HMETAFILE>(LongToHandle(metafile));
}

std::int32_t EngineMetafile(HMETAFILE metafile) {
    return HandleToLong(metafile);
}

HENHMETAFILE SystemEnhancedMetafile(DataHandle metafile) {
    return static_cast<HENHMETAFILE>(SystemData(metafile));
}

bool FitsCall(std::size_t size) {
    return size <= std::numeric_limits<UINT>::max();
}

}  // namespace

std::size_t Win32Metafiles::PictureBlockSize() const {
    return sizeof(METAFILEPICT);
}

MetafilePicture Win32Metafiles::ReadPicture(const void* block) const {
    METAFILEPICT picture;
    std::memcpy(&picture, block, sizeof(picture));
    return {picture.mm, picture.xExt, picture.yExt, EngineMetafile(picture.hMF)};
}

void Win32Metafiles::WritePicture(const MetafilePicture& picture, void* block) const {
    const METAFILEPICT wide = {picture.mappingMode, picture.xExtent, picture.yExtent,
                               SystemMetafile(picture.metafile)};
    std::memcpy(block, &wide, sizeof(wide));
}

std::size_t Win32Metafiles::BitsSize(std::int32_t metafile) {
    return metafile == 0 ? 0 : GetMetaFileBitsEx(SystemMetafile(metafile), 0, nullptr);
}

bool Win32Metafiles::GetBits(std::int32_t metafile, void* buffer, std::size_t size) {
    const std::size_t needed = BitsSize(metafile);
    if (needed == 0 || size < needed) return false;
    return GetMetaFileBitsEx(SystemMetafile(metafile), static_cast<UINT>(needed), buffer) == needed;
}

std::int32_t Win32Metafiles::Create(const void* bits, std::size_t size) {
    if (!FitsCall(size) || !AreMetafileBits(bits, size)) return 0;
    return EngineMetafile(SetMetaFileBitsEx(static_cast<UINT>(size), static_cast<const BYTE*>(bits)));
}

void Win32Metafiles::Delete(std::int32_t metafile) {
    if (metafile != 0) DeleteMetaFile(SystemMetafile(metafile));
}

std::size_t Win32Metafiles::EnhancedBitsSize(DataHandle metafile) {
    if (metafile == DataHandle::None) return 0;
    return GetEnhMetaFileBits(SystemEnhancedMetafile(metafile), 0, nullptr);
}

bool Win32Metafiles::GetEnhancedBits(DataHandle metafile, void* buffer, std::size_t size) {
    const std::size_t needed = EnhancedBitsSize(metafile);
    if (needed == 0 || size < needed) return false;
    return GetEnhMetaFileBits(SystemEnhancedMetafile(metafile), static_cast<UINT>(needed),
                              static_cast<BYTE*>(buffer)) == needed;
}

DataHandle Win32Metafiles::CreateEnhanced(const void* bits, std::size_t size) {
    if (!FitsCall(size) || !AreEnhancedMetafileBits(bits, size)) return DataHandle::None;
    return EngineData(SetEnhMetaFileBits(static_cast<UINT>(size), static_cast<const BYTE*>(bits)));
}

void Win32Metafiles::DeleteEnhanced(DataHandle metafile) {
    if (metafile != DataHandle::None) DeleteEnhMetaFile(SystemEnhancedMetafile(metafile));
}
