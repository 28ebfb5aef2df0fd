#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/search/Folding.h"

// Finds one word in texts of any length: blocks of a text are looked over for the rarest of the word's
// letters, those that have it for the second rarest as well, and only where both stand is the word compared.
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
    static constexpr std::size_t kMostForms = 4;
    // A letter of the word that a text is looked over for.
    struct Probe {
        std::size_t place = 0;                     // in the word
        std::size_t count = 1;                     // how many units stand for the letter
        std::array<char16_t, kMostForms> forms{};  // those units; one of them again where there are fewer
    };
    bool SetProbes();
    bool SetProbe(Probe& probe, std::size_t place);
    bool IsAt(const char16_t* place) const;
    // The places of a block where a probe stands are those that are not 0.
    static constexpr std::size_t kBlock = 64;
    using Places = std::array<std::uint16_t, kBlock>;
    static bool StandsIn(const Probe& probe, const char16_t* block);
    static void KeepPlaces(const Probe& probe, const char16_t* block, Places& places);
    std::size_t FindInBlock(const char16_t* block) const;

    const Folding& folding_;
    std::u16string folded_;
    Probe rare_;
    Probe second_;
    bool comparesAll_ = false;  // too many units stand for a letter to look for all of them at once
};
