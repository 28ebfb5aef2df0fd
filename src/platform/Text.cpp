#include "platform/Text.h"

#include <algorithm>
#include <limits>

namespace {

std::optional<std::int64_t> ParseInteger(std::wstring_view text, std::int64_t least, std::int64_t most) {
    const std::wstring trimmed = Trim(text);
    std::wstring_view digits = trimmed;
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

template <typename Integer>
std::optional<Integer> ParseAs(std::wstring_view text) {
    const auto number =
        ParseInteger(text, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max());
    if (!number) return std::nullopt;
    return static_cast<Integer>(*number);
}

}  // namespace

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
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return std::wstring(text.substr(first, text.find_last_not_of(L' ') - first + 1));
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
