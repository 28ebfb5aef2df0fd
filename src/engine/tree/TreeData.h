#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/tree/Node.h"

// One node of a flattened subtree, its fields in the order of the tree data file. Layout on disk:
// docs/formats/nxclip-nxp.md.
struct TreeNodeRecord {
    std::wstring Tag;
    std::wstring Text;
    std::int16_t Depth = 0;  // level below the first node of the subtree, which has 0
    ImageValue Key;          // always empty: nodes have no key
    ImageValue Image;
    bool Expanded = false;
    ImageValue ExpandedImage;
    ImageValue SelectedImage;
    bool Sorted = false;

    friend bool operator==(const TreeNodeRecord&, const TreeNodeRecord&) = default;
};

// A flattened subtree: the records 1 to Count are its nodes in tree order, a node before its children. Record
// 0 is part of the format and stays empty.
struct TreeData {
    std::int32_t Count = 0;
    std::vector<TreeNodeRecord> Nodes = std::vector<TreeNodeRecord>(1);

    friend bool operator==(const TreeData&, const TreeData&) = default;
};
