#include "engine/views/BrokenLines.h"

#include <gtest/gtest.h>

namespace {

TEST(BrokenLines, Append_BreaksLongLinesWhereverThePiecesEndAndGivesTheTextBack) {
    const std::size_t most = BrokenLines::kLongestLine;
    // A line that just fits, one of several breaks, and a letter of two halves where the first would be.
    const std::wstring text = std::wstring(most, L'a') + L"\r\n" + std::wstring(most - 1, L'b') +
                              L"\xD83D\xDE00" + std::wstring(2 * most, L'c') + L"\r\nEnde";
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, most, most + 1, text.size()}) {
        BrokenLines lines;
        std::wstring shown;
        for (std::size_t from = 0; from < text.size(); from += piece)
            shown += lines.Append(text.substr(from, piece));
        EXPECT_EQ(shown.substr(0, most + 2), text.substr(0, most + 2));
        EXPECT_EQ(shown.substr(most + 2, most + 3), text.substr(most + 2, most + 1) + L"\r\n")
            << "no letter is torn";
        EXPECT_EQ(shown.size(), text.size() + 4);
        EXPECT_EQ(lines.Original(shown, 0), text);
        EXPECT_FALSE(lines.HasBreaks(0, 2 * most + 3));
        for (std::size_t place = 0; place <= text.size(); ++place) {
            const std::size_t at = lines.ShownPlace(place);
            ASSERT_EQ(lines.OriginalPlace(at), place);
            ASSERT_EQ(shown.substr(at, 1), text.substr(place, 1));
            if (place % 89 != 0) continue;
            ASSERT_EQ(lines.Original(shown.substr(at), at), text.substr(place));
            ASSERT_EQ(lines.Original(shown.substr(0, at), 0), text.substr(0, place));
        }
        const std::size_t inBreak = 2 * most + 4;
        EXPECT_TRUE(lines.HasBreaks(inBreak, inBreak + 1));
        EXPECT_EQ(lines.Original(shown.substr(inBreak), inBreak), text.substr(lines.OriginalPlace(inBreak)));
    }
    BrokenLines words;
    EXPECT_EQ(words.Append(std::wstring(950, L'a') + L" Wort").substr(951), L"\r\nWort");
}

}  // namespace
