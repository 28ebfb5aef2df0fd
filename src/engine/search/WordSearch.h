#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/search/SearchQuery.h"
#include "engine/search/WordFinder.h"

// A bit for each word of a query, by its place.
using WordSet = std::uint32_t;

// How far letters are the same: with their marks, or also without them, which is tried when nothing fits.
enum class Likeness { Marks, Letters };

// A place in a text, in units of UTF-16.
struct TextPlace {
    std::size_t begin = 0;
    std::size_t size = 0;

    std::size_t End() const { return begin + size; }
};

// The words of a query, to be found in texts.
class WordSearch {
 public:
    WordSearch(const SearchQuery& query, Likeness likeness);

    // All words; those that only the name may hold; those that the names of files may hold, or any text.
    WordSet All() const { return all_; }
    WordSet OfName() const { return ofName_; }
    WordSet OfFiles() const { return ofFiles_; }
    WordSet Anywhere() const { return all_ & ~ofName_ & ~ofFiles_; }

    // Which of the `wanted` words the text holds. The text may come whole or in windows that overlap
    // by Overlap(). The place of the foremost of them goes into `first`, if there is one.
    WordSet FindIn(std::u16string_view text, WordSet wanted, TextPlace* first = nullptr);
    // Of all words that any text may hold, the place that begins first at or behind `from`.
    std::optional<TextPlace> Next(std::u16string_view text, std::size_t from);
    std::size_t Overlap() const { return overlap_; }

 private:
    // Nothing when the word is not there.
    std::optional<TextPlace> PlaceOf(const WordFinder& word, std::u16string_view text);

    std::vector<WordFinder> words_;
    WordSet all_ = 0;
    WordSet ofName_ = 0;
    WordSet ofFiles_ = 0;
    std::size_t overlap_ = 0;
    std::u16string folded_;  // of the text at hand, once a word needs it
    bool isFolded_ = false;
};

// One line of a text around a hit, as a list shows it.
struct HitLine {
    std::wstring text;
    // The hit in it, in characters of the line.
    std::size_t begin = 0;
    std::size_t size = 0;
};
// The most that stands behind a hit in its line, in units.
inline constexpr std::size_t kMostBehindHit = 80;
HitLine LineAround(std::u16string_view text, TextPlace hit);
// Whether the line alone shows that its text holds the `wanted` words, one of them where the mark is, which
// is as long as that one then. False says nothing. The words, and those that the line was made for, hold no
// blanks.
bool ShowsAll(HitLine& line, WordSearch& words, WordSet wanted);
