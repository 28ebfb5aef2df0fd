#include "engine/views/ListUpdate.h"

#include "engine/clipboard/modFileIO.h"
#include "engine/clipboard/modFormatDesc.h"
#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Text.h"

namespace {

std::wstring Quoted(const wchar_t* kind, const Node& node) {
    return std::wstring(kind) + L" \"" + node.FullPath() + L"\"";
}

std::wstring CountText(const ListContent& content) {
    return NumberText(static_cast<std::int64_t>(content.entries.size())) + L" Element(e)";
}

ListEntry FormatEntry(const CFormat& format) {
    const FormatDescription& description = FormatDescriptionAt(FormatDescriptionIndex(format.FormatName));
    ListEntry entry;
    entry.text = format.FormatName;
    entry.icon = description.Group;
    entry.details = {description.Description, NumberText(format.DataSize)};
    return entry;
}

void ListFormats(const Node& clipNode, CClipBoard& clipBoard, ListContent& content) {
    content.title = Quoted(L"Formate von", clipNode);
    content.columns = {L"Format", L"Beschreibung", L"Größe (Bytes)"};
    const std::wstring path = ClipFileOf(&clipNode);
    ClipFileScope file(OpenClipFile(path, false, true));
    if (!file.IsOpen()) {
        content.status = L"Datei " + path + L" nicht verfügbar !!!";
        return;
    }
    const auto formats = clipBoard.LoadFormatsByHandle(file.Handle(), AttributesOf(&clipNode).formatCount);
    if (formats == nullptr || formats->Count() == 0) {
        content.status = L"Keine Formate ermittelt";
        return;
    }
    for (const CFormat& format : *formats) {
        content.entries.push_back(FormatEntry(format));
    }
    content.formats = formats;
    content.clipFile = path;
    content.status = CountText(content);
}

std::vector<std::wstring> NodeDetails(const Node& node) {
    const NodeAttributes attributes = AttributesOf(&node);
    if (IsClipNode(&node)) {
        return {L"", L"", NumberText(attributes.formatCount), attributes.timeCaptured, attributes.info};
    }
    const NodeCounts counts = CountBelow(node);
    return {NumberText(counts.folders), NumberText(counts.clips), L"", L"", attributes.info};
}

void ListChildren(const Node& node, ListContent& content) {
    if (IsProfileNode(&node)) content.title = Quoted(L"Profil", node);
    if (IsStructureNode(&node)) content.title = Quoted(L"Ordner", node);
    content.columns = {L"Name", L"Ordner", L"Clips", L"Formate", L"Erfasst", L"Information"};
    for (const Node* child = node.FirstChild(); child != nullptr; child = child->Next()) {
        content.entries.push_back({child->Text(), KindImage(child), child->Index(), NodeDetails(*child)});
    }
    content.status = CountText(content);
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
