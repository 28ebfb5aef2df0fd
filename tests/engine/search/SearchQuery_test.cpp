#include "engine/search/SearchQuery.h"

#include <gtest/gtest.h>

namespace {

using Place = SearchWord::Place;

}  // namespace

TEST(SearchQuery, Parse_TakesWordsQuotesAndNarrowing) {
    const SearchQuery query = ParseSearchQuery(
        L" Angebot \"zwei Worte\"  NAME:Brief datei:\"Mein Bild\" typ:bild|HTML typ:t seit:7 seit:30 "
        L"http://x name: ");
    const std::vector<SearchWord> words = {{u"Angebot", Place::Anywhere, false},
                                           {u"zwei Worte", Place::Anywhere, true},
                                           {u"Brief", Place::Name, false},
                                           {u"Mein Bild", Place::Files, true},
                                           {u"http://x", Place::Anywhere, false}};
    EXPECT_EQ(query.words, words);
    EXPECT_EQ(query.types, (std::vector<ContentKinds>{kPictureContent | kHtmlContent, kTextContent}));
    EXPECT_EQ(query.days, 7);
    EXPECT_EQ(query.problem, L"");
    EXPECT_TRUE(query.NeedsFile());
    EXPECT_EQ(ParseSearchQuery(L"\"nicht zu Ende").words,
              (std::vector<SearchWord>{{u"nicht zu Ende", Place::Anywhere, true}}));
    EXPECT_FALSE(ParseSearchQuery(L"name:x y").NeedsFile());
}

TEST(SearchQuery, Parse_NamesWhatIsWrong) {
    for (const wchar_t* text : {L"typ:bilt", L"seit:gestern", L"seit:-1", L"seit:99999999999"})
        EXPECT_NE(ParseSearchQuery(text).problem, L"") << text;
    for (const wchar_t* text : {L"", L"  ", L"typ:", L"seit:", L"\"\"", L"typ:|"})
        EXPECT_TRUE(ParseSearchQuery(text).IsEmpty()) << text;
    std::wstring many;
    for (int i = 0; i < 33; ++i)
        many += L"w ";
    EXPECT_NE(ParseSearchQuery(many).problem, L"");
}
