// A typed query, and a text to be searched by it: each word is found where a search letter by letter finds
// it, and what is shown of it lies in the text. Input: the query up to a zero unit, the text, in UTF-16.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Require.h"
#include "engine/search/WordSearch.h"
#include "platform/Text.h"

namespace {

void CompareWithPlainSearch(const SearchWord& word, const std::u16string& text, const Folding& folding) {
    const WordFinder finder(word.text, folding);
    const std::u16string folded = folding.Fold(text);
    const std::u16string wanted = folding.Fold(word.text);
    const std::size_t plain = wanted.empty() ? std::u16string::npos : folded.find(wanted);
    Require(finder.FindIn(folding.IsByUnits() ? text : folded) == plain);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring input = TextFromUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::size_t zero = std::min(input.find(L'\0'), input.size());
    const SearchQuery query = ParseSearchQuery(input.substr(0, zero));
    Require(query.words.size() <= SearchQuery::kMostWords);
    const std::u16string text = Utf16FromText(input.substr(zero));
    for (const SearchWord& word : query.words) {
        CompareWithPlainSearch(word, text, Folding::OfCase());
        CompareWithPlainSearch(word, text, Folding::OfLetters());
    }
    for (const Likeness likeness : {Likeness::Marks, Likeness::Letters}) {
        WordSearch search(query, likeness);
        TextPlace place;
        if (search.FindIn(text, search.All(), &place) == 0) continue;
        Require(place.size > 0 && place.End() <= text.size());
        const HitLine line = LineAround(text, place);
        Require(line.begin + line.size <= line.text.size());
    }
    return 0;
}
