#include "engine/clipboard/PrivateContent.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "engine/clipboard/CFormats.h"
#include "engine/clipboard/GlobalBlock.h"
#include "platform/ByteBuffer.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

// Formats whose mere presence says it.
constexpr std::array kMarks = {L"ExcludeClipboardContentFromMonitorProcessing", L"Clipboard Viewer Ignore"};
// A format that says so with the 32-bit number 0.
constexpr const wchar_t* kMarkedByZero = L"CanIncludeInClipboardHistory";

// The system does not tell registered names apart by their case, and keeps the spelling that came first.
bool IsNamed(const CFormat& format, const wchar_t* name) {
    return CompareNoCase(format.FormatName, name) == 0;
}

bool HoldsZero(const CFormat& format) {
    const DataHandle data = ThePlatform().clipboard.Data(format.FormatId);
    if (data == DataHandle::None || ThePlatform().memory.Size(data) < sizeof(std::uint32_t)) return false;
    const BlockLock lock(data);
    return lock.Address() != nullptr && ByteReader(lock.Address(), sizeof(std::uint32_t)).Int32() == 0;
}

bool IsMark(const CFormat& format) {
    if (IsNamed(format, kMarkedByZero)) return HoldsZero(format);
    return std::any_of(kMarks.begin(), kMarks.end(),
                       [&](const wchar_t* mark) { return IsNamed(format, mark); });
}

}  // namespace

bool IsPrivateContent(const CFormats& formats) {
    for (const CFormat& format : formats) {
        if (IsMark(format)) return true;
    }
    return false;
}
