#pragma once

#include <windows.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "engine/flows/ClipOperations.h"
#include "engine/flows/modDragDrop.h"
#include "engine/tree/NodeRef.h"
#include "windows/controls/TreePane.h"

// Dragging nodes and dropping them on the tree or, clips, as ordinary files on any other program; and files
// of other programs that are dropped on a profile or folder. All by OLE.
class TreeDrag {
 public:
    // `placed` is told the nodes at their new place, `filesDropped` the paths of files for a container, while
    // the program that they came from waits. Nothing is owned; all must live until Stop.
    TreeDrag(TreePane& pane, CTreeViewEx& tree, ClipOperations& operations,
             std::function<void(ChosenNodes placed)> placed,
             std::function<void(Node& container, std::vector<std::wstring> paths)> filesDropped)
        : pane_(pane),
          tree_(tree),
          operations_(operations),
          placed_(std::move(placed)),
          filesDropped_(std::move(filesDropped)) {}
    TreeDrag(const TreeDrag&) = delete;
    TreeDrag& operator=(const TreeDrag&) = delete;

    // Lets nodes be dropped on the tree, until Stop. When the system refuses, the tree works without that.
    void Accept();
    void Stop();

    // Runs a drag of nodes, one or several, to its end: the copy or the move, or the refusal told.
    void Run(ChosenNodes nodes);
    // Ends it: nothing is dropped.
    void Cancel();

 private:
    class Target;
    // Where a drop would go.
    struct Place {
        Node* target = nullptr;  // null: the end of the root level
        bool into = false;       // else in front of it
        bool permitted = false;
    };
    std::int32_t OwnTree() const;
    bool IsDragged(const DraggedNode& payload) const;
    Place PlaceAt(POINT inTree, bool move) const;
    Node* ContainerAt(POINT inTree) const;
    void ScrollNear(POINT inTree);
    void Dropped(const Place& place, bool move);
    void EndRun(bool letGo);
    void TellRefusal(ChosenNodes sources);
    std::vector<Node*> Dragged() const;

    TreePane& pane_;
    CTreeViewEx& tree_;
    ClipOperations& operations_;
    std::function<void(ChosenNodes)> placed_;
    std::function<void(Node&, std::vector<std::wstring>)> filesDropped_;
    bool accepts_ = false;
    bool cancelled_ = false;
    std::deque<NodeRef> dragged_;
    // What was dropped, once `dropped_`.
    bool dropped_ = false;
    NodeRef target_;
    bool ontoRootLevel_ = false;
    bool into_ = false;
    bool move_ = false;
};
