#include "engine/search/VisibleText.h"

#include <gtest/gtest.h>

#include "platform/Text.h"

namespace {

// Whole and byte by byte: it must make no difference.
std::wstring Shown(TextForm form, std::string_view bytes) {
    std::u16string whole;
    const auto atOnce = VisibleText::Of(form);
    atOnce->Take(bytes, whole);
    atOnce->End(whole);
    std::u16string pieces;
    const auto byteByByte = VisibleText::Of(form);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        byteByByte->Take(bytes.substr(i, 1), pieces);
    byteByByte->End(pieces);
    EXPECT_EQ(whole, pieces) << bytes;
    return TextFromUtf16(whole);
}

std::wstring Html(std::string_view bytes) {
    return Shown(TextForm::Html, bytes);
}

std::wstring Rtf(std::string_view bytes) {
    return Shown(TextForm::RichText, bytes);
}

}  // namespace

TEST(VisibleText, Html_ShowsWhatABrowserShows) {
    EXPECT_EQ(Html("<p>Wo<b>rt</b>  und\r\n noch <i>eins</i></p><p>Zeile</p>"),
              L"Wort und noch eins\nZeile\n");
    EXPECT_EQ(Html("a<script>if (x</p) '<b>'</script>b<style>p{}</STYLE >c<!-- d > -- e -->f<!x>g"),
              L"abcfg");
    EXPECT_EQ(Html("<a href='x>y' title=it's>k</a> 1 < 2 &lt;3</x"), L"k 1 < 2 <3");
    EXPECT_EQ(Html("Stra&szlig;e &uuml;&#252;&#xFC;&euro; &amp;amp; &nope; a&b &#55555;"),
              L"Straße üüü€ &amp; &nope; a&b &#55555;");
    EXPECT_EQ(Html("gr\xC3\xBC\xC3\x9F dich"), L"grüß dich");
    EXPECT_EQ(Html("<pre>a\r\n  b</pre>c  d<tr><td>1</td><td>2</td></tr>"), L"a\n  b\nc d\n1 2\n");
}

TEST(VisibleText, Html_BeginsAndEndsWhereTheCopyDoes) {
    const std::string header =
        "Version:0.9\r\nStartHTML:0081\r\nEndHTML:0120\r\nStartFragment:0086\r\nEndFragment:";
    ASSERT_EQ(header.size(), 75u);
    EXPECT_EQ(Html(header + "95\r\n<html>x<b>ja</b>nein</html>"), L"ja");
    EXPECT_EQ(Html(header + "-1\r\n<html>x<b>ja</b></html>"), L"xja") << "places that are none";
    EXPECT_EQ(Html("Version ohne Zeilen <b>x</b>"), L"Version ohne Zeilen x");
    EXPECT_EQ(Html("nur Text"), L"nur Text");
}

TEST(VisibleText, RichText_ShowsWhatAReaderShows) {
    EXPECT_EQ(Rtf("{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fcharset0 Arial;}}{\\*\\generator x;}"
                  "{\\info{\\title t}}\\f0 Stra\\'dfe \\b fe\\b0 tt\\par \\u252?ber\\uc0\\u8364 x"
                  "{\\v weg}\\~\\_\\-{\\field{\\*\\fldinst LINK}{\\fldrslt Ziel}}{\\pict 0102\\bin3 }}}}"
                  "\\\\\\{\\}\r\n\\line\\tab z}ende"),
              L"Straße fett\nüber€x -Ziel\\{}\n\tz");
    EXPECT_EQ(Rtf("{\\rtf1\\uc2 a\\u-10179\\'81\\'82\\u-8704??b\\u196 {x}c}"), L"a😀bÄxc") << "two stand in";
    EXPECT_EQ(Rtf("{\\rtf1 offen"), L"offen") << "without its end";
    EXPECT_EQ(Rtf(std::string("{\\rtf1 a\0b}", 11)), L"a");
    std::string deep(5000, '{');
    EXPECT_EQ(Rtf("{\\rtf1 " + deep + "innen" + std::string(5000, '}') + "aussen}"), L"innenaussen");
}

TEST(VisibleText, Files_AreNamedLineByLine) {
    const std::string wide(
        "\x14\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0"
        "C\0:\0\\\0\xC4\0\0\0b\0\0\0\0\0z\0",
        38);
    EXPECT_EQ(Shown(TextForm::Files, wide), L"C:\\Ä\nb\n");
    const std::string plain("\x16\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0--C:\\\xC4\0b\0\0z", 30);
    EXPECT_EQ(Shown(TextForm::Files, plain), L"C:\\Ä\nb\n");
}

TEST(VisibleText, Guessed_IsUtf16Utf8OrTheCodePage) {
    EXPECT_EQ(Shown(TextForm::Guessed, std::string("\xFF\xFEg\0\xFC\0", 6)).substr(1), L"gü");
    EXPECT_EQ(Shown(TextForm::Guessed, std::string("e\0i\0n\0 \0T\0e\0x\0t\0 \0\xFC\0\0\0x\0", 24)),
              L"ein Text ü");
    EXPECT_EQ(Shown(TextForm::Guessed, "gr\xC3\xBC\xC3\x9F dich \xE2\x82\xAC und alle"),
              L"grüß dich € und alle");
    EXPECT_EQ(Shown(TextForm::Guessed, "gr\xFC\xDF dich"), L"grüß dich");
}
