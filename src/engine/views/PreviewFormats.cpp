#include "engine/views/PreviewFormats.h"

#include <algorithm>
#include <initializer_list>

#include "engine/clipboard/FormatNames.h"

namespace {

const CFormat* FindById(const CFormats& formats, FormatNumber id) {
    for (const CFormat& format : formats)
        if (format.FormatId == id) return &format;
    return nullptr;
}

const CFormat* FindByName(const CFormats& formats, const wchar_t* name) {
    for (const CFormat& format : formats)
        if (format.FormatName == name) return &format;
    return nullptr;
}

const CFormat* FirstOf(std::initializer_list<const CFormat*> candidates) {
    const auto found = std::find_if(candidates.begin(), candidates.end(),
                                    [](const CFormat* format) { return format != nullptr; });
    return found != candidates.end() ? *found : nullptr;
}

// Leaves out the formats that only stand in for a missing text.
const CFormat* OwnFormat(const CFormats& formats, PreviewTab tab) {
    switch (tab) {
        case PreviewTab::Text:
            // Plain text has lost the letters that the code page cannot hold.
            return FirstOf({FindById(formats, kUnicodeFormat), FindById(formats, kTextFormat)});
        case PreviewTab::RichText:
            return FindByName(formats, L"Rich Text Format");
        default:
            return FirstOf({FindById(formats, kDibFormat), FindById(formats, kBitmapFormat),
                            FindByName(formats, L"PNG"), FindByName(formats, L"image/png")});
    }
}

}  // namespace

const CFormat* PreviewFormat(const CFormats& formats, PreviewTab tab) {
    const CFormat* const own = OwnFormat(formats, tab);
    if (own != nullptr || tab != PreviewTab::Text) return own;
    return FirstOf({FindByName(formats, L"HTML Format"), FindById(formats, kFilesFormat)});
}

PreviewTab TabToShow(const CFormats& formats, PreviewTab chosen) {
    for (const PreviewTab tab : {chosen, PreviewTab::Text, PreviewTab::RichText, PreviewTab::Picture})
        if (OwnFormat(formats, tab) != nullptr) return tab;
    // A browser's picture has HTML beside it that shows nothing.
    return PreviewFormat(formats, PreviewTab::Text) != nullptr ? PreviewTab::Text : chosen;
}

bool IsPng(const CFormat& format) {
    return format.FormatName == L"PNG" || format.FormatName == L"image/png";
}
