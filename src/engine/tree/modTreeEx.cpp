#include "engine/tree/modTreeEx.h"

#include "engine/tree/TreeWalk.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

constexpr wchar_t kSeparator = L'&';
// Behind the kind letter and its separator.
constexpr std::size_t kFirstField = 2;

bool IsOfKind(const Node* node, char letter) {
    return node != nullptr && node->TagAsKept().BeginsWith(letter);
}

std::wstring_view Between(std::wstring_view text, std::size_t first, std::size_t end) {
    return text.substr(first, end - first);
}

// What follows `position`, nothing when the text does not reach that far.
std::wstring_view From(std::wstring_view text, std::size_t position) {
    return position < text.size() ? text.substr(position) : std::wstring_view();
}

std::int32_t Int32Field(std::wstring_view field) {
    const auto number = ParseInt32(field);
    if (!number) throw RuntimeError(ErrorNumber::TypeMismatch);
    return *number;
}

std::int16_t Int16Field(std::wstring_view field) {
    const auto number = ParseInt16(field);
    if (!number) throw RuntimeError(ErrorNumber::TypeMismatch);
    return *number;
}

}  // namespace

bool IsClipNode(const Node* node) {
    return IsOfKind(node, 'C');
}

bool IsProfileNode(const Node* node) {
    return IsOfKind(node, 'P');
}

bool IsStructureNode(const Node* node) {
    return IsOfKind(node, 'S');
}

std::wstring MakeProfileTag(std::int32_t counter, const std::wstring& directory, bool globalFlag,
                            const std::wstring& info) {
    return L"P&" + NumberText(counter) + kSeparator + directory + kSeparator + (globalFlag ? L"1" : L"0") +
           kSeparator + info;
}

void ParseProfileTag(const std::wstring& tag, std::int32_t& counter, std::wstring& directory,
                     bool& globalFlag, std::wstring& info) {
    const std::size_t first = tag.find(kSeparator, kFirstField);
    if (first == std::wstring::npos) return;
    counter = Int32Field(Between(tag, kFirstField, first));
    const std::size_t second = tag.find(kSeparator, first + 1);
    if (second == std::wstring::npos) return;
    directory = Between(tag, first + 1, second);
    globalFlag = From(tag, second + 1).starts_with(L'1');
    info = From(tag, second + 3);
}

std::wstring MakeClipTag(std::int32_t clipNumber, std::int16_t formatCount, const std::wstring& timeCaptured,
                         const std::wstring& info) {
    return L"C&" + NumberText(clipNumber) + L"," + NumberText(formatCount) + kSeparator + timeCaptured +
           kSeparator + info;
}

void ParseClipTag(const std::wstring& tag, std::int32_t& clipNumber, std::int16_t& formatCount,
                  std::wstring& timeCaptured, std::wstring& info) {
    if (tag.empty()) return;
    const std::size_t first = tag.find(kSeparator, kFirstField);
    if (first == std::wstring::npos) throw RuntimeError(ErrorNumber::InvalidArgument);
    const std::wstring_view head = Between(tag, kFirstField, first);
    const std::size_t comma = head.find(L',');
    if (comma == std::wstring_view::npos) return;
    clipNumber = Int32Field(head.substr(0, comma));
    formatCount = Int16Field(head.substr(comma + 1));
    const std::size_t second = tag.find(kSeparator, first + 1);
    if (second == std::wstring::npos) return;
    timeCaptured = Between(tag, first + 1, second);
    info = From(tag, second + 1);
}

std::wstring MakeStructureTag(const std::wstring& info) {
    return L"S&" + info;
}

std::wstring ParseStructureTag(const std::wstring& tag) {
    return std::wstring(From(tag, kFirstField));
}

std::wstring TreeDataFilePath(const std::wstring& directory) {
    return WithBackslash(directory) + L"nxclip.nxp";
}

std::int32_t DescendantCount(const Node* node) {
    std::int32_t count = 0;
    TreeWalk walk(node);
    for (walk.Step(); walk.InSubtree(); walk.Step())
        ++count;
    return count;
}

std::int32_t LevelOf(const Node* node) {
    std::int32_t level = 0;
    for (; node != nullptr; node = node->Parent())
        ++level;
    return level;
}
