#pragma once

#include <windows.h>
// The tree control needs <windows.h> in front of it.
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "engine/tree/NodeCollection.h"
#include "platform/Busy.h"
#include "windows/controls/Subclass.h"
#include "windows/controls/Timer.h"

// The tree control on the screen. It mirrors the node collection: texts and pictures are asked for when they
// are drawn, and items are made when their parent is first opened, so that even a huge tree is shown at once.
// What lies deeper than some hundred levels is opened by the user alone.
//
// What the user starts here may take long, show boxes and change the tree, none of which the control is ready
// for in the middle of its own notification: drags, activations and new names are told afterwards, by a
// message of their own.
class TreePane : public NodeView {
 public:
    explicit TreePane(NodeCollection& nodes) : nodes_(nodes) {}
    ~TreePane() override;

    // Makes the control as a child of `parent` and becomes the collection's view.
    bool Create(HWND parent, int control);
    // Takes over a control that a dialog template made.
    void Attach(HWND control);
    // Takes the view away from the collection; the control itself goes with its parent.
    void Detach();
    HWND Window() const { return window_; }

    // The notifications that the control sends to its parent; the result is the parent's.
    LRESULT OnNotify(NMHDR& header);

    // The node under a point of the control in pixels; null when there is none.
    Node* NodeAt(POINT point) const;
    // The node whose row holds the point, wherever in the row; null below the last one.
    Node* RowAt(POINT point) const;
    // The row of a shown node in pixels of the control.
    RECT RowOf(const Node& node) const;
    // Where the keyboard's context menu belongs: below the selected node, in screen pixels.
    POINT MenuPoint() const;
    // Starts renaming a node in place. The program is busy with it until the name has been told or given up.
    void EditLabel(Node& node);
    bool IsEditing() const;
    // The mouse holds a row.
    bool IsHeld() const { return held_.has_value(); }
    // Ends it now: the listener is told the name that was typed. One that it refuses stays in the edit.
    void EndEdit();
    // The control does not always say that an edit has ended, because its node or its window went.
    void ForgetEndedEdit();
    // Shows the place where something dragged would go: on a node, in front of it, or nowhere (null).
    void ShowDropTarget(Node* node, bool before);

    // What the user did, told to the owner.
    class Listener {
     public:
        virtual ~Listener() = default;
        virtual void TreeSelectionChanged(Node* node) = 0;
        virtual bool MayEditLabel(Node& node) = 0;
        // Another name was typed. False when it cannot be taken over: it stands in the edit again then.
        virtual bool LabelEdited(Node& node, const std::wstring& text) = 0;
        virtual void DragStarted(Node& node) = 0;
        virtual void NodeActivated(Node& node) = 0;
    };
    void SetListener(Listener* listener) { listener_ = listener; }

    void NodeAdded(Node& node) override;
    void NodeRemoving(Node& node) override;
    void NodeTextChanged(Node& node) override;
    void NodeImageChanged(Node& node) override;
    void NodeExpandedChanged(Node& node) override;
    void NodeMoved(Node& node) override;
    void ChildrenReordered(Node* parent) override;
    void SelectionChanged(Node* node) override;
    void AllRemoved() override;
    void BeginBulkChange() override;
    void EndBulkChange() override;
    void EnsureVisible(Node& node) override;
    Node* FirstVisible() override;
    void ScrollDown() override;

 private:
    // What is told to the listener once the control is done with its notification.
    enum class Deed { Drag, Activate, Rename };
    struct Waiting {
        Deed deed;
        Node* node;
        std::wstring text;
    };

    static HTREEITEM ItemOf(const Node& node) { return reinterpret_cast<HTREEITEM>(node.viewItem); }
    static Node& NodeOf(LPARAM parameter) { return *reinterpret_cast<Node*>(parameter); }
    Node* NodeOfItem(HTREEITEM item) const;

    // True when the children of `parent` (null: the root level) have items of their own, or are to have them.
    bool ShowsChildren(const Node* parent) const;
    // Null when none of the children has an item.
    HTREEITEM FirstItemBelow(const Node* parent) const;
    Node* FirstOf(const Node* parent) const;
    Node* LastOf(const Node* parent) const;
    // Behind which item the node's own belongs: that of the nearest elder sibling that has one.
    static HTREEITEM PlaceOf(const Node& node);
    void MakeItem(Node& node, HTREEITEM after);
    void MakeItemsBelow(Node* parent);
    void ShowChildren(Node* parent);
    bool IsRow(const Node& node) const;
    void MakeItemsDownTo(Node& node);
    void SelectItemOf(Node* node);
    void TellChildCount(const Node& node);
    void Redraw(const Node& node);
    void FillItem(TVITEMW& item) const;

    void OnExpanded(Node& node, bool expanded);
    void OnSelected(Node* node);
    void OnBeginLabelEdit(const Node& node);
    void OnEndLabelEdit(Node& node, const wchar_t* text);
    Node* ActivatedBy(UINT notification) const;
    void TellLater(Deed deed, Node& node, std::wstring text = {});
    void TellWaiting();
    void TellWaitingWhenFree();
    void KeepOnlyNames();
    bool IsRenameWaiting() const;
    void Rename(Node& node, const std::wstring& text);

    NodeCollection& nodes_;
    HWND window_ = nullptr;
    Subclass ownMessage_;
    Listener* listener_ = nullptr;
    int bulkDepth_ = 0;
    std::vector<Node*> grown_;      // parents with items, null for the root level, below which nodes were
                                    // added during a bulk change
    std::vector<Waiting> waiting_;  // in the order in which it was done
    // While the control follows the mouse in a loop of its own: it goes on with the row that was there then.
    std::optional<BusyScope> held_;
    std::optional<BusyScope> editing_;
    Timer tellAgain_{[this] { TellWaitingWhenFree(); }};
    bool mirroring_ = false;  // the control changes because the collection did: what it tells is an echo
};
