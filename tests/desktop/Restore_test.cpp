#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// Clips go back on the clipboard and are read by another program: this one.

namespace {

class Restore : public ProgramTest {
 protected:
    void TakeClip(const std::vector<ClipboardOffer>& offers) {
        StartWithProfile();
        SnapOf(offers);
        // What is read later cannot be what lay there before.
        PutFormats({{FormatNumber(L"NXClip Desktop Other"), "etwas anderes"}});
    }
    void ExpectOnClipboard(const std::vector<ClipboardOffer>& offers) {
        for (const ClipboardOffer& offer : offers) {
            const std::optional<std::string> bytes = ReadFormatNow(offer.format);
            EXPECT_TRUE(bytes == offer.bytes)
                << Utf8(FormatName(offer.format)) << ": "
                << (bytes ? std::to_string(bytes->size()) + " bytes" : "nothing");
        }
    }
};

TEST_F(Restore, Put_GivesAnotherProgramEveryFormat) {
    const std::vector<ClipboardOffer> offers = {
        {Private(), std::string(300000, '\xA5')},
        {CF_UNICODETEXT, std::string("\xE4\0\xAC\x20\0\0", 6)},
        {FormatNumber(L"Rich Text Format"), std::string("{\\rtf1 x}\0rest", 14)},
    };
    TakeClip(offers);
    const std::vector<ClipRecord> records = ReadClipFile(ClipFileAt(1));
    nxclip_.PutOnClipboard(L"Profil\\Clip");

    std::vector<UINT> formats;
    {
        const OpenedClipboard clipboard;
        EXPECT_EQ(GetClipboardOwner(), nxclip_.Main().Handle());
        formats = FormatsOnClipboard();
    }
    // In the clip's order, the program's mark behind them.
    ASSERT_GT(formats.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i)
        EXPECT_EQ(formats[i], static_cast<UINT>(records[i].format));
    EXPECT_EQ(formats[records.size()], Marker());
    EXPECT_EQ(ReadFormatNow(Marker()), std::string("\1\0\0\0", 4));
    ExpectOnClipboard(offers);
    // Once more: the second reader gets what the first got.
    ExpectOnClipboard(offers);
}

TEST_F(Restore, DoubleClick_PutsTheClipOnTheClipboard) {
    TakeClip(PrivateOffers());
    const DWORD before = GetClipboardSequenceNumber();
    BringToFront(nxclip_.Main());
    DoubleClick(nxclip_.Tree().PlaceOf(L"Profil\\Clip"));
    WaitFor("the clipboard to change", [&] { return GetClipboardSequenceNumber() != before; });
    ExpectOnClipboard(PrivateOffers());
}

TEST_F(Restore, Quit_LeavesTheWholeClipOnTheClipboard) {
    leavesWhole_ = false;
    const std::vector<ClipboardOffer> offers = {{Private(), std::string(300000, '\x5A')},
                                                {CF_TEXT, std::string("bleibt\0", 7)}};
    TakeClip(offers);
    nxclip_.PutOnClipboard(L"Profil\\Clip");
    EXPECT_EQ(nxclip_.Quit(), 0u);
    std::filesystem::remove(ClipFileAt(1));
    ExpectOnClipboard(offers);
}

}  // namespace
