#include "platform/Text.h"

#include <algorithm>
#include <limits>

namespace {

std::wstring_view Trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::optional<std::int64_t> ParseInteger(std::wstring_view text, std::int64_t least, std::int64_t most) {
    std::wstring_view digits = Trimmed(text);
    const bool negative = digits.starts_with(L'-');
    if (negative || digits.starts_with(L'+')) digits.remove_prefix(1);
    if (digits.empty()) return std::nullopt;
    std::int64_t number = 0;
    for (const wchar_t digit : digits) {
        if (digit < L'0' || digit > L'9') return std::nullopt;
        number = number * 10 + (digit - L'0');
        if (number > -least) return std::nullopt;  // the larger of the two magnitudes; also stops an overflow
    }
    if (negative) number = -number;
    if (number > most) return std::nullopt;
    return number;
}

bool IsFirstHalf(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsSecondHalf(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// How many characters the first letter of `text` takes: two where they have 16 bits and it is a rare one.
std::size_t LetterSize(std::wstring_view text) {
    return text.size() > 1 && IsFirstHalf(text[0]) && IsSecondHalf(text[1]) ? 2 : 1;
}

template <typename Integer>
std::optional<Integer> ParseAs(std::wstring_view text) {
    const auto number =
        ParseInteger(text, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max());
    if (!number) return std::nullopt;
    return static_cast<Integer>(*number);
}

}  // namespace

std::wstring FirstLetterBeyondAnsi(std::wstring_view text) {
    for (std::size_t size = 0; !text.empty(); text.remove_prefix(size)) {
        size = LetterSize(text);
        if (!FitsAnsi(text.substr(0, size))) return std::wstring(text.substr(0, size));
    }
    return {};
}

std::wstring WithoutLettersBeyondAnsi(std::wstring_view text) {
    std::wstring kept;
    bool afterGap = false;
    for (std::size_t size = 0; !text.empty(); text.remove_prefix(size)) {
        size = LetterSize(text);
        if (!FitsAnsi(text.substr(0, size))) {
            afterGap = true;
        } else if (!afterGap || text[0] != L' ' || !(kept.empty() || kept.back() == L' ')) {
            kept += text.substr(0, size);
            afterGap = false;
        }
    }
    return kept;
}

std::wstring TextFromUtf16(std::string_view bytes) {
    const auto unitAt = [&](std::size_t index) {
        const auto byte = [&](std::size_t at) {
            return static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[at]));
        };
        return byte(2 * index) | byte(2 * index + 1) << 8;
    };
    const std::size_t count = bytes.size() / 2;
    std::wstring text;
    text.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t unit = unitAt(i);
        // Where a character has 32 bits, the two halves of a rare letter become one.
        if (sizeof(wchar_t) > 2 && IsFirstHalf(unit) && i + 1 < count && IsSecondHalf(unitAt(i + 1))) {
            text += static_cast<wchar_t>(0x10000 + ((unit & 0x3FF) << 10) + (unitAt(++i) & 0x3FF));
        } else {
            text += static_cast<wchar_t>(unit);
        }
    }
    return text;
}

std::u16string Utf16FromText(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t character : text) {
        const auto code = static_cast<std::uint32_t>(character);
        if (code < 0x10000) {
            units += static_cast<char16_t>(code);
        } else {
            units += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10 & 0x3FF));
            units += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        }
    }
    return units;
}

std::wstring TextFromUtf16(std::u16string_view units) {
    return TextFromUtf16(std::string_view(reinterpret_cast<const char*>(units.data()), 2 * units.size()));
}

// Every ANSI code page begins with the same 128 characters.
void AppendAnsi(std::vector<std::uint8_t>& bytes, std::wstring_view text) {
    const auto isPlain = [](wchar_t character) { return static_cast<std::uint32_t>(character) < 0x80; };
    if (std::all_of(text.begin(), text.end(), isPlain)) {
        bytes.insert(bytes.end(), text.begin(), text.end());
    } else {
        const std::string converted = AnsiFromText(text);
        bytes.insert(bytes.end(), converted.begin(), converted.end());
    }
}

std::wstring Trim(std::wstring_view text) {
    return std::wstring(Trimmed(text));
}

std::optional<std::int32_t> ParseInt32(std::wstring_view text) {
    return ParseAs<std::int32_t>(text);
}

std::optional<std::int16_t> ParseInt16(std::wstring_view text) {
    return ParseAs<std::int16_t>(text);
}

std::wstring NumberText(std::int64_t number) {
    return std::to_wstring(number);
}
