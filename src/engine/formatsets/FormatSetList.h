#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

// One format of a set.
struct FormatSetEntry {
    std::wstring Name;
    bool Save = false;  // the format is kept when a clip of this set is captured

    friend bool operator==(const FormatSetEntry&, const FormatSetEntry&) = default;
};

// A named combination of clipboard formats.
struct FormatSet {
    std::wstring Name;  // what the user calls it
    // The names of all entries in ascending order of their code units, joined with ",": what a clipboard's
    // formats are recognised by.
    std::wstring Key;
    std::vector<FormatSetEntry> Formats;  // in the key's order

    friend bool operator==(const FormatSet&, const FormatSet&) = default;
};

// The sets by their index, from 1 to Count. Layout on disk: docs/formats/nxclip-nxf.md.
class FormatSetList {
 public:
    // The most sets that the stored count can tell.
    static constexpr int kMostSets = 0x7FFF;

    std::int16_t Count() const { return static_cast<std::int16_t>(sets_.size()); }
    // `index` must lie from 1 to Count.
    FormatSet& Item(int index) { return sets_.at(static_cast<std::size_t>(index) - 1); }
    const FormatSet& Item(int index) const { return sets_.at(static_cast<std::size_t>(index) - 1); }
    bool Has(int index) const { return index >= 1 && index <= Count(); }
    bool HasKey(const std::wstring& key) const {
        return std::any_of(sets_.begin(), sets_.end(), [&](const FormatSet& set) { return set.Key == key; });
    }
    void Append(FormatSet set) { sets_.push_back(std::move(set)); }
    void Remove(int index) { sets_.erase(sets_.begin() + (index - 1)); }
    void Clear() { sets_.clear(); }

    friend bool operator==(const FormatSetList&, const FormatSetList&) = default;

 private:
    std::vector<FormatSet> sets_;
};
