#include "engine/tree/NodePlace.h"

#include <cstdlib>

#include "engine/tree/TreeWalk.h"

namespace {

wchar_t KindOf(const Node& node) {
    const std::wstring tag = node.Tag();
    return tag.empty() ? L'\0' : tag[0];
}

std::wstring PathBelow(const Node& top, const Node& node) {
    std::wstring path;
    for (const Node* each = &node; each != &top && each != nullptr; each = each->Parent())
        path = path.empty() ? each->Text() : each->Text() + L"\\" + path;
    return path;
}

}  // namespace

NodePlace PlaceBelow(const Node& top, const Node& node) {
    NodePlace place{0, KindOf(node), PathBelow(top, node)};
    for (TreeWalk walk(&top); walk.InSubtree() && walk.Current() != &node; walk.Step())
        ++place.steps;
    return place;
}

Node* NodeAtPlace(Node& top, const NodePlace& place) {
    Node* nearest = nullptr;
    std::int32_t least = 0, steps = 0;
    for (TreeWalk walk(&top); walk.InSubtree(); walk.Step(), ++steps) {
        Node& node = *walk.Current();
        const std::int32_t distance = std::abs(steps - place.steps);
        if (nearest != nullptr && distance >= least) continue;
        // The whole path is put together only where its end is right.
        const bool mayBe = &node == &top ? place.path.empty() : place.path.ends_with(node.Text());
        if (!mayBe || KindOf(node) != place.kind || PathBelow(top, node) != place.path) continue;
        nearest = &node;
        least = distance;
    }
    return nearest;
}

Node& NearestToPlace(Node& top, NodePlace place) {
    while (!place.path.empty()) {
        if (Node* const node = NodeAtPlace(top, place); node != nullptr) return *node;
        const std::size_t above = place.path.rfind(L'\\');
        place.path.resize(above != std::wstring::npos ? above : 0);
        place.kind = L'S';
    }
    return top;
}

Node* NodeBehind(Node& top, std::int32_t steps) {
    TreeWalk walk(&top);
    while (steps-- > 0 && walk.InSubtree())
        walk.Step();
    return walk.InSubtree() ? walk.Current() : nullptr;
}
