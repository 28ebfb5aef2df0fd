#include "engine/clipboard/modFormatDesc.h"

#include <algorithm>
#include <vector>

#include "engine/clipboard/FormatNames.h"

namespace {

std::vector<FormatDescription>& Table() {
    static std::vector<FormatDescription> table = {{kUnknownFormatName, L"Clip", kUnknownFormatName}};
    return table;
}

}  // namespace

void InitFormatDescriptions() {
    Table() = {{kUnknownFormatName, L"Clip", kUnknownFormatName}};
}

void FillFormatDescriptions() {
    Table() = {
        {kUnknownFormatName, L"Help", kUnknownFormatName},
        {L"Bitmap", L"Paint", L"Bitmap-Datei"},
        {L"DIB", L"Paint", L"Geräteunabhängige Bitmap"},
        {L"Text", L"Text", L"Text ohne Formate"},
        {L"Unicode", L"Text", L"Text in Unicode"},
        {L"OemText", L"Text", L"OemText"},
        {L"Metafile", L"Paint", L"MetaFile"},
        {L"Ole Private Data", L"OLE", L"Ole Private Data"},
        {L"Object Descriptor", L"OLE", L"Object Descriptor"},
        {L"DataObject", L"OLE", L"DataObject"},
        {L"Embed Source", L"OLE", L"Embed Source"},
        {L"OwnerLink", L"OLE", L"OwnerLink"},
        {L"ObjectLink", L"OLE", L"ObjectLink"},
        {L"Link Source", L"OLE", L"Link Source"},
        {L"Link Source Descriptor", L"OLE", L"Link Source Descriptor"},
        {L"Native", L"OLE", L"Native"},
        {L"Rich Text Format", L"Text", L"Rich Text Format"},
    };
}

std::int16_t FormatDescriptionIndex(const std::wstring& name) {
    const auto& table = Table();
    const auto row = std::find_if(table.begin() + 1, table.end(),
                                  [&](const FormatDescription& known) { return known.Name == name; });
    if (row == table.end()) return 0;
    return static_cast<std::int16_t>(row - table.begin());
}

const FormatDescription& FormatDescriptionAt(std::int16_t index) {
    const auto& table = Table();
    const bool held = index >= 0 && static_cast<std::size_t>(index) < table.size();
    return table[held ? static_cast<std::size_t>(index) : 0];
}
