#include "engine/search/WordFinder.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

namespace {

constexpr std::size_t kGroup = sizeof(std::uint64_t) / sizeof(std::uint16_t);

bool NoneOf(const std::uint16_t* group) {
    std::uint64_t all;
    std::memcpy(&all, group, sizeof all);
    return all == 0;
}

// The commoner a letter is in what Europeans write, the more it costs to stop at each; what is missing is
// rare.
std::size_t Commonness(char16_t letter) {
    constexpr std::u16string_view kFromTheRarest = u"qxyjvpzwkfbmgocluhdatsrin e";
    return kFromTheRarest.find(letter) + 1;
}

// Written so that the compiler makes a few instructions for many units of it.
template <std::size_t count>
bool AnyIs(const char16_t* wanted, const char16_t* units, std::size_t size) {
    std::uint16_t any = 0;
    for (std::size_t i = 0; i < size; ++i)
        for (std::size_t one = 0; one < count; ++one)
            any = static_cast<std::uint16_t>(any | (units[i] == wanted[one] ? 0xFFFF : 0));
    return any != 0;
}

}  // namespace

WordFinder::WordFinder(std::u16string_view word, const Folding& folding)
    : folding_(folding), folded_(folding.Fold(word)) {
    comparesAll_ = !folded_.empty() && !SetProbes();
}

bool WordFinder::SetProbes() {
    std::vector<std::size_t> places(folded_.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::stable_sort(places.begin(), places.end(), [this](std::size_t left, std::size_t right) {
        return Commonness(folded_[left]) < Commonness(folded_[right]);
    });
    return SetProbe(rare_, places.front()) && SetProbe(second_, places[places.size() > 1 ? 1 : 0]);
}

// False when more units stand for the letter than can be looked for at once.
bool WordFinder::SetProbe(Probe& probe, std::size_t place) {
    const char16_t letter = folded_[place];
    std::u16string sources = folding_.IsByUnits() ? folding_.SourcesOf(letter) : std::u16string();
    if (sources.empty()) sources = letter;
    if (sources.size() > kMostForms) return false;
    probe.place = place;
    probe.count = sources.size();
    probe.forms.fill(sources[0]);
    std::copy(sources.begin(), sources.end(), probe.forms.begin());
    return true;
}

bool WordFinder::StandsIn(const Probe& probe, const char16_t* block) {
    block += probe.place;
    switch (probe.count) {
        case 1:
            return AnyIs<1>(probe.forms.data(), block, kBlock);
        case 2:
            return AnyIs<2>(probe.forms.data(), block, kBlock);
        default:
            return AnyIs<kMostForms>(probe.forms.data(), block, kBlock);
    }
}

void WordFinder::KeepPlaces(const Probe& probe, const char16_t* block, Places& places) {
    block += probe.place;
    const auto forms = probe.forms;
    for (std::size_t i = 0; i < kBlock; ++i) {
        std::uint16_t stands = 0;
        for (const char16_t form : forms)
            stands = static_cast<std::uint16_t>(stands | (block[i] == form ? 0xFFFF : 0));
        places[i] = static_cast<std::uint16_t>(places[i] & stands);
    }
}

bool WordFinder::IsAt(const char16_t* place) const {
    if (!folding_.IsByUnits()) return std::equal(folded_.begin(), folded_.end(), place);
    return std::equal(folded_.begin(), folded_.end(), place,
                      [this](char16_t wanted, char16_t unit) { return wanted == folding_.Of(unit); });
}

std::size_t WordFinder::FindInBlock(const char16_t* block) const {
    Places places;
    places.fill(0xFFFF);
    if (!comparesAll_) {
        if (!StandsIn(rare_, block)) return kNowhere;
        KeepPlaces(rare_, block, places);
        KeepPlaces(second_, block, places);
    }
    for (std::size_t i = 0; i < kBlock; ++i) {
        if (i % kGroup == 0 && NoneOf(&places[i]))
            i += kGroup - 1;
        else if (places[i] != 0 && IsAt(block + i))
            return i;
    }
    return kNowhere;
}

std::size_t WordFinder::FindIn(std::u16string_view text) const {
    if (folded_.empty() || text.size() < folded_.size()) return kNowhere;
    const std::size_t places = text.size() - folded_.size() + 1;
    std::size_t place = 0;
    for (; places - place >= kBlock; place += kBlock)
        if (const std::size_t inBlock = FindInBlock(text.data() + place); inBlock != kNowhere)
            return place + inBlock;
    for (; place < places; ++place)
        if (IsAt(text.data() + place)) return place;
    return kNowhere;
}
