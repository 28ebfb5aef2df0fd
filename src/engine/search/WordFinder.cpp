#include "engine/search/WordFinder.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kGroup = sizeof(std::uint64_t) / sizeof(std::uint16_t);

bool NoneOf(const std::uint16_t* group) {
    std::uint64_t all;
    std::memcpy(&all, group, sizeof all);
    return all == 0;
}

}  // namespace

WordFinder::WordFinder(std::u16string_view word, const Folding& folding)
    : folding_(folding), folded_(folding.Fold(word)) {
    if (folded_.empty()) return;
    first_ = FormsOf(folded_.front());
    last_ = FormsOf(folded_.back());
}

WordFinder::Forms WordFinder::FormsOf(char16_t letter) {
    const std::u16string sources =
        folding_.IsByUnits() ? folding_.SourcesOf(letter) : std::u16string(1, letter);
    Forms forms;
    forms.fill(sources.empty() ? letter : sources[0]);
    std::copy_n(sources.begin(), std::min(sources.size(), kMostForms), forms.begin());
    tooManyForms_ = tooManyForms_ || sources.size() > kMostForms;
    forms_ = std::max(forms_, std::min(sources.size(), kMostForms));
    return forms;
}

// Written so that the compiler makes a few instructions for many units of it.
template <std::size_t forms>
bool WordFinder::AnyBegins(const char16_t* block, Begins& begins) const {
    const char16_t* const ends = block + folded_.size() - 1;
    std::uint16_t any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        std::uint16_t beginsHere = 0;
        std::uint16_t endsHere = 0;
        for (std::size_t form = 0; form < forms; ++form) {
            beginsHere = static_cast<std::uint16_t>(beginsHere | (block[i] == first_[form] ? 0xFFFF : 0));
            endsHere = static_cast<std::uint16_t>(endsHere | (ends[i] == last_[form] ? 0xFFFF : 0));
        }
        begins[i] = static_cast<std::uint16_t>(beginsHere & endsHere);
        any = static_cast<std::uint16_t>(any | begins[i]);
    }
    return any != 0;
}

bool WordFinder::MayBegin(const char16_t* block, Begins& begins) const {
    if (tooManyForms_) {
        begins.fill(1);
        return true;
    }
    if (forms_ == 1) return AnyBegins<1>(block, begins);
    return forms_ == 2 ? AnyBegins<2>(block, begins) : AnyBegins<kMostForms>(block, begins);
}

bool WordFinder::IsAt(const char16_t* place) const {
    if (!folding_.IsByUnits()) return std::equal(folded_.begin(), folded_.end(), place);
    return std::equal(folded_.begin(), folded_.end(), place,
                      [this](char16_t wanted, char16_t unit) { return wanted == folding_.Of(unit); });
}

std::size_t WordFinder::FindIn(std::u16string_view text) const {
    if (folded_.empty() || text.size() < folded_.size()) return kNowhere;
    const std::size_t places = text.size() - folded_.size() + 1;
    std::size_t place = 0;
    for (Begins begins; places - place >= kBlock; place += kBlock) {
        if (!MayBegin(text.data() + place, begins)) continue;
        for (std::size_t i = 0; i < kBlock; ++i) {
            if (i % kGroup == 0 && NoneOf(&begins[i]))
                i += kGroup - 1;
            else if (begins[i] != 0 && IsAt(text.data() + place + i))
                return place + i;
        }
    }
    for (; place < places; ++place)
        if (IsAt(text.data() + place)) return place;
    return kNowhere;
}
