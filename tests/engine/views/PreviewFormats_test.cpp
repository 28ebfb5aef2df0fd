#include "engine/views/PreviewFormats.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

void AddFormat(CFormats& formats, FormatNumber id, const wchar_t* name) {
    auto format = std::make_unique<CFormat>();
    format->FormatId = id;
    format->FormatName = name;
    formats.Add(std::move(format));
}

}  // namespace

TEST(PreviewFormats, TabToShow_KeepsTheChosenOneWhileItHasSomething) {
    using Named = std::vector<std::pair<FormatNumber, const wchar_t*>>;
    constexpr auto kText = PreviewTab::Text, kRich = PreviewTab::RichText, kPicture = PreviewTab::Picture;
    struct Case {
        Named formats;
        PreviewTab chosen;
        PreviewTab shown;
    };
    const Case cases[] = {
        {{{1, L"Text"}, {0xC004, L"Rich Text Format"}}, kRich, kRich},
        {{{1, L"Text"}, {0xC004, L"Rich Text Format"}}, kPicture, kText},
        {{{0xC004, L"Rich Text Format"}, {8, L"DIB"}}, kText, kRich},
        {{{0xC005, L"PNG"}}, kText, kPicture},
        {{{0xC006, L"image/png"}}, kRich, kPicture},
        {{{0xC008, L"HTML Format"}, {8, L"DIB"}}, kText, kPicture},
        {{{0xC008, L"HTML Format"}, {15, L"Files"}}, kPicture, kText},
        {{{0xC007, L"Private"}}, kRich, kRich},
        {{}, kPicture, kPicture},
    };
    for (const Case& each : cases) {
        CFormats formats;
        for (const auto& [id, name] : each.formats)
            AddFormat(formats, id, name);
        EXPECT_EQ(TabToShow(formats, each.chosen), each.shown) << formats.Count();
    }
}

TEST(PreviewFormats, PreviewFormat_TakesThePictureThatNeedsNoDecoding) {
    CFormats formats;
    for (const auto& [id, name] : {std::pair{FormatNumber{0xC005}, L"PNG"}, {2, L"Bitmap"}, {8, L"DIB"}}) {
        AddFormat(formats, id, name);
        EXPECT_EQ(PreviewFormat(formats, PreviewTab::Picture)->FormatId, id);
    }
}
