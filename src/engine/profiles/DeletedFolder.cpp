#include "engine/profiles/DeletedFolder.h"

#include <chrono>

#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/ByteBuffer.h"
#include "platform/Text.h"

namespace {

using std::chrono::days;

constexpr const wchar_t* kFolderInfo =
    L"Hierher kommt, was gelöscht wird. Was hier gelöscht wird, ist endgültig weg.";

// "[Gelöscht am 22.11.2026 aus Profil\Ordner]", the last thing in an information.
constexpr std::wstring_view kNote = L"[Gelöscht am ";
constexpr std::wstring_view kFrom = L" aus ";
constexpr std::size_t kDateLength = 10;

using Day = std::chrono::sys_days;

Day DayOf(FileTime time) {
    constexpr FileTime kUnitsOfADay = FileTime{24} * 60 * 60 * 10'000'000;
    constexpr Day kFirst{std::chrono::year{1601} / 1 / 1};
    return kFirst + days(time / kUnitsOfADay);
}

std::wstring TwoDigits(unsigned number) {
    return (number < 10 ? L"0" : L"") + NumberText(static_cast<std::int64_t>(number));
}

std::wstring DateOf(Day day) {
    const std::chrono::year_month_day date(day);
    return TwoDigits(static_cast<unsigned>(date.day())) + L"." +
           TwoDigits(static_cast<unsigned>(date.month())) + L"." +
           NumberText(static_cast<std::int64_t>(static_cast<int>(date.year())));
}

std::optional<Day> ParseDate(const std::wstring& text) {
    if (text.size() != kDateLength || text[2] != L'.' || text[5] != L'.') return std::nullopt;
    const auto day = ParseInt32(text.substr(0, 2));
    const auto month = ParseInt32(text.substr(3, 2));
    const auto year = ParseInt32(text.substr(6));
    if (!day || !month || !year) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    return date.ok() ? std::optional<Day>(date) : std::nullopt;
}

// The place where the note begins; npos when there is none.
std::size_t PlaceOfNote(const std::wstring& info) {
    if (info.empty() || info.back() != L']') return std::wstring::npos;
    const std::size_t place = info.rfind(kNote);
    const bool dated =
        place != std::wstring::npos && ParseDate(info.substr(place + kNote.size(), kDateLength));
    return dated ? place : std::wstring::npos;
}

std::wstring WithoutNote(const std::wstring& info) {
    const std::size_t place = PlaceOfNote(info);
    if (place == std::wstring::npos) return info;
    return info.substr(0, place > 0 && info[place - 1] == L' ' ? place - 1 : place);
}

std::wstring WithNote(const std::wstring& info, const std::wstring& from, FileTime now) {
    std::wstring note(kNote);
    note += DateOf(DayOf(now));
    note.append(kFrom).append(from) += L']';
    return info.empty() ? note : info + L" " + note;
}

// The tag of a damaged clip is not rewritten: it would lead elsewhere.
std::optional<std::wstring> TagWithInfo(const Node& node, const std::wstring& info) {
    if (IsStructureNode(&node)) return MakeStructureTag(info);
    const NodeAttributes read = AttributesOf(&node);
    if (read.clipNumber == 0) return std::nullopt;
    return MakeClipTag(read.clipNumber, read.formatCount, read.timeCaptured, info);
}

}  // namespace

bool IsDeletedFolder(const Node* node) {
    return IsStructureNode(node) && IsProfileNode(node->Parent()) && node->Parent()->Parent() == nullptr &&
           AttributesOf(node).info.starts_with(kFolderInfo);
}

Node* DeletedFolderOf(const Node& profile) {
    // Mostly the last one.
    for (Node* child = profile.LastChild(); child != nullptr; child = child->Previous())
        if (IsDeletedFolder(child)) return child;
    return nullptr;
}

Node& AddDeletedFolder(NodeCollection& nodes, Node& profile) {
    Node& folder = nodes.Add(&profile, NodeRelation::Child, kDeletedFolderName, std::wstring(L"Structure"));
    folder.SetTag(MakeStructureTag(kFolderInfo));
    return folder;
}

Node& AddInFrontOfDeleted(NodeCollection& nodes, Node& container, const std::wstring& text,
                          const std::wstring& image) {
    Node* const last = container.LastChild();
    return IsDeletedFolder(last) ? nodes.Add(last, NodeRelation::Previous, text, image)
                                 : nodes.Add(&container, NodeRelation::Child, text, image);
}

bool IsDeleted(const Node* node) {
    while (node != nullptr && !IsDeletedFolder(node->Parent()))
        node = node->Parent();
    return node != nullptr;
}

void NoteWhereItStands(Node& node, const std::wstring& from, FileTime now) {
    if (!IsStructureNode(&node) && !IsClipNode(&node)) return;
    const std::wstring info = AttributesOf(&node).info;
    const bool noted = PlaceOfNote(info) != std::wstring::npos;
    const bool toldThere = IsDeletedFolder(node.Parent());
    if (noted == toldThere) return;
    const std::optional<std::wstring> tag =
        TagWithInfo(node, toldThere ? WithNote(info, from, now) : WithoutNote(info));
    if (tag && FitsStoredText(*tag)) node.SetTag(*tag);
}

std::optional<int> DaysSinceDeletion(const Node& node, FileTime now) {
    const std::wstring info = AttributesOf(&node).info;
    const std::size_t place = PlaceOfNote(info);
    if (place == std::wstring::npos) return std::nullopt;
    const Day deleted = *ParseDate(info.substr(place + kNote.size(), kDateLength));
    return static_cast<int>((DayOf(now) - deleted).count());
}
