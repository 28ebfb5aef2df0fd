#include "desktop/ClipboardData.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "desktop/Wait.h"

namespace {

constexpr int kOpenTries = 200;

// A metafile picture in front of its bits, the same for both word sizes.
struct PictureHeader {
    std::int32_t mapMode;
    std::int32_t width;
    std::int32_t height;
    std::int32_t handle;
};

bool IsMemory(UINT format) {
    switch (format) {
        case CF_BITMAP:
        case CF_PALETTE:
        case CF_OWNERDISPLAY:
        case CF_DSPBITMAP:
        case CF_DSPMETAFILEPICT:
        case CF_DSPENHMETAFILE:
            return false;
        default:
            return format < CF_GDIOBJFIRST || format > CF_GDIOBJLAST;
    }
}

std::optional<std::string> BytesOfBlock(HANDLE block) {
    const void* memory = GlobalLock(block);
    if (memory == nullptr) return std::nullopt;
    std::string bytes(static_cast<const char*>(memory), GlobalSize(block));
    GlobalUnlock(block);
    return bytes;
}

std::string BitsOf(HENHMETAFILE metafile) {
    std::string bits(GetEnhMetaFileBits(metafile, 0, nullptr), '\0');
    GetEnhMetaFileBits(metafile, static_cast<UINT>(bits.size()), reinterpret_cast<BYTE*>(bits.data()));
    return bits;
}

std::string BitsOf(HMETAFILE metafile) {
    std::string bits(GetMetaFileBitsEx(metafile, 0, nullptr), '\0');
    GetMetaFileBitsEx(metafile, static_cast<UINT>(bits.size()), bits.data());
    return bits;
}

std::optional<std::string> BytesOfPicture(HANDLE block) {
    const auto* picture = static_cast<const METAFILEPICT*>(GlobalLock(block));
    if (picture == nullptr) return std::nullopt;
    const PictureHeader header{picture->mm, picture->xExt, picture->yExt, 0};
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    bytes += BitsOf(picture->hMF);
    GlobalUnlock(block);
    return bytes;
}

HANDLE MakeBlock(std::string_view bytes) {
    HANDLE block = GlobalAlloc(GMEM_MOVEABLE, std::max<std::size_t>(bytes.size(), 1));
    if (block == nullptr) return nullptr;
    std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    return block;
}

HANDLE MakePicture(std::string_view bytes) {
    PictureHeader header{};
    if (bytes.size() < sizeof header) {
        SetLastError(ERROR_INVALID_DATA);
        return nullptr;
    }
    std::memcpy(&header, bytes.data(), sizeof header);
    bytes.remove_prefix(sizeof header);
    METAFILEPICT picture{};
    picture.mm = header.mapMode;
    picture.xExt = header.width;
    picture.yExt = header.height;
    picture.hMF =
        SetMetaFileBitsEx(static_cast<UINT>(bytes.size()), reinterpret_cast<const BYTE*>(bytes.data()));
    if (picture.hMF == nullptr) return nullptr;
    return MakeBlock({reinterpret_cast<const char*>(&picture), sizeof picture});
}

}  // namespace

UINT FormatNumber(const std::wstring& numberOrName) {
    const bool number =
        !numberOrName.empty() && std::all_of(numberOrName.begin(), numberOrName.end(),
                                             [](wchar_t c) { return c >= L'0' && c <= L'9'; });
    if (number) return static_cast<UINT>(std::stoul(numberOrName));
    return RegisterClipboardFormatW(numberOrName.c_str());
}

std::wstring FormatName(UINT format) {
    wchar_t name[256] = L"";
    // Standard formats have no name, whatever an atom of the same number may be called.
    if (format < 0xC000 || GetClipboardFormatNameW(format, name, static_cast<int>(std::size(name))) == 0) {
        return std::to_wstring(format);
    }
    return name;
}

OpenedClipboard::OpenedClipboard(HWND window) {
    for (int tries = 0; !OpenClipboard(window); ++tries) {
        if (tries == kOpenTries) throw std::runtime_error("another program keeps the clipboard open");
        // Who has it open may be emptying it, and wait for what this program owns there.
        Pause();
    }
}

std::vector<UINT> FormatsOnClipboard() {
    std::vector<UINT> formats;
    for (UINT format = EnumClipboardFormats(0); format != 0; format = EnumClipboardFormats(format))
        formats.push_back(format);
    return formats;
}

std::optional<std::string> ReadFormat(UINT format) {
    if (!IsMemory(format)) return std::nullopt;
    HANDLE data = GetClipboardData(format);
    if (data == nullptr) return std::nullopt;
    if (format == CF_ENHMETAFILE) return BitsOf(static_cast<HENHMETAFILE>(data));
    if (format == CF_METAFILEPICT) return BytesOfPicture(data);
    return BytesOfBlock(data);
}

std::optional<std::string> ReadFormatNow(UINT format) {
    const OpenedClipboard clipboard;
    return ReadFormat(format);
}

void PutFormats(const std::vector<ClipboardOffer>& offers) {
    static const HWND owner =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    const OpenedClipboard clipboard(owner);
    EmptyClipboard();
    for (const ClipboardOffer& offer : offers) {
        HANDLE data = MakeClipboardData(offer.format, offer.bytes);
        if (data == nullptr || SetClipboardData(offer.format, data) == nullptr) {
            throw std::runtime_error("cannot put format " + std::to_string(offer.format));
        }
    }
}

HANDLE MakeClipboardData(UINT format, std::string_view bytes) {
    if (format == CF_ENHMETAFILE) {
        return SetEnhMetaFileBits(static_cast<UINT>(bytes.size()),
                                  reinterpret_cast<const BYTE*>(bytes.data()));
    }
    if (format == CF_METAFILEPICT) return MakePicture(bytes);
    return MakeBlock(bytes);
}
