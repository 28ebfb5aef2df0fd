#include "engine/clipboard/Diagnosis.h"

#include <cstdint>

#include "platform/Platform.h"

namespace {

constexpr int kMostTitleCharacters = 240;

std::wstring Hexadecimal(std::uintptr_t number) {
    std::wstring digits;
    do {
        digits.insert(digits.begin(), L"0123456789ABCDEF"[number % 16]);
        number /= 16;
    } while (number != 0);
    return digits;
}

}  // namespace

std::wstring DescribeWindow(WindowHandle window, const std::wstring& missing) {
    if (window == WindowHandle::None) return missing;
    const std::wstring title = ThePlatform().windows.Title(window, kMostTitleCharacters);
    return (title.empty() ? L"<unbekannt>" : title) + L" (" +
           Hexadecimal(static_cast<std::uintptr_t>(window)) + L")";
}

std::wstring DescribeAddress(ProcedureAddress address) {
    return Hexadecimal(static_cast<std::uintptr_t>(address));
}

std::wstring DescribeFormat(const CFormat& format) {
    return format.FormatName + L" (" + std::to_wstring(format.FormatId) + L")";
}
