#include "engine/clipboard/FormatNames.h"

#include <algorithm>
#include <array>

#include "engine/process/modMain.h"
#include "platform/Platform.h"
#include "platform/Text.h"

std::function<void(const std::wstring&)> RequestTraceSink;

namespace {

struct NumberedName {
    FormatNumber id;
    const wchar_t* name;
};

// The first two are 16-bit numbers taken as signed ones. The clipboard's numbers have 32 bits and are never
// negative, so these rows never match; deliberate: such formats are named like any registered one.
constexpr std::array kStandardNames = {
    NumberedName{-16640, L"DDE-Konversation"},
    NumberedName{-16639, L"RTF"},
    NumberedName{1, L"Text"},
    NumberedName{2, L"Bitmap"},
    NumberedName{3, L"Metafile"},
    NumberedName{4, L"Sylk"},
    NumberedName{5, L"DIF"},
    NumberedName{6, L"TIFF"},
    NumberedName{7, L"OemText"},
    NumberedName{8, L"DIB"},
    NumberedName{9, L"Palette"},
    NumberedName{10, L"PenData"},
    NumberedName{11, L"RIFF"},
    NumberedName{12, L"Wave"},
    NumberedName{13, L"Unicode"},
    NumberedName{14, L"Enhanced Metafile"},
    NumberedName{15, L"Files"},
    NumberedName{16, L"LOCALE"},
    NumberedName{17, L"MAX"},
    NumberedName{128, L"OWNERDISPLAY"},
    NumberedName{129, L"DSPTEXT"},
    NumberedName{130, L"DSPBITMAP"},
    NumberedName{131, L"DSPMETAFILEPICT"},
    NumberedName{142, L"DSPENHMETAFILE"},
};

constexpr int kLongestRegisteredName = 240;

}  // namespace

std::wstring FormatNameOf(FormatNumber id) {
    const auto standard = std::find_if(kStandardNames.begin(), kStandardNames.end(),
                                       [&](const NumberedName& row) { return row.id == id; });
    if (standard != kStandardNames.end()) return standard->name;
    const std::wstring registered = RegisteredFormatName(id);
    return registered.empty() ? kUnknownFormatName : registered;
}

std::wstring RegisteredFormatName(FormatNumber id) {
    const auto name = ThePlatform().clipboard.RegisteredName(id, kLongestRegisteredName);
    return name ? TextFromAnsi(*name) : std::wstring();
}

bool IsStandardFormat(FormatNumber id) {
    return id < 17 || (id >= 128 && id <= 131) || id == kDisplayEnhancedMetafileFormat;
}

bool IsGdiObjectFormat(FormatNumber id) {
    return id == kBitmapFormat || id == kPaletteFormat || id == kDisplayBitmapFormat ||
           id == kDisplayMetafilePictureFormat || id == kDisplayEnhancedMetafileFormat ||
           (id >= kFirstGdiFormat && id <= kLastGdiFormat);
}

void TraceRequest(const std::wstring& line) {
    if (RequestTrace && RequestTraceSink) RequestTraceSink(line);
}
