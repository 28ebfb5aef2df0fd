#include "platform/Text.h"

#include <vector>

#include "contract/ContractTest.h"

namespace {

class TextContract : public ContractTest {
 protected:
    void SetUp() override {
        if (home->CodePage() != 1252) GTEST_SKIP() << "the texts are those of code page 1252";
    }
};

}  // namespace

TEST_F(TextContract, Ansi_EveryByteComesBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    const std::wstring text = TextFromAnsi(bytes);
    ASSERT_EQ(text.size(), 256u);
    EXPECT_EQ(AnsiFromText(text), bytes);
    EXPECT_TRUE(FitsAnsi(text));
    EXPECT_EQ(TextFromAnsi("\x80\xE4\xDF\x9F\x8A"), L"€äßŸŠ");
    EXPECT_EQ(TextFromAnsi(""), L"");
    EXPECT_EQ(AnsiFromText(L""), "");
}

TEST_F(TextContract, Ansi_UnknownCharactersBecomeTheDefaultNotASimilarOne) {
    EXPECT_EQ(AnsiFromText(L"aŁĀ日z"), "a???z");
    EXPECT_FALSE(FitsAnsi(L"Ł"));
    EXPECT_FALSE(FitsAnsi(L"a日"));
    EXPECT_TRUE(FitsAnsi(L"?"));
    EXPECT_TRUE(FitsAnsi(L""));
}

TEST_F(TextContract, LettersBeyondAnsi_AreTakenWhole) {
    EXPECT_EQ(FirstLetterBeyondAnsi(L"äß€"), L"");
    EXPECT_EQ(FirstLetterBeyondAnsi(L"Äpfel 😀 日"), L"😀");
    EXPECT_EQ(WithoutLettersBeyondAnsi(L"日Äpfel 😀€Ł"), L"Äpfel €");
    EXPECT_EQ(WithoutLettersBeyondAnsi(L"😀 a 日 本  b 😀"), L"a b ");
}

TEST_F(TextContract, TextFromUtf16_JoinsTheHalvesOfALetter) {
    EXPECT_EQ(TextFromUtf16(std::string("\xC4\0\x3D\xD8\0\xDEz\0!", 9)), L"Ä😀z");
    EXPECT_EQ(TextFromUtf16(std::string("\x3D\xD8", 2)), std::wstring(1, static_cast<wchar_t>(0xD83D)));
    EXPECT_EQ(TextFromUtf16(""), L"");
}

TEST_F(TextContract, Case_FollowsGermanRules) {
    EXPECT_EQ(UpperCase(L"straße äöü àéîõñç ÿœšž 1&"), L"STRAßE ÄÖÜ ÀÉÎÕÑÇ ŸŒŠŽ 1&");
    EXPECT_EQ(LowerCase(L"STRASSE ÄÖÜ ÀÉÎÕÑÇ ŸŒŠŽ ×"), L"strasse äöü àéîõñç ÿœšž ×");
    EXPECT_EQ(UpperCase(L"÷"), L"÷");
    EXPECT_EQ(UpperCase(L""), L"");
    EXPECT_EQ(UpperCase(std::wstring(L"a\0b", 3)), std::wstring(L"A\0B", 3));
}

TEST_F(TextContract, PlainLetters_LoseTheirMarksAndStandApart) {
    EXPECT_EQ(PlainLetters(L"Straße ÄÖÜ äöü Æsop Œuvre œ éñçŠÿÅ"), L"Strasse AOU aou AEsop OEuvre oe encSyA");
    EXPECT_EQ(PlainLetters(L"u\x0308"
                           L"ber e\x0301"),
              L"uber e");
    EXPECT_EQ(PlainLetters(std::wstring(L"\xDF\0\xFC\0z 1\x20AC\x0416", 9)),
              std::wstring(L"ss\0u\0z 1\x20AC\x0416", 10));
    EXPECT_EQ(PlainLetters(L"\xE4\xFDD0\xFC"), L"a\xFDD0u") << "one of them is no character";
    EXPECT_EQ(PlainLetters(L""), L"");
}

TEST_F(TextContract, CodePages_AreTheNamedOnes) {
    EXPECT_EQ(TextFromCodePage(1252, "\xFC\x80"), L"ü€");
    EXPECT_EQ(TextFromCodePage(65001, "\xC3\xBC\xE2\x82\xAC"), L"ü€");
    EXPECT_EQ(TextFromCodePage(65001, ""), L"");
    EXPECT_EQ(TextFromCodePage(47110815, "\xFC"), L"ü");
    EXPECT_EQ(Utf16FromText(L"ü😀"), u"ü😀");
    EXPECT_EQ(TextFromUtf16(u"ü😀"), L"ü😀");
}

TEST_F(TextContract, CompareNoCase_SortsAsADictionary) {
    const std::vector<const wchar_t*> sorted = {L"",   L"10",  L"2",        L"Äpfel",  L"apfelmus", L"Birne",
                                                L"Öl", L"oma", L"strassen", L"Strauß", L"Z"};
    for (std::size_t i = 0; i < sorted.size(); ++i)
        for (std::size_t k = i + 1; k < sorted.size(); ++k) {
            EXPECT_LT(CompareNoCase(sorted[i], sorted[k]), 0) << i << " " << k;
            EXPECT_GT(CompareNoCase(sorted[k], sorted[i]), 0) << i << " " << k;
        }
}
