#include "engine/clipboard/PrivateContent.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "engine/clipboard/CFormats.h"
#include "engine/clipboard/GlobalBlock.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

// A format by which a program says that its content is not to be kept.
struct Mark {
    const wchar_t* name;
    // What the format begins with; empty when its presence alone says it.
    std::string_view value;
};

constexpr Mark kMarks[] = {
    // Microsoft's documentation of the clipboard's history.
    {L"ExcludeClipboardContentFromMonitorProcessing", {}},
    {L"CanIncludeInClipboardHistory", std::string_view("\0\0\0\0", 4)},
    // What keepers of passwords have agreed on for clipboard programs.
    {L"Clipboard Viewer Ignore", {}},
    // The desktop of KDE, and the keepers of passwords under X11.
    {L"x-kde-passwordManagerHint", "secret"},
};

// The system does not tell registered names apart by their case, and keeps the spelling that came first.
bool IsNamed(const CFormat& format, const wchar_t* name) {
    return CompareNoCase(format.FormatName, name) == 0;
}

bool BeginsWith(const CFormat& format, std::string_view value) {
    if (value.empty()) return true;
    const DataHandle data = ThePlatform().clipboard.Data(format.FormatId);
    if (data == DataHandle::None || ThePlatform().memory.Size(data) < value.size()) return false;
    const BlockLock lock(data);
    return lock.Address() != nullptr && std::memcmp(lock.Address(), value.data(), value.size()) == 0;
}

bool IsMarked(const CFormat& format) {
    return std::any_of(std::begin(kMarks), std::end(kMarks), [&](const Mark& mark) {
        return IsNamed(format, mark.name) && BeginsWith(format, mark.value);
    });
}

}  // namespace

bool IsPrivateContent(const CFormats& formats) {
    for (const CFormat& format : formats) {
        if (IsMarked(format)) return true;
    }
    return false;
}
