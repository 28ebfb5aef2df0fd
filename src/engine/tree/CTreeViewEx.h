#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/tree/NodeCollection.h"
#include "engine/tree/TreeData.h"
#include "platform/SafeFile.h"

struct KeptRecord;

// The events of the tree wrapper. They are raised synchronously: the operation waits for the handler. A
// handler may add nodes and change properties, but must not remove a node of the subtree that is walked or
// copied.
class TreeViewExEvents {
 public:
    virtual ~TreeViewExEvents() = default;

    // Before each node is copied. `newParent` is null when the copy goes to the root level. Setting `cancel`
    // ends the whole operation; the copies made so far stay.
    virtual void BeforeNodeCopy(Node* /*newParent*/, Node& /*sourceNode*/, bool /*isMove*/,
                                bool& /*cancel*/) {}
    // After each node is copied.
    virtual void AfterNodeCopy(Node& /*newNode*/, Node& /*sourceNode*/, bool /*isMove*/) {}

    // Never raised; part of the surface.
    virtual void BeforeNodeMove(Node* /*newParent*/, Node& /*sourceNode*/, bool& /*cancel*/) {}
    virtual void AfterNodeMove(Node& /*node*/) {}
    virtual void BeforeNodeDelete(Node& /*node*/, bool& /*cancel*/) {}
    virtual void AfterNodeDelete() {}

    // For each node of a ForAllNodes walk. Setting `cancel` ends the walk.
    virtual void DoAction(std::int16_t /*action*/, Node& /*node*/, bool& /*cancel*/) {}
};

// What a drag is doing over the tree, by the numbers of the drag notification.
enum class DragState : std::int16_t { Enter = 0, Leave = 1, Over = 2 };

// The wrapper around the tree control: navigation, copying, drop rules and persistence of its nodes. Node
// references may be null for "none" unless they are C++ references. It knows nothing of clip files and
// profiles: whatever has to happen beside the tree happens in the handlers of its events.
class CTreeViewEx {
 public:
    CTreeViewEx() = default;
    CTreeViewEx(const CTreeViewEx&) = delete;
    CTreeViewEx& operator=(const CTreeViewEx&) = delete;

    // Binds the wrapper to a tree control's nodes, null to unbind. Not owned; must outlive the binding.
    // Unbound, every operation does nothing and finds nothing.
    void Bind(NodeCollection* treeView) { mvarTreeView = treeView; }
    NodeCollection* TreeView() const { return mvarTreeView; }
    // The one handler of the events, null for none. Not owned.
    void SetEvents(TreeViewExEvents* events) { events_ = events; }

    // --- Finding nodes. Tree order is depth first: a node, its children, then its next sibling. ---

    // The first node, in the collection's order, with exactly this tag.
    Node* SearchForTag(const std::wstring& tag) const;
    // 1 at the root level, plus 1 for each ancestor; 0 for none. Throws RuntimeError (Overflow) when the
    // level does not fit 16 bits; LevelOf counts on.
    std::int16_t NodeDepth(const Node* node) const;
    // Collapses every expanded node of this depth; 0 means the depth of the selected node.
    void MaxNodeDepth(std::int16_t depth);
    // Expands every node that has children.
    void ExpandAllNodes();
    // Keeps the children of every node, and the root level, sorted from now on.
    void SortAllNodes();
    // The root-level ancestor of the node that was added first. It need not be the first at the root level.
    Node* FirstNode() const;
    Node* NodeRoot(Node* node) const;
    // The topmost node that the screen shows; none without a screen.
    Node* FirstVisibleNode() const;
    // The neighbours in tree order. With `visibleOnly` children of collapsed nodes are passed by (but see
    // LastSubNode).
    Node* PreviousNode(Node* node, bool visibleOnly) const;
    Node* NextNode(Node* node, bool visibleOnly) const;
    // The deepest last descendant; none for a leaf. With `visibleOnly` only the expansion of `node` itself
    // counts: below it the way goes down through collapsed nodes too. Deliberate; PreviousNode and with it
    // the upward search rely on the rule as it is.
    Node* LastSubNode(Node* node, bool visibleOnly) const;

    // --- Operations on nodes ---

