#include "engine/clipboard/CFormats.h"

#include "engine/clipboard/ClipboardTest.h"
#include "fake/ErrorNumberOf.h"

namespace {

std::unique_ptr<CFormat> Named(const wchar_t* name) {
    auto format = std::make_unique<CFormat>();
    format->FormatName = name;
    return format;
}

}  // namespace

class RequestTest : public ClipboardTest {
 protected:
    RequestTest() {
        RequestTrace = true;
        RequestTraceSink = [this](const std::wstring& line) { trace += line + L"|"; };
    }
    std::wstring Traced(FormatNumber id) {
        trace.clear();
        found = formats.SearchFormatIdByName(id);
        return trace;
    }

    CFormats formats;
    std::wstring trace;
    const CFormat* found = nullptr;
};

TEST_F(RequestTest, SearchFormatIdByName_MatchesTheNameThatTheNumberHasNow) {
    const FormatNumber richText = Registered("Rich Text Format");
    const FormatNumber html = Registered("HTML Format");
    formats.Add(Named(L"Text"));
    CFormat& stored = formats.Add(Named(L"Rich Text Format"));
    stored.FormatId = html;  // its number in another run
    formats.Add(Named(L"Rich Text Format"));

    EXPECT_EQ(Traced(richText),
              std::to_wstring(richText) + L": Rich Text Format|   Rich Text Format: Format vorhanden.|");
    EXPECT_EQ(found, &stored);
    EXPECT_EQ(Traced(html), std::to_wstring(html) + L": HTML Format|   " + std::to_wstring(html) +
                                L": Format nicht vorhanden.|");
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(Traced(1), L"   Text: Format vorhanden.|");
    EXPECT_EQ(found, &formats.Item(1));
    EXPECT_EQ(Traced(13), L"   13: Format nicht vorhanden.|");
}

TEST_F(RequestTest, SearchFormatIdByName_FindsNothingForNumbersWithoutAName) {
    formats.Add(Named(L"MAX"));
    formats.Add(Named(L""));
    EXPECT_EQ(Traced(0xC777), L"51063: unbekanntes Format-ID|");
    EXPECT_EQ(found, nullptr);
    // Not a standard format, deliberate: it comes back under the name "MAX" only.
    EXPECT_EQ(Traced(17), L"17: unbekanntes Format-ID|");
    EXPECT_EQ(found, nullptr);
    Traced(Registered("MAX"));
    EXPECT_EQ(found, &formats.Item(1));

    RequestTrace = false;
    EXPECT_EQ(Traced(1), L"");
    for (const std::int32_t nowhere : {0, 3})
        EXPECT_EQ(ErrorNumberOf([&] { formats.Item(nowhere); }), 9);
}
