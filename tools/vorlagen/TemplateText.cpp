#include "TemplateText.h"

#include <algorithm>
#include <stdexcept>

#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/NodeCollection.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Text.h"

namespace {

constexpr std::size_t kBlanksPerLevel = 4;

// One node as the text gives it.
struct Line {
    std::size_t number = 0;
    std::size_t depth = 0;
    std::wstring name;
    std::wstring info;
};

[[noreturn]] void Refuse(std::size_t line, const std::string& why) {
    throw std::runtime_error("line " + std::to_string(line) + ": " + why);
}

// UTF-8, up to U+FFFF: the code page has nothing beyond.
std::wstring Decode(const std::string& bytes, std::size_t line) {
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<std::uint8_t>(bytes[i++]);
        const int following = lead < 0x80 ? 0 : lead >> 5 == 6 ? 1 : lead >> 4 == 14 ? 2 : -1;
        if (following < 0) Refuse(line, "no character of the code page");
        std::uint32_t code = following == 0 ? lead : lead & (0x3Fu >> following);
        for (int k = 0; k < following; ++k) {
            const auto next = i < bytes.size() ? static_cast<std::uint8_t>(bytes[i++]) : 0;
            if (next >> 6 != 2) Refuse(line, "no UTF-8");
            code = code << 6 | (next & 0x3F);
        }
        text += static_cast<wchar_t>(code);
    }
    if (!FitsAnsi(text)) Refuse(line, "a character that the code page does not have");
    return text;
}

std::vector<Line> Parse(const std::string& source) {
    std::vector<Line> lines;
    std::size_t number = 0;
    for (std::size_t start = 0; start < source.size();) {
        const std::size_t end = std::min(source.find('\n', start), source.size());
        const std::wstring text = Decode(source.substr(start, end - start), ++number);
        start = end + 1;
        const std::wstring content = Trim(text);
        if (content.empty() || content.starts_with(L'#')) continue;
        if (content.find_first_of(L"\t\r") != std::wstring::npos) Refuse(number, "a tab or carriage return");
        if (content.starts_with(L'|')) {
            if (lines.empty() || lines.back().info.empty()) Refuse(number, "nothing to carry on");
            lines.back().info += L' ' + Trim(content.substr(1));
            continue;
        }
        const std::size_t blanks = text.find_first_not_of(L' ');
        if (blanks % kBlanksPerLevel != 0) Refuse(number, "indented by half a level");
        const std::size_t bar = content.find(L'|');
        const bool hasInfo = bar != std::wstring::npos;
        lines.push_back({number, blanks / kBlanksPerLevel, Trim(content.substr(0, bar)),
                         hasInfo ? Trim(content.substr(bar + 1)) : std::wstring()});
    }
    return lines;
}

Node& AddNode(NodeCollection& nodes, Node* parent, const Line& line) {
    const bool isProfile = parent == nullptr;
    const ImageValue image = std::wstring(isProfile ? L"Profile" : L"Structure");
    Node& node = nodes.Add(parent, isProfile ? NodeRelation::Last : NodeRelation::Child, line.name, image);
    // The directory is entered when a profile is made from the template.
    node.SetTag(isProfile ? MakeProfileTag(0, L"", false, line.info) : MakeStructureTag(line.info));
    node.SetExpanded(isProfile);
    return node;
}

// The first line is the profile, every other one a folder below the nearest line before it that is one level
// up.
Node& Build(NodeCollection& nodes, const std::vector<Line>& lines) {
    std::vector<Node*> path;
    for (const Line& line : lines) {
        if (line.name.empty()) Refuse(line.number, "no name");
        if (line.depth > path.size()) Refuse(line.number, "more than one level down");
        if (line.depth == 0 && !path.empty()) Refuse(line.number, "a second profile");
        path.resize(line.depth);
        path.push_back(&AddNode(nodes, path.empty() ? nullptr : path.back(), line));
    }
    if (path.empty()) throw std::runtime_error("no profile in it");
    return *path.front();
}

}  // namespace

std::vector<std::uint8_t> TemplateFromText(const std::string& source) {
    NodeCollection nodes;
    CTreeViewEx tree;
    tree.Bind(&nodes);
    if (!tree.BuildTreeData(&Build(nodes, Parse(source)))) throw std::runtime_error("cannot be flattened");
    return EncodeTreeData(tree.Data());
}
