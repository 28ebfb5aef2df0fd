#include "engine/flows/ChosenNodes.h"

#include <algorithm>

#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Text.h"

namespace {

// Sorted, so that each can be looked up among many.
class NodeSet {
 public:
    explicit NodeSet(ChosenNodes nodes) : nodes_(nodes.begin(), nodes.end()) {
        std::sort(nodes_.begin(), nodes_.end());
        nodes_.erase(std::unique(nodes_.begin(), nodes_.end()), nodes_.end());
    }
    bool Has(const Node* node) const { return std::binary_search(nodes_.begin(), nodes_.end(), node); }
    bool HasAbove(const Node* node) const {
        for (node = node->Parent(); node != nullptr; node = node->Parent())
            if (Has(node)) return true;
        return false;
    }

 private:
    std::vector<const Node*> nodes_;
};

std::wstring CountOf(int count, const wchar_t* one, const wchar_t* many) {
    return NumberText(static_cast<std::int64_t>(count)) + L" " + (count == 1 ? one : many);
}

}  // namespace

std::vector<Node*> TopmostOf(ChosenNodes nodes) {
    const NodeSet all(nodes);
    std::vector<Node*> topmost;
    for (Node* const node : nodes)
        if (node != nullptr && !all.HasAbove(node)) topmost.push_back(node);
    // Each once: the same one again is mostly its neighbour, but need not be.
    std::vector<Node*> seen = topmost;
    std::sort(seen.begin(), seen.end());
    if (std::adjacent_find(seen.begin(), seen.end()) == seen.end()) return topmost;
    std::vector<Node*> once;
    for (Node* const node : topmost)
        if (std::find(once.begin(), once.end(), node) == once.end()) once.push_back(node);
    return once;
}

std::vector<SiblingRun> RunsOf(ChosenNodes nodes) {
    const NodeSet all(nodes);
    std::vector<SiblingRun> runs;
    std::vector<const Node*> parents;  // that are done, in order
    for (Node* const node : nodes) {
        Node* const parent = node->Parent();
        const auto place = std::lower_bound(parents.begin(), parents.end(), parent);
        if (parent == nullptr || (place != parents.end() && *place == parent)) continue;
        parents.insert(place, parent);
        bool inRun = false;
        for (Node* child = parent->FirstChild(); child != nullptr; child = child->Next()) {
            const bool chosen = all.Has(child);
            if (chosen && !inRun) runs.push_back({parent, nullptr, {}});
            if (chosen) runs.back().nodes.push_back(child);
            if (!chosen && inRun) runs.back().before = child;
            inRun = chosen;
        }
    }
    return runs;
}

std::vector<std::vector<Node*>> ByProfile(ChosenNodes nodes) {
    std::vector<std::vector<Node*>> groups;
    for (Node* const node : nodes) {
        const auto group = std::find_if(groups.begin(), groups.end(), [&](const std::vector<Node*>& known) {
            return GetTopNode(known.front()) == GetTopNode(node);
        });
        if (group != groups.end())
            group->push_back(node);
        else
            groups.push_back({node});
    }
    return groups;
}

std::wstring CountedText(ChosenNodes nodes) {
    int clips = 0;
    int folders = 0;
    for (const Node* const node : nodes) {
        const NodeCounts below = CountBelow(*node);
        clips += below.clips + (IsClipNode(node) ? 1 : 0);
        folders += below.folders + (IsStructureNode(node) ? 1 : 0);
    }
    const std::wstring clipText = CountOf(clips, L"Clip", L"Clips");
    const std::wstring folderText = CountOf(folders, L"Ordner", L"Ordner");
    if (folders == 0) return clipText;
    return clips == 0 ? folderText : clipText + L" und " + folderText;
}
