#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "engine/tree/TreeData.h"

// The tree data file's image, apart from the file itself. Layout: docs/formats/nxclip-nxp.md, its constants:
// engine/tree/TreeFileLayout.h.

// The whole image of `data`: the records 0 to Count. Throws RuntimeError: Overflow when a text is too long to
// be stored, IndexOutOfRange when there are fewer records than Count says.
std::vector<std::uint8_t> EncodeTreeData(const TreeData& data);

// The nodes of an image that is made straight from them.
struct StoredNodes {
    const Node* top = nullptr;            // it and what is below it
    bool andAllBehind = false;            // and everything behind that in tree order
    std::span<Node* const> without = {};  // but for these and what is below them
};
// The image of such nodes. Throws RuntimeError (Overflow) for a text that is too long and for levels that do
// not fit the depth.
std::vector<std::uint8_t> EncodeNodes(const StoredNodes& stored);

// A record as it stands in an image, whose bytes it points to.
struct KeptRecord {
    std::string_view tag;
    std::string_view text;
    std::int16_t depth = 0;
    ImageValue key;
    ImageValue image;
    bool expanded = false;
    ImageValue expandedImage;
    ImageValue selectedImage;
    bool sorted = false;
};

// Calls `use`, if there is one, with the records 1 to Count in `image`, until it returns false, and returns
// Count. The image may go on behind its records: a file is never shortened. Throws RuntimeError when it is
// damaged; Count is never more than the image has bytes for. Depths are taken as they stand.
std::int32_t ReadTreeImage(const std::vector<std::uint8_t>& image,
                           const std::function<bool(const KeptRecord&)>& use);

// The same as records of their own.
TreeData DecodeTreeData(const std::vector<std::uint8_t>& image);
