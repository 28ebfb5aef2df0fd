#pragma once

#include <windows.h>

#include "engine/profiles/modDragDrop.h"
#include "windows/controls/TreePane.h"

// Dragging a node of the tree and dropping it, by OLE, so that it works from window to window. What may go
// where and what a drop does is the host's to say.
class TreeDragHost {
 public:
    virtual ~TreeDragHost() = default;

    // The node that a payload names in this tree; null when it comes from another one.
    virtual Node* DraggedNodeOf(const DraggedNode& payload) = 0;
    // What a drop at this height of the target's row means: into the target (true) or in front of it.
    virtual bool DropsInto(Node& source, Node* target, bool move, int offset, int rowHeight) = 0;
    virtual bool MayDrop(Node& source, Node* target, bool into, bool move) = 0;
    // Something is dragged over the tree; `y` and `height` are pixels of the control.
    virtual void DraggedOver(int y, int height) = 0;
    // Copies or moves the node. `source` is null when it comes from another tree.
    virtual void Dropped(Node* source, Node* target, bool into, bool move) = 0;
};

// Runs a drag that started on `node`, until it ends.
void DragNode(const TreePane& pane, const Node& node);

// Lets nodes be dropped on the tree; both must live until StopDropping.
bool AcceptDrops(TreePane& pane, TreeDragHost& host);
void StopDropping(const TreePane& pane);
