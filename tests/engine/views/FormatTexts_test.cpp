#include "engine/views/FormatTexts.h"

#include <gtest/gtest.h>

TEST(FormatTexts, DescriptionOf_TellsWhatTheTableDoesNot) {
    FillFormatDescriptions();
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"DIB", L"Geräteunabhängige Bitmap"},
        {L"MAX", L"Geräteunabhängige Bitmap (Version 5)"},
        {L"text/html", L"Webseite (HTML)"},
        {L"text/plain;charset=utf-8", L"Text ohne Formate"},
        {L"application/x-openoffice-biff-8;windows_formatname=\"Biff8\"", L"Excel-Tabelle (Biff8)"},
        {L"a;windows_formatname=\"", L"<unbekannt>"},
        {L"html format", L"<unbekannt>"},
        {L"Enhanced Metafile", L"<unbekannt>"},
        {L"", L"<unbekannt>"},
    };
    for (const auto& [name, description] : cases)
        EXPECT_EQ(DescriptionOf(name).Description, description);
}

TEST(FormatTexts, SizeText_IsShortAndNeverMoreThanAThousand) {
    const std::pair<std::int64_t, const wchar_t*> cases[] = {
        {0, L"0 Bytes"},        {1023, L"1.023 Bytes"}, {1024, L"1,0 KB"},
        {10'188, L"9,9 KB"},    {10'240, L"10 KB"},     {1'048'575, L"1,0 MB"},
        {1'000'000, L"977 KB"}, {38'400'054, L"37 MB"}, {2'147'483'647, L"2.048 MB"},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(SizeText(bytes), text);
    EXPECT_EQ(ExactSizeText(38'400'054), L"38.400.054 Bytes");
    EXPECT_EQ(ExactSizeText(999), L"999 Bytes");
}
