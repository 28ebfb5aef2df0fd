#include "engine/views/ListUpdate.h"

#include <algorithm>

#include "engine/clipboard/modFileIO.h"
#include "engine/flows/NewClipFile.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "engine/views/FormatTexts.h"
#include "engine/views/HitList.h"
#include "platform/Text.h"

namespace {

std::wstring Quoted(const wchar_t* kind, const Node& node) {
    return std::wstring(kind) + L" \"" + node.FullPath() + L"\"";
}

std::wstring CountText(const ListContent& content) {
    return NumberText(static_cast<std::int64_t>(content.entries.size())) + L" Element(e)";
}

void ListFormats(const Node& clipNode, CClipBoard& clipBoard, ListContent& content) {
    content.title = Quoted(L"Formate von", clipNode);
    content.columns = {L"Format", L"Beschreibung", L"Größe"};
    const std::wstring path = ClipFileOf(&clipNode);
    FileOwner file(OpenClipFile(path, false, true));
    if (!file.IsSet()) {
        content.status = L"Datei " + path + L" nicht verfügbar !!!";
        return;
    }
    const auto formats = clipBoard.LoadFormatsByHandle(file.Get(), AttributesOf(&clipNode).formatCount);
    if (formats == nullptr || formats->Count() == 0) {
        const bool damaged = formats != nullptr && clipBoard.FileIsDamaged();
        content.status = damaged ? L"Die Datei " + path + L" ist beschädigt." : L"Keine Formate ermittelt";
        return;
    }
    content.entries.resize(static_cast<std::size_t>(formats->Count()));
    content.formats = formats;
    content.clipFile = path;
    content.status = CountText(content);
}

void ListChildren(const Node& node, ListContent& content) {
    if (IsProfileNode(&node)) content.title = Quoted(L"Profil", node);
    if (IsStructureNode(&node)) content.title = Quoted(L"Ordner", node);
    content.columns = {L"Name", L"Ordner", L"Clips", L"Formate", L"Erfasst", L"Information"};
    content.nodes = &node.Owner();
    content.entries.reserve(static_cast<std::size_t>(node.Children()));
    for (const Node* child = node.FirstChild(); child != nullptr; child = child->Next())
        content.entries.push_back({child->Index()});
    content.status = CountText(content);
}

bool IsRow(const ListContent& content, int row) {
    return row >= 0 && row < static_cast<int>(content.entries.size());
}

// Null when the row shows no node.
const Node* NodeOfRow(const ListContent& content, int row) {
    if (!IsRow(content, row) || content.nodes == nullptr) return nullptr;
    return content.nodes->Item(content.entries[static_cast<std::size_t>(row)].treeIndex);
}

// Null when the row shows no format.
const CFormat* FormatOfRow(const ListContent& content, int row) {
    const bool shown = IsRow(content, row) && content.formats != nullptr && row < content.formats->Count();
    return shown ? &content.formats->Item(row + 1) : nullptr;
}

std::wstring FormatText(const CFormat& format, int column) {
    switch (column) {
        case 0:
            return format.FormatName;
        case 1:
            return DescriptionOf(format.FormatName).Description;
        case 2:
            return SizeText(format.DataSize);
        default:
            return {};
    }
}

std::wstring NodeText(const Node& node, int column) {
    if (column == 0) return node.Text();
    const bool clip = IsClipNode(&node);
    if (column <= 2 && clip) return {};
    if (column == 1) return NumberText(CountBelow(node).folders);
    if (column == 2) return NumberText(CountBelow(node).clips);
    const NodeAttributes attributes = AttributesOf(&node);
    if (column == 3 && clip) return NumberText(attributes.formatCount);
    if (column == 4) return attributes.timeCaptured;
    if (column == 5) return attributes.info;
    return {};
}

// What an entry is sorted by, made once for all comparisons.
struct SortKey {
    ListEntry entry;
    bool isClip = false;
    std::int64_t number = 0;
    std::wstring text;
};

bool IsBefore(const SortKey& a, const SortKey& b) {
    return a.number != b.number ? a.number < b.number : CompareNoCase(a.text, b.text) < 0;
}

// The numbers of clips are given in the order of capture.
SortKey KeyOf(const ListEntry& entry, const Node* node, int column) {
    SortKey key;
    key.entry = entry;
    key.isClip = IsClipNode(node);
    if (node == nullptr) return key;
    if (column == ListOrder::kCaptured)
        key.number = ClipNumberOf(node);
    else if (column >= 1 && column <= 3)
        key.number = ParseInt32(NodeText(*node, column)).value_or(0);
    else
        key.text = NodeText(*node, column);
    return key;
}

}  // namespace

