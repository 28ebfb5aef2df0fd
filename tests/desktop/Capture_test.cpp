#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// Other programs' content becomes clips.

namespace {

class Capture : public ProgramTest {};

TEST_F(Capture, Snap_KeepsEveryFormatInItsOrder) {
    StartWithProfile();
    const std::vector<ClipboardOffer> offers = {
        {CF_UNICODETEXT, std::string("G\0r\0\xFC\0n\0\0\0", 10)},
        {Private(), std::string(200000, '\xA5')},
        {FormatNumber(L"Rich Text Format"), std::string("{\\rtf1 x}\0rest", 14)}};
    SnapOf(offers);
    EXPECT_EQ(TreeOutline(), L"Profil [Camera] open\n  Clip [Clip]\n");
    EXPECT_EQ(nxclip_.Title(), L"Formate von \"Profil\\Clip\"");

    const std::vector<ClipRecord> records = ReadClipFile(ClipFileAt(1));
    ASSERT_GE(records.size(), offers.size());
    for (std::size_t i = 0; i < offers.size(); ++i) {
        EXPECT_EQ(records[i].format, static_cast<std::int32_t>(offers[i].format));
        EXPECT_TRUE(records[i].bytes == offers[i].bytes) << records[i].name;
    }
    EXPECT_EQ(records[0].name, "Unicode");
    EXPECT_EQ(records[1].name, "NXClip Desktop Test");
    // The list shows what the file holds.
    const std::vector<std::wstring> names = nxclip_.List().Names();
    ASSERT_EQ(names.size(), records.size());
    EXPECT_EQ(names[1], L"NXClip Desktop Test");
    EXPECT_EQ(nxclip_.List().Row(1).back(), L"200000");
    EXPECT_EQ(nxclip_.StatusBar().Text(), std::to_wstring(records.size()) + L" Element(e)");
    // And the tree is on disk already.
    EXPECT_TRUE(std::filesystem::exists(nxclip_.ProfileDirectory() / L"nxclip.nxp"));
}

TEST_F(Capture, Automatic_TakesEachChangeWhileItIsOn) {
    StartWithProfile();
    PutFormats(PrivateOffers());
    nxclip_.SetAutoDetect(true);
    for (int clip = 1; clip <= 3; ++clip) {
        const std::set<HTREEITEM> before = nxclip_.Items();
        PutFormats({{Private(), "Nummer " + std::to_string(clip)}});
        nxclip_.WaitForNewClip(before);
        EXPECT_EQ(ReadClipFile(ClipFileAt(clip)).front().bytes, "Nummer " + std::to_string(clip));
    }
    nxclip_.SetAutoDetect(false);
    PutFormats({{Private(), "ungewollt"}});
    // A command is done in its turn, behind the notice of the change.
    SnapOf({{Private(), "gewollt"}});
    EXPECT_EQ(ReadClipFile(ClipFileAt(4)).front().bytes, "gewollt");
    EXPECT_EQ(nxclip_.Tree().Lines().size(), 5u);
}

}  // namespace
