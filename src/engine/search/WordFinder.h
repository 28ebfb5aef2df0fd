#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/search/Folding.h"

// Finds one word in texts of any length: blocks of a text are looked over for two of the word's letters at
// once, and only where both stand is the word compared.
class WordFinder {
 public:
    // The folding must outlive the finder. A word that folds to nothing is found nowhere.
    WordFinder(std::u16string_view word, const Folding& folding);

    static constexpr std::size_t kNowhere = std::u16string_view::npos;
    // The first place of the word in a text that is folded already, unless the folding goes by units: then in
    // the text as it is.
    std::size_t FindIn(std::u16string_view text) const;
    // How many units the word takes there.
    std::size_t Size() const { return folded_.size(); }
    const Folding& By() const { return folding_; }

 private:
    // The units that stand for one letter of the word; a letter that has fewer repeats one.
    static constexpr std::size_t kMostForms = 4;
    using Forms = std::array<char16_t, kMostForms>;
    Forms FormsOf(char16_t letter);
    bool IsAt(const char16_t* place) const;
    // The places of a block where the word may begin are those that are not 0.
    static constexpr std::size_t kBlock = 64;
    using Begins = std::array<std::uint16_t, kBlock>;
    bool MayBegin(const char16_t* block, Begins& begins) const;
    template <std::size_t forms>
    bool AnyBegins(const char16_t* block, Begins& begins) const;

    const Folding& folding_;
    std::u16string folded_;
    Forms first_{};
    Forms last_{};
    std::size_t forms_ = 1;      // how many of them differ
    bool tooManyForms_ = false;  // to be looked for at once
};
