#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What makes two letters the same in a search, by the system's own rules.
class Folding {
 public:
    // Upper and lower case are alike. Each unit of 16 bits becomes one.
    static const Folding& OfCase();
    // So are letters with marks and without, and ligatures and what they stand for. A unit becomes any
    // number.
    static const Folding& OfLetters();

    Folding(const Folding&) = delete;
    Folding& operator=(const Folding&) = delete;

    // True when texts can be compared unit by unit.
    bool IsByUnits() const { return expansions_.empty(); }
    // What a unit becomes; kSeveral unless that is one other.
    char16_t Of(char16_t unit) const { return units_[unit]; }
    // All units that become this one.
    std::u16string SourcesOf(char16_t folded) const;
    void Append(std::u16string_view text, std::u16string& folded) const;
    std::u16string Fold(std::u16string_view text) const;
    // The place in `text` of what became the unit at `place` of the folded text.
    std::size_t PlaceBefore(std::u16string_view text, std::size_t place) const;

 private:
    enum class Kind { Case, Letters };
    explicit Folding(Kind kind);
    std::u16string_view ExpansionOf(char16_t unit) const;

    // No character.
    static constexpr char16_t kSeveral = 0xFFFF;

    std::u16string units_;  // what each becomes
    // Of those that become another one, in the order of what they become: that one and the unit.
    std::vector<std::pair<char16_t, char16_t>> changed_;
    // Of those that become none or several, all in one, in the order of the units; where each begins.
    std::u16string expansions_;
    std::u16string expanded_;
    std::u32string begins_;
};
