// The system's part of platform/Text.h.

#include <windows.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <vector>

#include "platform/Text.h"

namespace {

int LengthOf(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) throw std::length_error("text");
    return static_cast<int>(size);
}

// In UTF-8 every character has bytes, and the call takes no flags.
bool CodePageIsUtf8() {
    return GetACP() == CP_UTF8;
}

// `lost` tells whether the default character had to stand in for another one.
std::string AnsiFromText(std::wstring_view text, bool& lost) {
    lost = false;
    if (text.empty()) return {};
    // Without the flag a letter would silently become a similar one.
    const DWORD flags = CodePageIsUtf8() ? 0 : WC_NO_BEST_FIT_CHARS;
    BOOL usedDefault = FALSE;
    BOOL* const reportDefault = CodePageIsUtf8() ? nullptr : &usedDefault;
    const int length = LengthOf(text.size());
    // Room enough for any code page spares short texts a first conversion that only counts.
    constexpr int kMostBytesEach = 4;
    constexpr int kShort = 1024;
    const int room = length <= kShort ? length * kMostBytesEach
                                      : WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0,
                                                            nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(room), '\0');
    bytes.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_ACP, flags, text.data(), length, bytes.data(), room, nullptr, reportDefault)));
    lost = usedDefault != FALSE;
    return bytes;
}

std::wstring TextFrom(UINT codePage, std::string_view bytes) {
    if (bytes.empty()) return {};
    const int length = LengthOf(bytes.size());
    const int needed = MultiByteToWideChar(codePage, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), length, text.data(), needed);
    return text;
}

// The system refuses a whole text for one unit that is no character; that one stays as it is.
std::wstring Folded(DWORD way, std::wstring_view text) {
    if (text.empty()) return {};
    const int length = LengthOf(text.size());
    const int needed = FoldStringW(way, text.data(), length, nullptr, 0);
    std::wstring folded(static_cast<std::size_t>(needed), L'\0');
    if (needed != 0 && FoldStringW(way, text.data(), length, folded.data(), needed) != 0) return folded;
    if (text.size() == 1) return std::wstring(text);
    std::size_t middle = text.size() / 2;
    if (text.size() > 2 && IS_LOW_SURROGATE(text[middle])) ++middle;
    return Folded(way, text.substr(0, middle)) + Folded(way, text.substr(middle));
}

std::wstring WithCase(std::wstring_view text, DWORD change) {
    if (text.empty()) return {};
    std::wstring changed(text.size(), L'\0');
    const int length = LengthOf(text.size());
    if (LCMapStringW(LOCALE_USER_DEFAULT, change, text.data(), length, changed.data(), length) == 0)
        return std::wstring(text);
    return changed;
}

}  // namespace

std::string AnsiFromText(std::wstring_view text) {
    bool lost;
    return AnsiFromText(text, lost);
}

std::wstring TextFromAnsi(std::string_view bytes) {
    if (bytes.empty()) return {};
    // Every ANSI code page begins with the same 128 characters, and many texts consist of them.
    if (std::all_of(bytes.begin(), bytes.end(),
                    [](char byte) { return static_cast<signed char>(byte) >= 0; }))
        return std::wstring(bytes.begin(), bytes.end());
    return TextFrom(CP_ACP, bytes);
}

std::wstring TextFromCodePage(unsigned codePage, std::string_view bytes) {
    return TextFrom(IsValidCodePage(codePage) ? codePage : CP_ACP, bytes);
}

unsigned AnsiCodePage() {
    return GetACP();
}

unsigned OemCodePage() {
    return GetOEMCP();
}

// A letter with a mark is taken apart into the letter and its mark, and the marks are left out.
std::wstring PlainLetters(std::wstring_view text) {
    std::wstring plain = Folded(MAP_COMPOSITE, Folded(MAP_EXPAND_LIGATURES, text));
    if (plain.empty()) return plain;
    std::vector<WORD> kinds(plain.size());
    if (!GetStringTypeW(CT_CTYPE3, plain.data(), LengthOf(plain.size()), kinds.data())) return plain;
    std::size_t kept = 0;
    // A letter that could not be taken apart counts as one with a mark.
    for (std::size_t i = 0; i < plain.size(); ++i)
        if ((kinds[i] & C3_NONSPACING) == 0 || (kinds[i] & C3_ALPHA) != 0) plain[kept++] = plain[i];
    plain.resize(kept);
    return plain;
}

bool FitsAnsi(std::wstring_view text) {
    bool lost;
    const std::string bytes = AnsiFromText(text, lost);
    return !lost && TextFromAnsi(bytes) == text;
}

std::wstring UpperCase(std::wstring_view text) {
    return WithCase(text, LCMAP_UPPERCASE);
}

std::wstring LowerCase(std::wstring_view text) {
    return WithCase(text, LCMAP_LOWERCASE);
}

int CompareNoCase(std::wstring_view a, std::wstring_view b) {
    // An empty view may have no characters to point to.
    if (a.empty() || b.empty()) return (a.empty() ? 0 : 1) - (b.empty() ? 0 : 1);
    const int lengthA = LengthOf(a.size()), lengthB = LengthOf(b.size());
    const int plain = CompareStringOrdinal(a.data(), lengthA, b.data(), lengthB, TRUE);
    if (plain == CSTR_EQUAL) return 0;
    // The language's order takes some different texts for equal, such as those with a sharp s and with two s;
    // names must still be told apart.
    const int order =
        CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.data(), lengthA, b.data(), lengthB);
    return (order == CSTR_LESS_THAN || order == CSTR_GREATER_THAN ? order : plain) - CSTR_EQUAL;
}

bool BeginsWithNoCase(std::wstring_view text, std::wstring_view front) {
    if (front.empty()) return true;
    if (text.size() < front.size()) return false;
    const int length = LengthOf(front.size());
    return CompareStringOrdinal(text.data(), length, front.data(), length, TRUE) == CSTR_EQUAL;
}
