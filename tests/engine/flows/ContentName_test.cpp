#include "engine/flows/ContentName.h"

#include "engine/clipboard/ClipboardTest.h"
#include "engine/flows/SnapFlow.h"

namespace {

using namespace std::string_literals;

class ContentNameTest : public ClipboardTest {
 protected:
    std::wstring NameOf(const std::string& records, int count = 1) {
        fake.files.SetBytes(kClip, records);
        return ShortName(ClipNameOfText(NameOfContent(kClip, count)), 60);
    }
    static std::string Files(const std::string& names) {
        return RecordBytes(15, "Files", "\x14\0\0\0"s + std::string(16, '\0') + names + '\0');
    }

    const std::wstring kClip = L"C:\\clip.nxc";
};

TEST_F(ContentNameTest, NameOfContent_SaysWhatAClipWithoutTextHolds) {
    const std::string dib = RecordBytes(
        8, "DIB", "\x28\0\0\0\x02\0\0\0\x01\0\0\0\x01\0\x20\0"s + std::string(24, '\0') + "12345678");
    const std::string rtf =
        RecordBytes(0xC0AA, "Rich Text Format", R"({\rtf1{\fonttbl{\f0 Arial;}}Gr\'fc\'dfe  an {\b alle}})");
    const std::string png =
        RecordBytes(0xC0AB, "PNG", "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x03\x20\0\0\x02\x58"s);
    EXPECT_EQ(NameOf(Files("C:\\a\\Angebot.pdf\0C:\\b.txt\0C:\\c\0"s)), L"3 Dateien: Angebot.pdf ...");
    EXPECT_EQ(NameOf(Files("C:\\a\\Angebot.pdf\0"s) + dib, 2), L"Angebot.pdf");
    EXPECT_EQ(NameOf(dib + rtf, 2), L"Grüße an alle");
    EXPECT_EQ(NameOf(dib), L"Bild 2 x 1");
    EXPECT_EQ(NameOf(png), L"Bild 800 x 600");
    EXPECT_EQ(NameOf(RecordBytes(0xC0AC, "image/svg+xml", "<svg/>") + dib, 2), L"Zeichnung (SVG)");
    EXPECT_EQ(NameOf(RecordBytes(0xC0AD, "Fremdes", "abc")), L"");
    EXPECT_EQ(NameOfContent(L"C:\\fehlt.nxc", 1), L"");
    for (std::size_t size = 0; size < dib.size(); ++size)
        EXPECT_EQ(NameOf(dib.substr(0, size)), L"") << size;
}

TEST_F(ContentNameTest, ShortName_HasOneBlankForMany) {
    EXPECT_EQ(ShortName(L"  a   b  c ", 0), L"a b c");
    EXPECT_EQ(ShortName(L"ab   cd", 3), L"ab");
}

}  // namespace
