#pragma once

#include <cstdint>
#include <string>

#include "engine/tree/Node.h"

// Where a node stands below another one, told by what survives that the tree is loaded anew.
struct NodePlace {
    std::int32_t steps = 0;  // in tree order
    wchar_t kind = 0;        // the first letter of its tag
    std::wstring path;       // the names on the way down, joined by "\"; empty for the top itself
};

// `node` is `top` or stands below it.
NodePlace PlaceBelow(const Node& top, const Node& node);

// The node of that kind with that path, of several the nearest one by its steps; null when there is none.
Node* NodeAtPlace(Node& top, const NodePlace& place);
// The same; where it is gone, the folder above that is still there, in the end `top`.
Node& NearestToPlace(Node& top, NodePlace place);

// The node so many steps behind `top`; null when its subtree is not that large.
Node* NodeBehind(Node& top, std::int32_t steps);
