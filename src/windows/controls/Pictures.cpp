#include "windows/controls/Pictures.h"

#include <algorithm>
#include <span>
#include <vector>

#include "resources/pictures.h"

namespace {

UniqueIcon LoadPicture(const Picture& picture, int pixels) {
    return UniqueIcon(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), picture.resource, IMAGE_ICON,
                                                    pixels, pixels, LR_DEFAULTCOLOR)));
}

UniqueImageList LoadPictures(std::span<const Picture> pictures, int pixels) {
    UniqueImageList list(
        ImageList_Create(pixels, pixels, ILC_COLOR32 | ILC_MASK, static_cast<int>(pictures.size()), 0));
    for (const Picture& picture : pictures) {
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
