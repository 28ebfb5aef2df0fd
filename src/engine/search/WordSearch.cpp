#include "engine/search/WordSearch.h"

#include <algorithm>

#include "platform/Text.h"

namespace {

constexpr std::size_t kMostBeforeHit = 40;
constexpr wchar_t kCut = 0x2026;
// A letter may have some marks of its own behind it.
constexpr std::size_t kUnitsPerLetter = 4;

bool EndsLine(char16_t unit) {
    return unit == u'\n' || unit == u'\r' || unit == 0x2028 || unit == 0x2029;
}

bool IsSecondHalf(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// Control characters and runs of blanks as one blank.
std::wstring AsOneLine(std::u16string_view text) {
    std::u16string line;
    for (const char16_t unit : text) {
        const char16_t shown = unit < u' ' ? u' ' : unit;
        if (shown != u' ' || (!line.empty() && line.back() != u' ')) line += shown;
    }
    return TextFromUtf16(std::u16string_view(line));
}

}  // namespace

WordSearch::WordSearch(const SearchQuery& query, Likeness likeness) {
    std::size_t longest = 0;
    for (std::size_t i = 0; i < query.words.size(); ++i) {
        const SearchWord& word = query.words[i];
        const bool byLetters = likeness == Likeness::Letters && !word.exact;
        words_.emplace_back(word.text, byLetters ? Folding::OfLetters() : Folding::OfCase());
        longest = std::max({longest, word.text.size(), words_.back().Size()});
        const WordSet bit = WordSet{1} << i;
        all_ |= bit;
        if (word.place == SearchWord::Place::Name) ofName_ |= bit;
        if (word.place == SearchWord::Place::Files) ofFiles_ |= bit;
    }
    overlap_ = kUnitsPerLetter * longest + kMostBeforeHit + kMostBehindHit;
}

std::optional<TextPlace> WordSearch::PlaceOf(const WordFinder& word, std::u16string_view text) {
    if (word.By().IsByUnits()) {
        const std::size_t begin = word.FindIn(text);
        if (begin == WordFinder::kNowhere) return std::nullopt;
        return TextPlace{begin, word.Size()};
    }
    if (!isFolded_) {
        folded_.clear();
        word.By().Append(text, folded_);
        isFolded_ = true;
    }
    const std::size_t begin = word.FindIn(folded_);
    if (begin == WordFinder::kNowhere) return std::nullopt;
    const std::size_t first = word.By().PlaceBefore(text, begin);
    const std::size_t last = word.By().PlaceBefore(text, begin + word.Size() - 1);
    return TextPlace{first, last + 1 - first};
}

WordSet WordSearch::FindIn(std::u16string_view text, WordSet wanted, TextPlace* first) {
    isFolded_ = false;
    WordSet found = 0;
    for (std::size_t i = 0; i < words_.size(); ++i) {
        const WordSet bit = WordSet{1} << i;
        if ((wanted & bit) == 0) continue;
        const auto place = PlaceOf(words_[i], text);
        if (!place) continue;
        if (first != nullptr && (found == 0 || place->begin < first->begin)) *first = *place;
        found |= bit;
    }
    return found;
}

std::optional<TextPlace> WordSearch::Next(std::u16string_view text, std::size_t from) {
    from = std::min(from, text.size());
    TextPlace place;
    if (FindIn(text.substr(from), all_ & ~ofName_, &place) == 0) return std::nullopt;
    place.begin += from;
    return place;
}

HitLine LineAround(std::u16string_view text, TextPlace hit) {
    hit.begin = std::min(hit.begin, text.size());
    hit.size = std::min(hit.size, text.size() - hit.begin);
    std::size_t begin = hit.begin;
    while (begin > 0 && hit.begin - begin < kMostBeforeHit && !EndsLine(text[begin - 1]))
        --begin;
    std::size_t end = hit.End();
    while (end < text.size() && end - hit.End() < kMostBehindHit && !EndsLine(text[end]))
        ++end;
    const bool cutInFront = begin > 0 && !EndsLine(text[begin - 1]);
    const bool cutBehind = end < text.size() && !EndsLine(text[end]);
    if (cutInFront && begin < hit.begin && IsSecondHalf(text[begin])) ++begin;
    if (cutBehind && IsSecondHalf(text[end])) ++end;

    HitLine line;
    std::wstring front = AsOneLine(text.substr(begin, hit.begin - begin));
    if (cutInFront) front = kCut + front;
    const std::wstring marked = AsOneLine(text.substr(hit.begin, hit.size));
    std::wstring behind = AsOneLine(text.substr(hit.End(), end - hit.End()));
    // The blank in front of a word went with those in front of the line.
    if (hit.End() < end && text[hit.End()] <= u' ') behind.insert(behind.begin(), L' ');
    line.begin = front.size();
    line.size = marked.size();
    line.text = front + marked + behind;
    if (cutBehind) line.text += kCut;
    return line;
}

bool ShowsAll(HitLine& line, WordSearch& words, WordSet wanted) {
    const std::u16string front = Utf16FromText(line.text.substr(0, line.begin));
    std::u16string text = front + Utf16FromText(line.text.substr(line.begin));
    // What says that the line is cut is none of the text.
    std::replace(text.begin(), text.end(), char16_t{kCut}, u' ');
    const std::u16string_view marked = std::u16string_view(text).substr(front.size());
    TextPlace place;
    if (words.FindIn(marked, wanted, &place) == 0 || place.begin != 0) return false;
    if (words.FindIn(text, wanted) != wanted) return false;
    line.size = TextFromUtf16(marked.substr(0, place.size)).size();
    return true;
}
