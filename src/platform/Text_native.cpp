// The system's part of platform/Text.h where there is no Windows: code page 1252 and German casing.

#include <algorithm>
#include <array>
#include <cwctype>

#include "platform/Text.h"

namespace {

// What 0x80 to 0x9F stand for; the five holes stand for themselves.
constexpr std::array<wchar_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char kDefaultCharacter = '?';

std::optional<char> AnsiOf(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
    const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    if (found == kUpperControls.end()) return std::nullopt;
    return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

wchar_t TextOf(char byte) {
    const auto code = static_cast<std::uint8_t>(byte);
    if (code >= 0x80 && code < 0xA0) return kUpperControls[code - 0x80];
    return static_cast<wchar_t>(code);
}

struct CasePair {
    wchar_t lower, upper;
};
// The letters of the code page whose two cases do not lie 0x20 apart.
constexpr std::array<CasePair, 4> kOddPairs = {
    {{0x00FF, 0x0178}, {0x0153, 0x0152}, {0x0161, 0x0160}, {0x017E, 0x017D}}};

bool IsLowerWithUpper(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7);
}

bool IsUpperWithLower(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
}

// The sharp s has no upper case of its own and stays.
wchar_t Upper(wchar_t c) {
    if (IsLowerWithUpper(c)) return static_cast<wchar_t>(c - 0x20);
    for (const CasePair& pair : kOddPairs)
        if (pair.lower == c) return pair.upper;
    return c;
}

wchar_t Lower(wchar_t c) {
    if (IsUpperWithLower(c)) return static_cast<wchar_t>(c + 0x20);
    for (const CasePair& pair : kOddPairs)
        if (pair.upper == c) return pair.lower;
    return c;
}

template <wchar_t Change(wchar_t)>
std::wstring Changed(std::wstring_view text) {
    std::wstring changed(text);
    std::transform(changed.begin(), changed.end(), changed.begin(), Change);
    return changed;
}

// The letters as a German dictionary sorts them: umlauts beside their vowels, the sharp s as two s.
std::wstring SortLetters(std::wstring_view text) {
    static constexpr std::wstring_view kAccented = L"ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÑÒÓÔÕÖØÙÚÛÜÝŠŽŸ";
    static constexpr std::wstring_view kPlain = L"AAAAAACEEEEIIIINOOOOOOUUUUYSZY";
    std::wstring letters;
    for (const wchar_t c : text) {
        const wchar_t upper = Upper(c);
        const std::size_t accent = kAccented.find(upper);
        if (upper == L'ß')
            letters += L"SS";
        else
            letters += accent == std::wstring_view::npos ? upper : kPlain[accent];
    }
    return letters;
}

// Signs before digits before letters.
int RankOf(wchar_t c) {
    if (c >= L'0' && c <= L'9') return 1;
    if ((c >= L'A' && c <= L'Z') || c >= 0xC0) return 2;
    return 0;
}

}  // namespace

std::string AnsiFromText(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t c : text)
        bytes += AnsiOf(c).value_or(kDefaultCharacter);
    return bytes;
}

std::wstring TextFromAnsi(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += TextOf(byte);
    return text;
}

bool FitsAnsi(std::wstring_view text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return AnsiOf(c).has_value(); });
}

std::wstring TextFromCodePage(unsigned codePage, std::string_view bytes) {
    constexpr unsigned kUtf8 = 65001;
    return codePage == kUtf8 ? TextFromUtf8(bytes) : TextFromAnsi(bytes);
}

unsigned AnsiCodePage() {
    return 1252;
}

unsigned OemCodePage() {
    return 1252;
}

std::wstring PlainLetters(std::wstring_view text) {
    static constexpr std::wstring_view kMarked =
        L"ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÑÒÓÔÕÖÙÚÛÜÝàáâãäåçèéêëìíîïñòóôõöùúûüýÿŠšŽžŸ";
    static constexpr std::wstring_view kPlain = L"AAAAAACEEEEIIIINOOOOOUUUUYaaaaaaceeeeiiiinooooouuuuyySsZzY";
    struct Ligature {
        wchar_t one;
        const wchar_t* letters;
    };
    static constexpr std::array<Ligature, 5> kLigatures = {
        {{L'ß', L"ss"}, {L'Æ', L"AE"}, {L'æ', L"ae"}, {L'Œ', L"OE"}, {L'œ', L"oe"}}};
    std::wstring plain;
    plain.reserve(text.size());
    for (const wchar_t c : text) {
        const auto ligature = std::find_if(kLigatures.begin(), kLigatures.end(),
                                           [=](const Ligature& candidate) { return candidate.one == c; });
        const std::size_t marked = kMarked.find(c);
        const bool isMark = c >= 0x0300 && c <= 0x036F;
        if (ligature != kLigatures.end())
            plain += ligature->letters;
        else if (!isMark)
            plain += marked == std::wstring_view::npos ? c : kPlain[marked];
    }
    return plain;
}

std::wstring UpperCase(std::wstring_view text) {
    return Changed<Upper>(text);
}

std::wstring LowerCase(std::wstring_view text) {
    return Changed<Lower>(text);
}

int CompareNoCase(std::wstring_view a, std::wstring_view b) {
    const std::wstring upperA = UpperCase(a), upperB = UpperCase(b);
    if (upperA == upperB) return 0;
    const std::wstring lettersA = SortLetters(a), lettersB = SortLetters(b);
    if (lettersA == lettersB) return upperA < upperB ? -1 : 1;
    const bool before = std::lexicographical_compare(lettersA.begin(), lettersA.end(), lettersB.begin(),
                                                     lettersB.end(), [](wchar_t x, wchar_t y) {
                                                         const int rankX = RankOf(x), rankY = RankOf(y);
                                                         return rankX != rankY ? rankX < rankY : x < y;
                                                     });
    return before ? -1 : 1;
}

bool BeginsWithNoCase(std::wstring_view text, std::wstring_view front) {
    return text.size() >= front.size() &&
           std::equal(front.begin(), front.end(), text.begin(),
                      [](wchar_t a, wchar_t b) { return Upper(a) == Upper(b); });
}
