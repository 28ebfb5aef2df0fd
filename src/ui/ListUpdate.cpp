#include "ui/ListUpdate.h"

#include <new>

#include "clipboard/modFileIO.h"
#include "clipboard/modFormatDesc.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "tree/modTreeEx.h"
#include "ui/StoredClip.h"

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
    const StoredClip clip = StoredClipOf(clipNode);
    ClipFileScope file(OpenClipFile(clip.path, false, true));
    if (!file.IsOpen()) {
        content.status = L"Datei " + clip.path + L" nicht verfügbar !!!";
        return;
    }
    const auto formats = clipBoard.LoadFormatsByHandle(file.Handle(), clip.formatCount);
    if (formats == nullptr || formats->Count() == 0) {
        content.status = L"Keine Formate ermittelt";
        return;
    }
    for (const CFormat& format : *formats) {
        content.entries.push_back(FormatEntry(format));
    }
    content.formats = formats;
    content.clipFile = clip.path;
    content.status = CountText(content);
}

int CountChildren(const Node& node, bool (*isOfKind)(const Node*)) {
    int count = 0;
    for (const Node* child = node.FirstChild(); child != nullptr; child = child->Next()) {
        if (isOfKind(child)) ++count;
    }
    return count;
}

const wchar_t* KindPicture(const Node& node) {
    if (IsProfileNode(&node)) return L"Profile";
    if (IsStructureNode(&node)) return L"Structure";
    return IsClipNode(&node) ? L"Clip" : L"";
}

// A clip whose tag is damaged is listed by its name alone.
std::vector<std::wstring> ClipDetails(const Node& node) {
    try {
        const StoredClip clip = StoredClipOf(node);
        return {L"", L"", NumberText(clip.formatCount), clip.timeCaptured, clip.info};
    } catch (const RuntimeError&) {
        return std::vector<std::wstring>(5);
    }
}

std::vector<std::wstring> NodeDetails(const Node& node) {
    if (IsClipNode(&node)) return ClipDetails(node);
    const std::wstring info = IsStructureNode(&node) ? ParseStructureTag(node.Tag()) : std::wstring();
    return {NumberText(CountChildren(node, IsStructureNode)), NumberText(CountChildren(node, IsClipNode)),
            L"", L"", info};
}

void ListChildren(const Node& node, ListContent& content) {
    if (IsProfileNode(&node)) content.title = Quoted(L"Profil", node);
    if (IsStructureNode(&node)) content.title = Quoted(L"Ordner", node);
    content.columns = {L"Name", L"Ordner", L"Clips", L"Formate", L"Erfasst", L"Information"};
    for (const Node* child = node.FirstChild(); child != nullptr; child = child->Next()) {
        content.entries.push_back(
            {child->Text(), KindPicture(*child), child->Index(), NodeDetails(*child)});
    }
    content.status = CountText(content);
}

}  // namespace

ListContent BuildListContent(const Node* selected, CClipBoard& clipBoard) {
    ListContent content;
    if (selected == nullptr) return content;
    try {
        if (IsClipNode(selected)) {
            ListFormats(*selected, clipBoard, content);
        } else {
            ListChildren(*selected, content);
        }
    } catch (const RuntimeError& error) {
        content.status = error.Description();
    }
    return content;
}
