#include "engine/search/Folding.h"

#include <algorithm>

#include "platform/Text.h"

namespace {

constexpr std::size_t kUnits = 0x10000;

// Halves of rare letters mean nothing by themselves, and the last one stands for what is none.
bool IsLetterByItself(std::size_t unit) {
    return unit != 0 && (unit < 0xD800 || unit > 0xDFFF) && unit < 0xFFFE;
}

std::u16string AllUnits() {
    std::u16string units(kUnits, u'\0');
    for (std::size_t unit = 0; unit < kUnits; ++unit)
        units[unit] = static_cast<char16_t>(unit);
    return units;
}

// The letters with a zero behind each: the system answers for all of them in one call.
std::wstring LettersApart() {
    std::wstring letters;
    letters.reserve(2 * kUnits);
    for (std::size_t unit = 0; unit < kUnits; ++unit) {
        if (!IsLetterByItself(unit)) continue;
        letters += static_cast<wchar_t>(unit);
        letters += L'\0';
    }
    return letters;
}

}  // namespace

const Folding& Folding::OfCase() {
    static const Folding folding(Kind::Case);
    return folding;
}

const Folding& Folding::OfLetters() {
    static const Folding folding(Kind::Letters);
    return folding;
}

Folding::Folding(Kind kind) : units_(AllUnits()) {
    const std::wstring apart = LettersApart();
    const std::wstring folded = LowerCase(kind == Kind::Letters ? PlainLetters(apart) : apart);
    std::size_t next = 0;
    for (std::size_t unit = 0; unit < kUnits; ++unit) {
        if (!IsLetterByItself(unit)) continue;
        const std::size_t end = std::min(folded.find(L'\0', next), folded.size());
        const std::u16string letter = Utf16FromText(std::wstring_view(folded).substr(next, end - next));
        next = std::min(end + 1, folded.size());
        if (letter.size() == 1) {
            units_[unit] = letter[0];
            if (letter[0] != unit) changed_.emplace_back(letter[0], static_cast<char16_t>(unit));
        } else if (kind == Kind::Letters) {
            units_[unit] = kSeveral;
            expanded_ += static_cast<char16_t>(unit);
            begins_ += static_cast<char32_t>(expansions_.size());
            expansions_ += letter;
        }
    }
    begins_ += static_cast<char32_t>(expansions_.size());
    std::sort(changed_.begin(), changed_.end());
}

std::u16string_view Folding::ExpansionOf(char16_t unit) const {
    const auto found = std::lower_bound(expanded_.begin(), expanded_.end(), unit);
    if (found == expanded_.end() || *found != unit) return {};
    const auto index = static_cast<std::size_t>(found - expanded_.begin());
    return std::u16string_view(expansions_).substr(begins_[index], begins_[index + 1] - begins_[index]);
}

std::u16string Folding::SourcesOf(char16_t folded) const {
    std::u16string sources;
    if (units_[folded] == folded) sources += folded;
    const std::pair first{folded, char16_t{0}};
    for (auto one = std::lower_bound(changed_.begin(), changed_.end(), first);
         one != changed_.end() && one->first == folded; ++one)
        sources += one->second;
    return sources;
}

void Folding::Append(std::u16string_view text, std::u16string& folded) const {
    for (const char16_t unit : text) {
        const char16_t one = units_[unit];
        // Unit by unit nothing expands, and what marks an expansion is a unit like any other.
        if (one != kSeveral || IsByUnits())
            folded += one;
        else
            folded += ExpansionOf(unit);
    }
}

std::u16string Folding::Fold(std::u16string_view text) const {
    std::u16string folded;
    Append(text, folded);
    return folded;
}

std::size_t Folding::PlaceBefore(std::u16string_view text, std::size_t place) const {
    if (IsByUnits()) return std::min(place, text.size());
    std::size_t reached = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        reached += units_[text[i]] != kSeveral ? 1 : ExpansionOf(text[i]).size();
        if (reached > place) return i;
    }
    return text.size();
}
