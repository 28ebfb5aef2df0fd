#include "windows/controls/Pictures.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>
#include <vector>

#include "resources/pictures.h"
#include "windows/controls/ScreenBitmap.h"

namespace {

UniqueIcon LoadPicture(const Picture& picture, int pixels) {
    return UniqueIcon(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), picture.resource, IMAGE_ICON,
                                                    pixels, pixels, LR_DEFAULTCOLOR)));
}

std::span<const std::byte> ResourceBytes(const wchar_t* name, const wchar_t* type) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC resource = FindResourceW(module, name, type);
    if (resource == nullptr) return {};
    return {static_cast<const std::byte*>(LockResource(LoadResource(module, resource))),
            SizeofResource(module, resource)};
}

// A picture's 32-bit colours as they stand in its resource, row by row from the bottom; empty at a size that
// is not stored.
std::span<const std::byte> StoredPixels(const Picture& picture, int pixels) {
    const auto sizes = ResourceBytes(picture.resource, RT_GROUP_ICON);
    if (sizes.empty()) return {};
    const int number = LookupIconIdFromDirectoryEx(
        reinterpret_cast<BYTE*>(const_cast<std::byte*>(sizes.data())), TRUE, pixels, pixels, LR_DEFAULTCOLOR);
    const auto image = ResourceBytes(MAKEINTRESOURCEW(number), RT_ICON);
    const std::size_t length = static_cast<std::size_t>(pixels) * static_cast<std::size_t>(pixels) * 4;
    BITMAPINFOHEADER header{};
    if (image.size() < sizeof header + length) return {};
    std::memcpy(&header, image.data(), sizeof header);
    if (header.biSize != sizeof header || header.biWidth != pixels || header.biBitCount != 32) return {};
    return image.subspan(sizeof header, length);
}

// All pictures side by side; none when one of them is not stored at that size.
UniqueBitmap StripOf(std::span<const Picture> pictures, int pixels) {
    const auto side = static_cast<std::size_t>(pixels);
    const std::size_t rowBytes = side * 4;
    void* colours = nullptr;
    UniqueBitmap strip = MakeScreenBitmap(pixels * static_cast<int>(pictures.size()), pixels, &colours);
    if (!strip.IsSet()) return {};
    for (std::size_t place = 0; place < pictures.size(); ++place) {
        const auto stored = StoredPixels(pictures[place], pixels);
        if (stored.empty()) return {};
        for (std::size_t row = 0; row < side; ++row)
            std::memcpy(static_cast<std::byte*>(colours) + (row * pictures.size() + place) * rowBytes,
                        stored.data() + (side - 1 - row) * rowBytes, rowBytes);
    }
    return strip;
}

// An icon of each would be made and thrown away by dozens of calls to the window server: they are for the
// sizes in between alone.
UniqueImageList LoadPictures(std::span<const Picture> pictures, int pixels) {
    UniqueImageList list(ImageList_Create(pixels, pixels, ILC_COLOR32, static_cast<int>(pictures.size()), 0));
    if (const UniqueBitmap strip = StripOf(pictures, pixels); strip.IsSet()) {
        ImageList_Add(list.Get(), strip.Get(), nullptr);
    } else {
        for (const Picture& picture : pictures)
            ImageList_AddIcon(list.Get(), LoadPicture(picture, pixels).Get());
    }
    return list;
}

// Nodes and formats stand in the same list view, so they share one list.
const std::vector<Picture>& ListPictures() {
    static const std::vector<Picture> pictures = [] {
        std::vector<Picture> all(std::begin(kTreePictures), std::end(kTreePictures));
        for (const Picture& format : kFormatPictures)
            if (std::none_of(all.begin(), all.end(),
                             [&](const Picture& known) { return known.key == format.key; }))
                all.push_back(format);
        return all;
    }();
    return pictures;
}

}  // namespace

UniqueImageList LoadListPictures(int pixels) {
    return LoadPictures(ListPictures(), pixels);
}

int ListPictureIndex(const std::wstring& key) {
    const std::vector<Picture>& all = ListPictures();
    const auto indexOf = [&](std::wstring_view wanted) {
        return std::find_if(all.begin(), all.end(),
                            [=](const Picture& known) { return known.key == wanted; });
    };
    const auto found = indexOf(key);
    return static_cast<int>((found != all.end() ? found : indexOf(L"Help")) - all.begin());
}

int ListPictureIndex(const ImageValue& image) {
    return ListPictureIndex(image.Key());
}

UniqueImageList LoadToolBarPictures(int pixels) {
    return LoadPictures(kToolbarPictures, pixels);
}

UniqueIcon LoadProgramIcon(int pixels) {
    return LoadPicture(kApplicationPicture, pixels);
}

UniqueIcon LoadTrayIcon(CaptureState state, int pixels) {
    return LoadPicture(kTrayPictures[static_cast<std::size_t>(state)], pixels);
}
