#pragma once

#include <cstdint>

#include "engine/flows/modDragDrop.h"
#include "engine/tree/CTreeViewEx.h"

// Where a dragged node may go, by kind: a clip or a folder into a profile or folder (`asChild`) or in front
// of another clip or folder; a profile only in front of another profile or, with a null `target`, behind the
// last one, and only as a move, for a copy would be a second tree over the same directory. Nothing goes into
// itself.
bool DropPermitted(const CTreeViewEx& tree, const Node* source, const Node* target, bool asChild, bool move);

// The node that a payload names; null when it comes from another tree than the one with the window handle
// `ownTree` (its 32 significant bits), or names a node that is no more.
Node* DraggedNodeIn(const NodeCollection& nodes, const DraggedNode& payload, std::int32_t ownTree);

// True when a drop at this height of a node's row goes into the node, false when it goes in front of it, as
// in the upper third. Where only one of the two is permitted, it is that one. `offset` is measured in pixels
// from the row's top.
bool DropsAsChild(const CTreeViewEx& tree, const Node* source, const Node* target, bool move, int offset,
                  int rowHeight);
