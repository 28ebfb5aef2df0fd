#include "platform/FileNames.h"

#include <algorithm>

#include "platform/Text.h"

namespace {

constexpr std::size_t kLongestName = 100;

bool MayStandInName(wchar_t c) {
    const auto code = static_cast<std::uint32_t>(c);
    return code >= 0x20 && code != 0x7F &&
           std::wstring_view(L"<>:\"/\\|?*").find(c) == std::wstring_view::npos;
}

std::wstring WithoutEnd(std::wstring name) {
    const std::size_t last = name.find_last_not_of(L". ");
    return last == std::wstring::npos ? std::wstring() : name.substr(0, last + 1);
}

bool IsFirstHalf(wchar_t c) {
    const auto code = static_cast<std::uint32_t>(c);
    return code >= 0xD800 && code < 0xDC00;
}

// The system takes these for devices, whatever stands behind their first dot.
bool IsDeviceName(const std::wstring& name) {
    const std::wstring stem = Trim(UpperCase(name.substr(0, name.find(L'.'))));
    for (const wchar_t* device : {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$"})
        if (stem == device) return true;
    const bool numbered = stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT"));
    return numbered && std::wstring_view(L"0123456789¹²³").find(stem[3]) != std::wstring_view::npos;
}

}  // namespace

std::wstring SafeFileName(const std::wstring& text) {
    std::wstring name;
    for (const wchar_t c : text.substr(0, text.find(L'\0')))
        name += MayStandInName(c) ? c : L'_';
    name = Trim(name).substr(0, kLongestName);
    if (!name.empty() && IsFirstHalf(name.back())) name.pop_back();
    name = WithoutEnd(name);
    return IsDeviceName(name) ? L"_" + name : name;
}

std::wstring UniqueNames::Numbered(const std::wstring& name, int number) {
    return number == 1 ? name : name + L" (" + NumberText(number) + L")";
}

bool UniqueNames::Take(const std::wstring& name, bool isTaken) {
    return !isTaken && given_.insert(UpperCase(name)).second;
}