ListContent BuildListContent(const Node* selected, CClipBoard& clipBoard) {
    ListContent content;
    if (selected == nullptr) return content;
    if (IsClipNode(selected)) {
        ListFormats(*selected, clipBoard, content);
    } else {
        ListChildren(*selected, content);
    }
    return content;
}

ListOrder OrderAfterClick(const ListOrder& order, int column, int captured) {
    const bool firstDescends = column == captured;
    if (order.column != column) return {column, firstDescends};
    if (order.descending == firstDescends) return {column, !firstDescends};
    return {};
}

bool CanBeSorted(const ListContent& content) {
    return content.nodes != nullptr && content.hits == nullptr;
}

void SortEntries(ListContent& content, const ListOrder& order) {
    if (!CanBeSorted(content) || order.column == ListOrder::kAsInTree) return;
    std::vector<SortKey> keys;
    keys.reserve(content.entries.size());
    for (const ListEntry& entry : content.entries)
        keys.push_back(KeyOf(entry, content.nodes->Item(entry.treeIndex), order.column));
    std::ranges::stable_sort(keys, [&](const SortKey& a, const SortKey& b) {
        if (a.isClip != b.isClip) return b.isClip;
        return order.descending ? IsBefore(b, a) : IsBefore(a, b);
    });
    std::ranges::transform(keys, content.entries.begin(), &SortKey::entry);
}

std::wstring ListText(const ListContent& content, int row, int column) {
    if (content.hits != nullptr) return content.hits->Text(row, column);
    if (const Node* const node = NodeOfRow(content, row)) return NodeText(*node, column);
    if (const CFormat* const format = FormatOfRow(content, row)) return FormatText(*format, column);
    return {};
}

std::wstring ListIcon(const ListContent& content, int row) {
    if (const Node* const node = NodeOfRow(content, row)) return KindImage(node);
    if (const CFormat* const format = FormatOfRow(content, row))
        return DescriptionOf(format->FormatName).Group;
    return {};
}

std::wstring ListTip(const ListContent& content, int row, int column) {
    const Node* const node = column == 0 ? NodeOfRow(content, row) : nullptr;
    if (IsClipNode(node)) {
        const std::wstring info = AttributesOf(node).info;
        return info.starts_with(kIncompleteClip) ? info : std::wstring();
    }
    const CFormat* const format = FormatOfRow(content, row);
    return format != nullptr && column == 2 ? ExactSizeText(format->DataSize) : std::wstring();
}

bool IsNumberColumn(const ListContent& content, int column) {
    if (content.hits != nullptr) return column == HitList::kSizeColumn;
    return content.formats != nullptr ? column == 2 : column >= 1 && column <= 3;
}

int FindListRow(const ListContent& content, const std::wstring& text, int start, bool partial, bool wrap) {
    const int count = static_cast<int>(content.entries.size());
    start = std::clamp(start, 0, count);
    const auto matches = [&](int row) {
        std::wstring name = ListText(content, row, 0);
        if (partial) name.resize(std::min(name.size(), text.size()));
        return CompareNoCase(name, text) == 0;
    };
    for (int row = start; row < count; ++row)
        if (matches(row)) return row;
    for (int row = 0; wrap && row < start; ++row)
        if (matches(row)) return row;
    return -1;
}