    // Copies `sourceNode`, and its subtree unless `nodeOnly`, as the last child of `targetNode` (`asChild`)
    // or directly in front of it (at the end of the root level when it is null). Sorted and ExpandedImage are
    // not copied. `isMove` is handed to the events and means nothing here. The result is the copy of
    // `sourceNode`; null when nothing was copied, which includes a target inside the source's own subtree.
    // After a cancellation further down it is the copy all the same.
    Node* CopyNode(Node* targetNode, Node* sourceNode, bool asChild, bool nodeOnly, bool isMove);
    // Raises DoAction for `startNode` and, if wanted, its descendants; for the whole tree when it is null.
    void ForAllNodes(Node* startNode, bool withSubNodes, std::int16_t action);
    // False for no source, for the source itself and, when checked, for a target inside the source's subtree.
    bool DropAllowed(const Node* sourceNode, const Node* targetNode, bool checkSubNodes) const;
    // True when `ancestor` is the node itself or stands above it.
    bool IsSubNode(const Node* node, const Node* ancestor) const;
    // The number of all descendants. Throws RuntimeError (Overflow) above 32767; DescendantCount counts on.
    std::int16_t SubNodeCount(const Node* node) const;

    // --- Scrolling ---

    // Makes the node in front of the first shown one visible.
    void ScrollUp();
    // Moves the tree by one node, so that the second shown one becomes the first.
    void ScrollDown();
    // Something is dragged over the control: scrolls near its upper and lower edge. `y`, from the control's
    // top, and `height` are twips.
    void DragOver(DragState state, float y, float height);
    bool AutoScroll() const { return autoScroll_; }
    void SetAutoScroll(bool on) { autoScroll_ = on; }

    // --- Persistence. TreeData holds one flattened subtree at a time; each operation works on what the one
    // --- before left. Layout on disk: docs/formats/nxclip-nxp.md.

    // Flattens the subtree of `node`, or the whole tree when it is null, into TreeData; the nodes from
    // `without` down are left out, as what is about to be removed is of the file. False for an empty tree
    // (Count is 0 then) and when the subtree cannot be flattened, because it is nested too deeply for the
    // 16-bit depth, a text is too long to be stored or memory runs out (TreeData stays as it was then).
    bool BuildTreeData(const Node* node, std::span<Node* const> without = {});
    // Makes nodes from TreeData, the first one as a child of `parent`, or at the root level when that is
    // null. Returns the node of the first record. A depth that jumps or is negative, and any other error, is
    // told to the user and ends it; the nodes made so far stay.
    Node* BuildSubTreeFromData(Node* parent);
    // Writes TreeData over the start of the file, which is not shortened. A failure is told to the user, and
    // a text too long or a full disk is noticed before anything is written.
    bool SaveDataToFile(const std::wstring& path);
    // The same for a file that other programs may write as well: what it held when this program last read or
    // wrote it goes in, and what it holds afterwards comes out. When it holds something else nothing is
    // written. Only Failed has been told to the user.
    enum class Saved { Whole, Failed, DiskFull, ChangedByOther };
    Saved SaveDataToFile(const std::wstring& path, FileMark& mark);
    // Reads TreeData from the file. False without a message when there is none; any other failure is told to
    // the user and leaves TreeData empty. The tree itself is not touched.
    bool LoadDataFromFile(const std::wstring& path);
    // The same; the mark is of what was read.
    bool LoadDataFromFile(const std::wstring& path, FileMark& mark);
    void ReleaseData();
    const TreeData& Data() const;
    // The Count of TreeData, without making the records.
    std::int32_t DataCount() const;

    // Not implemented: both tell the user so and return false. The tree is persisted through TreeData alone.
    bool SaveToRecordField();
    bool LoadFromRecordField();

    // --- The active container's place, as it is kept from run to run ---

    // The position of a node in tree order, from 1; -1 for none. It names the same node after all profiles
    // were loaded again in the order of the root level.
    std::int32_t PositionOf(const Node* node) const;
    // The node at a position; null when there is none, which includes 0 and negative ones.
    Node* NodeAtPosition(std::int32_t position) const;
    // The position kept for the settings store.
    std::int32_t ActiveContainer() const { return activeContainer_; }
    void SetActiveContainer(std::int32_t position) { activeContainer_ = position; }

 private:
    // Null when a handler cancels.
    Node* AddCopy(Node* relative, NodeRelation relation, Node& source, bool isMove, bool& cancel);
    void CopyDescendants(Node& source, Node& copy, bool isMove);
    bool BuildNodes(Node* parent, Node*& top);
    Node& AddFromRecord(Node* relative, NodeRelation relation, const KeptRecord& record);
    void SetData(std::vector<std::uint8_t> image);

    NodeCollection* mvarTreeView = nullptr;
    TreeViewExEvents* events_ = nullptr;
    // TreeData as the image of its file, empty for none; as records only once somebody asks for them.
    std::vector<std::uint8_t> image_;
    mutable std::optional<TreeData> data_;
    bool autoScroll_ = true;
    float scrollMargin_ = 90;          // twips
    std::int32_t lastScrollTime_ = 0;  // seconds since midnight (UTC), rounded
    std::int32_t activeContainer_ = -1;
};
