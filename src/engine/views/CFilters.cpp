#include "engine/views/CFilters.h"

#include "platform/RuntimeError.h"

namespace {

const CFilter kBitmaps{L"*.bmp;*.dib", L"Bitmap-Bilder (*.bmp;*.dib)"};
const CFilter kGif{L"*.gif", L"GIF-Bilder (*.gif)"};
const CFilter kIcons{L"*.ico;*.cur", L"Icons (*.ico;*.cur)"};
const CFilter kJpeg{L"*.jpg", L"JPEG-Bilder (*.jpg)"};
const CFilter kPcx{L"*.pcx", L"PCX-Bilder (*.pcx)"};
const CFilter kTga{L"*.tga", L"TGA-Bilder (*.tga)"};
const CFilter kTiff{L"*.tif", L"TIFF-Bilder (*.tif)"};
const CFilter kMetafiles{L"*.emf;*.wmf", L"Metafiles (*.emf;*.wmf)"};

// "Bildateien" is spelled like this in all three.
CFilter AllPictures(const std::wstring& patterns) {
    return {patterns, L"Alle Bildateien (" + patterns + L")"};
}

std::vector<CFilter> Preset(int list) {
    switch (list) {
        case 1:
            // Icons and cursors belong to the last one without a filter of their own: deliberate.
            return {kBitmaps,
                    kGif,
                    kJpeg,
                    kPcx,
                    kTga,
                    kTiff,
                    kMetafiles,
                    AllPictures(L"*.bmp;*.dib;*.gif;*.jpg;*.pcx;*.tga;*.tif;*.ico;*.cur;*.wmf;*.emf")};
        case 2:
            return {kBitmaps, kGif,       kIcons,
                    kJpeg,    kMetafiles, AllPictures(L"*.bmp;*.cur;*.dib;*.emf;*.gif;*.ico;*.jpg;*.wmf")};
        case 3:
            return {kBitmaps,   kGif,
                    kJpeg,      kPcx,
                    kTga,       kTiff,
                    kMetafiles, AllPictures(L"*.bmp;*.dib;*.gif;*.jpg;*.pcx;*.tga;*.tif;*.wmf;*.emf")};
        default:
            return {};
    }
}

}  // namespace

CFilter& CFilters::Add(const std::wstring& pattern, const std::wstring& description) {
    return filters_.emplace_back(CFilter{pattern, description});
}

const CFilter& CFilters::Item(int position) const {
    if (position < 1 || position > Count()) throw RuntimeError(ErrorNumber::IndexOutOfRange);
    return filters_[static_cast<std::size_t>(position) - 1];
}

void CFilters::Remove(int position) {
    Item(position);  // throws when there is none
    filters_.erase(filters_.begin() + (position - 1));
}

void CFilters::AddPreset(int list) {
    const std::vector<CFilter> preset = Preset(list);
    filters_.insert(filters_.end(), preset.begin(), preset.end());
}
