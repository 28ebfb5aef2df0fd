#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/clipboard/CClipBoard.h"
#include "engine/tree/NodeCollection.h"

// One line of the list beside the tree.
struct ListEntry {
    std::wstring text;
    // The key of its icon: a node's kind ("Profile", "Structure", "Clip") or a format's group.
    std::wstring icon;
    // The node's index in the tree; 0 for a format.
    int treeIndex = 0;
    // What the columns behind the first show in details mode; as many as there are columns, less one.
    std::vector<std::wstring> details;
};

// All that the list, the label above it and the status bar show for the selected node.
struct ListContent {
    std::wstring title;
    // The headings in details mode.
    std::vector<std::wstring> columns;
    std::vector<ListEntry> entries;
    // The number of entries, or why there are none.
    std::wstring status;
    // The formats of a selected clip and the file that holds their data, for the preview; none and empty for
    // any other node.
    std::shared_ptr<CFormats> formats;
    std::wstring clipFile;
};

// Reads what belongs to `selected` (null: nothing is selected). A clip's headers are read from its file, and
// what goes wrong there is told to the user.
ListContent BuildListContent(const Node* selected, CClipBoard& clipBoard);
