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

constexpr std::uint32_t kReplacement = 0xFFFD;

// Takes the next letter from the front of `text`.
std::uint32_t TakeLetter(std::wstring_view& text) {
    const std::size_t size = LetterSize(text);
    const auto first = static_cast<std::uint32_t>(text[0]);
    const std::uint32_t letter =
        size == 2 ? 0x10000 + ((first & 0x3FF) << 10) + (static_cast<std::uint32_t>(text[1]) & 0x3FF) : first;
    text.remove_prefix(size);
    const bool isHalf = IsFirstHalf(letter) || IsSecondHalf(letter);
    return isHalf || letter > 0x10FFFF ? kReplacement : letter;
}

void AppendLetter(std::wstring& text, std::uint32_t letter) {
    if (sizeof(wchar_t) > 2 || letter < 0x10000) {
        text += static_cast<wchar_t>(letter);
    } else {
        text += static_cast<wchar_t>(0xD800 + ((letter - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((letter - 0x10000) & 0x3FF));
    }
}

// How many bytes follow the first one of a letter; none for a byte that begins no letter.
std::optional<std::size_t> FollowingBytes(std::uint8_t first) {
    if (first < 0x80) return 0;
    if (first >= 0xC2 && first < 0xE0) return 1;
    if (first >= 0xE0 && first < 0xF0) return 2;
    if (first >= 0xF0 && first < 0xF5) return 3;
    return std::nullopt;
}

// Takes the next letter from the front of `bytes`; of what is none, one byte.
std::optional<std::uint32_t> TakeUtf8(std::string_view& bytes) {
    constexpr std::uint32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
    const auto byteAt = [&](std::size_t at) { return static_cast<std::uint8_t>(bytes[at]); };
    const auto following = FollowingBytes(byteAt(0));
    bool sound = following && *following < bytes.size();
    std::uint32_t letter = sound && *following > 0 ? byteAt(0) & (0x3Fu >> *following) : byteAt(0);
    for (std::size_t at = 1; sound && at <= *following; ++at) {
        sound = (byteAt(at) & 0xC0) == 0x80;
        letter = letter << 6 | (byteAt(at) & 0x3Fu);
    }
    sound = sound && letter >= kLeast[*following] && letter <= 0x10FFFF && !IsFirstHalf(letter) &&
            !IsSecondHalf(letter);
    bytes.remove_prefix(sound ? *following + 1 : 1);
    if (!sound) return std::nullopt;
    return letter;
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

std::string Utf8FromText(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const std::uint32_t letter = TakeLetter(text);
        const auto append = [&](std::uint32_t byte) { bytes += static_cast<char>(byte); };
        const auto follow = [&](int shift) { append(0x80 | (letter >> shift & 0x3F)); };
        if (letter < 0x80) {
            append(letter);
        } else if (letter < 0x800) {
            append(0xC0 | letter >> 6);
            follow(0);
        } else if (letter < 0x10000) {
            append(0xE0 | letter >> 12);
            follow(6);
            follow(0);
        } else {
            append(0xF0 | letter >> 18);
            follow(12);
            follow(6);
            follow(0);
        }
    }
    return bytes;
}

std::wstring TextFromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty())
        AppendLetter(text, TakeUtf8(bytes).value_or(kReplacement));
    return text;
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        if (!TakeUtf8(bytes)) return false;
    }
    return true;
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
