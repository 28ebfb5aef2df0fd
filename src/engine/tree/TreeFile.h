#pragma once

#include <cstdint>
#include <vector>

#include "engine/tree/TreeData.h"

// The tree data file's image, apart from the file itself. Layout: docs/formats/nxclip-nxp.md, its constants:
// engine/tree/TreeFileLayout.h.

// The whole image of `data`: the records 0 to Count. Throws RuntimeError: Overflow when a text is too long to
// be stored, IndexOutOfRange when there are fewer records than Count says.
std::vector<std::uint8_t> EncodeTreeData(const TreeData& data);

// The nodes of an image that is made straight from them.
struct StoredNodes {
    const Node* top = nullptr;      // it and what is below it
    bool andAllBehind = false;      // and everything behind that in tree order
    const Node* without = nullptr;  // but for this one and what is below it
};
// The image of such nodes. Throws RuntimeError (Overflow) for a text that is too long and for levels that do
// not fit the depth.
std::vector<std::uint8_t> EncodeNodes(const StoredNodes& stored);

// The records in `image`, which may go on behind them: a file is never shortened. Throws RuntimeError when
// the image is damaged; allocates no more records than the image has bytes for. Depths are taken as they
// stand.
TreeData DecodeTreeData(const std::vector<std::uint8_t>& image);
