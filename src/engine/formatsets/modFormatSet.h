#pragma once

#include <cstdint>
#include <string>
#include <vector>

class CFormats;

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
    void Append(FormatSet set) { sets_.push_back(std::move(set)); }
    void Remove(int index) { sets_.erase(sets_.begin() + (index - 1)); }
    void Clear() { sets_.clear(); }

    friend bool operator==(const FormatSetList&, const FormatSetList&) = default;

 private:
    std::vector<FormatSet> sets_;
};

// The one list of the process.
FormatSetList& FormatSets();

// Set by every change of a list, the dialog's working copy included; cleared by a successful load.
extern bool FormatSetsChanged;

// An empty list, unchanged.
void InitFormatSets();

// Reads the list from FormatSetFile, or makes the default sets when there is no such file. False after a read
// error: it has been told to the user, and the list holds the sets read whole before it.
bool LoadFormatSets();

// Writes the list to FormatSetFile if it was changed. False after an error, which has been told to the user;
// the file is as before then, unless the disk itself failed in the write.
bool SaveFormatSets();

// Puts the two default sets in the list.
void InitDefaultFormatSets();

// Appends a set with the names of `formats`, all of them kept. The result is its index, -1 when there are no
// `formats` (null) or the list is full.
int AddFormatSet(FormatSetList& list, const CFormats* formats, const std::wstring& name);

// False for an index that is not in the list.
bool DeleteFormatSet(FormatSetList& list, int index);

// The index of the first set whose key is that of `formats`; 0 when there is none or `formats` is null.
int FindFormatSet(const FormatSetList& list, const CFormats* formats);

// Whether the set of the process-wide list keeps a format; false for an unknown set or name.
bool GetFormatSaveFlag(int index, const std::wstring& formatName);

// Whether the option UnknownFormats keeps a format of a clipboard that matches no set.
bool IsKeptUnknownFormat(const std::wstring& formatName);

// The key of a set with these entries, which are put into the key's order.
std::wstring BuildFormatSetKey(std::vector<FormatSetEntry>& entries);
// The key of a clipboard's formats.
std::wstring FormatsKey(const CFormats& formats);
