#pragma once

#include <cstdint>
#include <string>

// What the list of a clip's formats says about each of them.
struct FormatDescription {
    std::wstring Name;
    std::wstring Group;  // the key of its icon: "Help", "Paint", "Text" or "OLE"
    std::wstring Description;
};

// At start-up: the table holds nothing but row 0, for unknown formats.
void InitFormatDescriptions();
// When the main window loads: all rows.
void FillFormatDescriptions();

// The row with exactly this name; 0 when there is none.
std::int16_t FormatDescriptionIndex(const std::wstring& name);
// Row 0 for an index that the table does not hold.
const FormatDescription& FormatDescriptionAt(std::int16_t index);
