#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "engine/clipboard/CClipBoard.h"
#include "engine/tree/NodeCollection.h"

class HitList;

// One row of the list beside the tree. What it shows is asked for when it is drawn.
struct ListEntry {
    // The node's index in the tree; 0 for a format, whose place in `formats` is the row's.
    int treeIndex = 0;
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
    // The nodes that the entries name; null when there are none. Not owned.
    const NodeCollection* nodes = nullptr;
    // What a search found, when the rows are its hits; null otherwise. Not owned.
    const HitList* hits = nullptr;
};

// Reads what belongs to `selected` (null: nothing is selected). A clip's headers are read from its file, and
// what goes wrong there is told to the user.
ListContent BuildListContent(const Node* selected, CClipBoard& clipBoard);

// In what order the list shows what lies in a profile or folder. The tree keeps its own.
struct ListOrder {
    static constexpr int kAsInTree = -1;
    static constexpr int kCaptured = 4;  // the column with the time of capture

    int column = kAsInTree;
    bool descending = false;

    friend bool operator==(const ListOrder&, const ListOrder&) = default;
};
// The newest first.
inline constexpr ListOrder kNewestFirst{ListOrder::kCaptured, true};

// The order after a click on a column's heading: first by it (by the time of capture, whose column is
// `captured`, the newest in front), then the other way round, then as in the tree again.
ListOrder OrderAfterClick(const ListOrder& order, int column, int captured = ListOrder::kCaptured);
// What a search found is put in order by HitList, and formats keep theirs.
bool CanBeSorted(const ListContent& content);
// Puts the entries in order, profiles and folders in front of the clips.
void SortEntries(ListContent& content, const ListOrder& order);

// What a row shows in a column, counted from 0. Empty outside of the list and where there is nothing to say,
// which includes a node that went meanwhile.
std::wstring ListText(const ListContent& content, int row, int column);
// What there is to tell beside that while the mouse rests on it; empty for nothing.
std::wstring ListTip(const ListContent& content, int row, int column);
// True for a column of numbers, which stand one below the other at its right.
bool IsNumberColumn(const ListContent& content, int column);
// The key of a row's icon: a node's kind ("Profile", "Structure", "Clip") or a format's group.
std::wstring ListIcon(const ListContent& content, int row);

// The row that typing leads to: the first one from `start` on whose name begins with `text` or, if not
// `partial`, is `text`, without regard to case; -1 for none. With `wrap` the search goes on at the first row.
int FindListRow(const ListContent& content, const std::wstring& text, int start, bool partial, bool wrap);
