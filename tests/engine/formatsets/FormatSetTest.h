#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "engine/clipboard/CFormats.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/AppTest.h"

// Formats as a clipboard lists them.
inline std::unique_ptr<CFormats> FormatsNamed(std::initializer_list<const wchar_t*> names) {
    auto formats = std::make_unique<CFormats>();
    for (const wchar_t* name : names)
        formats->Add(std::make_unique<CFormat>()).FormatName = name;
    return formats;
}

// A list with sets of these names and one format each, named like its set but for a small "f" in front.
inline FormatSetList ListNamed(std::initializer_list<const wchar_t*> names) {
    FormatSetList list;
    for (const wchar_t* name : names) {
        AddFormatSet(list, FormatsNamed({(std::wstring(L"f") + name).c_str()}).get(), name);
    }
    return list;
}

class FormatSetTest : public AppTest {
 protected:
    const std::wstring kFile = L"C:\\NXCLIP\\NXCLIP.NXF";
};
