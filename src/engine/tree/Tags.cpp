#include "engine/tree/Tags.h"

#include <algorithm>
#include <charconv>

#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

constexpr wchar_t kSeparator = L'&';
// Behind the kind letter and its separator.
constexpr std::size_t kFirstField = 2;

std::wstring_view Between(std::wstring_view text, std::size_t first, std::size_t end) {
    return text.substr(first, end - first);
}

// The text from `position` on; empty when the text does not reach that far.
std::wstring_view From(std::wstring_view text, std::size_t position) {
    return position < text.size() ? text.substr(position) : std::wstring_view();
}

template <typename Number>
Number Required(const std::optional<Number>& number) {
    if (!number) throw RuntimeError(ErrorNumber::TypeMismatch);
    return *number;
}

// The number in a clip's tag as the program writes it, "C&12,5&...", without a copy: a load asks for it of
// every node of a profile. None for any other tag, right or wrong.
std::optional<std::int32_t> NumberInUsualTag(const KeptText& tag) {
    constexpr std::size_t kMostDigits = 4;  // of the count
    if (!tag.IsAnsi() || !tag.Bytes().starts_with("C&")) return std::nullopt;
    const char* next = tag.Bytes().data() + kFirstField;
    const char* const end = tag.Bytes().data() + tag.Bytes().size();
    std::int32_t number = 0;
    std::uint16_t count = 0;
    auto read = std::from_chars(next, end, number);
    if (read.ec != std::errc() || number < 0 || read.ptr == end || *read.ptr != ',') return std::nullopt;
    next = read.ptr + 1;
    read = std::from_chars(next, end, count);
    if (read.ec != std::errc() || read.ptr == end || *read.ptr != '&') return std::nullopt;
    if (read.ptr > next + kMostDigits) return std::nullopt;
    return number;
}

}  // namespace

void ProfileTag::Read(std::wstring_view text) {
    const std::size_t first = text.find(kSeparator, kFirstField);
    if (first == std::wstring_view::npos) return;
    counter = Required(ParseInt32(Between(text, kFirstField, first)));
    const std::size_t second = text.find(kSeparator, first + 1);
    if (second == std::wstring_view::npos) return;
    directory = Between(text, first + 1, second);
    globalFlag = From(text, second + 1).starts_with(L'1');
    info = From(text, second + 3);
}

ProfileTag ProfileTag::Of(std::wstring_view text) {
    ProfileTag tag;
    tag.Read(text);
    return tag;
}

std::optional<std::int32_t> ProfileTag::CounterOf(std::wstring_view text) {
    const std::size_t end = text.find(kSeparator, kFirstField);
    if (end == std::wstring_view::npos) return std::nullopt;
    return ParseInt32(Between(text, kFirstField, end));
}

std::wstring ProfileTag::WithCounter(const std::wstring& text, std::int32_t counter) {
    const std::size_t end = text.find(kSeparator, kFirstField);
    if (end == std::wstring::npos) return text;
    return text.substr(0, kFirstField) + NumberText(counter) + text.substr(end);
}

std::wstring ProfileTag::Text() const {
    return L"P&" + NumberText(counter) + kSeparator + directory + kSeparator + (globalFlag ? L"1" : L"0") +
           kSeparator + info;
}

void ClipTag::Read(std::wstring_view text) {
    if (text.empty()) return;
    const std::size_t first = text.find(kSeparator, kFirstField);
    if (first == std::wstring_view::npos) throw RuntimeError(ErrorNumber::InvalidArgument);
    const std::wstring_view head = Between(text, kFirstField, first);
    const std::size_t comma = head.find(L',');
    if (comma == std::wstring_view::npos) return;
    number = Required(ParseInt32(head.substr(0, comma)));
    formatCount = Required(ParseInt16(head.substr(comma + 1)));
    const std::size_t second = text.find(kSeparator, first + 1);
    if (second == std::wstring_view::npos) return;
    timeCaptured = Between(text, first + 1, second);
    info = From(text, second + 1);
}

ClipTag ClipTag::Of(std::wstring_view text) {
    ClipTag tag;
    tag.Read(text);
    return tag;
}

std::int32_t ClipTag::NumberOf(const KeptText& text) {
    if (const auto number = NumberInUsualTag(text)) return *number;
    try {
        return std::max(Of(text.Text()).number, 0);
    } catch (const RuntimeError&) {
        return 0;
    }
}

std::wstring ClipTag::Text() const {
    return L"C&" + NumberText(number) + L"," + NumberText(formatCount) + kSeparator + timeCaptured +
           kSeparator + info;
}

StructureTag StructureTag::Of(std::wstring_view text) {
    return {std::wstring(From(text, kFirstField))};
}

std::wstring StructureTag::Text() const {
    return L"S&" + info;
}
