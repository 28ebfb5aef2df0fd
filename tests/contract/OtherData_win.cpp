// Apart from the other program itself: the driver and the ports have different things of one name.

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

#include "desktop/ClipboardData.h"

HANDLE OtherData(UINT format, const std::string& bytes);
std::optional<std::string> OtherBytes(UINT format);

namespace {

// In front of a metafile picture's bits: mapping mode, width, height, 0.
constexpr std::int32_t kPictureHeader[] = {MM_ANISOTROPIC, 100, 100, 0};

}  // namespace

HANDLE OtherData(UINT format, const std::string& bytes) {
    if (format == CF_BITMAP) return CreateBitmap(4, 4, 1, 1, nullptr);
    if (format != CF_METAFILEPICT) return MakeClipboardData(format, bytes);
    return MakeClipboardData(
        format, std::string(reinterpret_cast<const char*>(kPictureHeader), sizeof kPictureHeader) + bytes);
}

std::optional<std::string> OtherBytes(UINT format) {
    std::optional<std::string> bytes = ReadFormat(format);
    if (bytes && format == CF_METAFILEPICT) bytes->erase(0, sizeof kPictureHeader);
    return bytes;
}
