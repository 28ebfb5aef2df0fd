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

}  // namespace

const CFormat* PreviewFormat(const CFormats& formats, PreviewTab tab) {
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

PreviewTab TabToShow(const CFormats& formats, PreviewTab chosen) {
    for (const PreviewTab tab : {chosen, PreviewTab::Text, PreviewTab::RichText, PreviewTab::Picture})
        if (PreviewFormat(formats, tab) != nullptr) return tab;
    return chosen;
}

bool IsPng(const CFormat& format) {
    return format.FormatName == L"PNG" || format.FormatName == L"image/png";
}
