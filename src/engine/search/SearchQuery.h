#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the user asks for, as it is typed: words in any order; "several words" as they stand; name:WORD and
// datei:WORD, typ:bild|text|html|rtf|datei and seit:DAYS narrow it.

// What kinds of content a clip holds.
enum ContentKind : std::uint8_t {
    kPictureContent = 1,
    kTextContent = 2,
    kHtmlContent = 4,
    kRichTextContent = 8,
    kFileContent = 16,
};
using ContentKinds = std::uint8_t;

struct SearchWord {
    enum class Place {
        Anywhere,
        Name,   // of the node
        Files,  // among the names of files that a clip holds
    };
    std::u16string text;
    Place place = Place::Anywhere;
    // As it stands: letters with marks are others than those without.
    bool exact = false;

    friend bool operator==(const SearchWord&, const SearchWord&) = default;
};

struct SearchQuery {
    // At most kMostWords; more are a problem.
    std::vector<SearchWord> words;
    // Each of these must hold one kind or another; all in one number of bits.
    std::vector<ContentKinds> types;
    // The clip is no older than so many days.
    std::optional<int> days;
    // What is wrong with it, for the user; nothing is found then.
    std::wstring problem;

    static constexpr std::size_t kMostWords = 32;

    bool IsEmpty() const { return words.empty() && types.empty() && !days && problem.empty(); }
    // Only a clip's file can tell: by its name alone nothing fits.
    bool NeedsFile() const;
    // Words without blanks, which any text may hold: whatever shows them all fits.
    bool IsOfPlainWords() const;
    // Whatever does not fit the other one does not fit this one either: it has more or longer words.
    bool Narrows(const SearchQuery& other) const;
    friend bool operator==(const SearchQuery&, const SearchQuery&) = default;
};

SearchQuery ParseSearchQuery(std::wstring_view text);
