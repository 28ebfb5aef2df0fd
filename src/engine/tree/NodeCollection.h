#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "engine/tree/Node.h"
#include "engine/tree/NodeRef.h"

// Where a new node goes, seen from the node that is given with it.
enum class NodeRelation {
    First,     // first of its siblings
    Last,      // last of its siblings
    Next,      // right behind it
    Previous,  // right in front of it
    Child,     // its last child
};

// What the screen is told of the tree, and what only the screen knows. The collection is the tree; a view
// mirrors it and may make its items late.
class NodeView {
 public:
    virtual ~NodeView() = default;

    // The node stands at its place, with its text and pictures. During a bulk change its place below a sorted
    // parent is its last one only after ChildrenReordered.
    virtual void NodeAdded(Node& node) = 0;
    // The node and everything below it are about to go; one call for the whole subtree. None of them is
    // selected any more. Of several that go together each comes in the order that was asked for.
    virtual void NodeRemoving(Node& node) = 0;
    virtual void NodeTextChanged(Node& node) = 0;
    virtual void NodeImageChanged(Node& node) = 0;
    virtual void NodeExpandedChanged(Node& node) = 0;
    // The node stands at another place among its siblings.
    virtual void NodeMoved(Node& node) = 0;
    // The children of `parent` (the root level when null) stand in another order.
    virtual void ChildrenReordered(Node* parent) = 0;
    virtual void SelectionChanged(Node* node) = 0;
    // The collection is empty; nothing is selected any more.
    virtual void AllRemoved() = 0;

    // Between these two the collection changes a lot: the screen may wait with showing it. They nest. What
    // was expanded, collapsed or reordered meanwhile has been told before the outermost end.
    virtual void BeginBulkChange() = 0;
    virtual void EndBulkChange() = 0;

    // Scrolls and opens parents until the node is shown.
    virtual void EnsureVisible(Node& node) = 0;
    // The topmost node that is shown; null when there is none.
    virtual Node* FirstVisible() = 0;
    // Makes the second shown node the first one; the selection stays.
    virtual void ScrollDown() = 0;
};

// The nodes of the tree control, all of them, in memory. With no view it works all the same.
class NodeCollection {
 public:
    NodeCollection() = default;
    ~NodeCollection();
    NodeCollection(const NodeCollection&) = delete;
    NodeCollection& operator=(const NodeCollection&) = delete;

    // Adds a node at the place that `relation` names, seen from `relative`; a null `relative` means the end
    // of the root level (its start for First). Below a sorted parent the place follows from the text instead,
    // behind those of the same text; during a bulk change only at its end.
    Node& Add(Node* relative, NodeRelation relation, const std::wstring& text, const ImageValue& image,
              const ImageValue& selectedImage = {});
    // With its tag as well, both as a file holds them.
    Node& Add(Node* relative, NodeRelation relation, NodeTexts texts, const ImageValue& image,
              const ImageValue& selectedImage);
    // Makes room for so many nodes to come.
    void Expect(int more) { nodes_.reserve(nodes_.size() + static_cast<std::size_t>(more)); }
    // Removes the node and everything below it. A selection in there goes to the next sibling, else to the
    // previous one, else to the parent, while the node is still there.
    void Remove(Node& node);
    // Removes several in one pass, each with everything below it; one may stand below another. The selection
    // goes where Remove would send it, past those that go as well.
    void RemoveAll(std::span<Node* const> nodes);
    void Clear();

    int Count() const { return static_cast<int>(nodes_.size()); }
    // 1 to Count(); null outside.
    Node* Item(int index) const;
    // The first node at the root level; null when the tree is empty.
    Node* Root() const { return firstRoot_; }
    Node* LastRoot() const { return lastRoot_; }

    Node* Selected() const { return selected_; }
    void Select(Node* node);

    // True while the root level is kept in the order of its texts.
    bool Sorted() const { return sorted_; }
    void SetSorted(bool sorted);

    // Between these two a lot changes: the screen may wait, and what is sorted is put in order once, at the
    // outermost end. They nest. Use BulkChangeScope.
    void BeginBulkChange();
    void EndBulkChange();

    // The screen, or null. Not owned; must be taken away before it dies, and not be exchanged during a bulk
    // change.
    void SetView(NodeView* view) { view_ = view; }
    NodeView* View() const { return view_; }

 private:
    friend class Node;
    friend class NodeRef;
    void Watch(NodeRef& reference) { watchers_.push_back(&reference); }
    void Unwatch(NodeRef& reference) { std::erase(watchers_, &reference); }
    // The references to nodes that go name none from now on.
    template <typename Goes>
    void Forget(Goes goes);
    void ForgetAll();
    // The chain of the children of `parent`; null is the root level, here and below.
    Node*& FirstOf(Node* parent) { return parent != nullptr ? parent->firstChild_ : firstRoot_; }
    Node*& LastOf(Node* parent) { return parent != nullptr ? parent->lastChild_ : lastRoot_; }
    bool KeepsSorted(const Node* parent) const { return parent != nullptr ? parent->sorted_ : sorted_; }
    bool& AwaitsOrder(Node* parent) { return parent != nullptr ? parent->awaitsOrder_ : awaitsOrder_; }
    void Link(Node& node, Node* relative, NodeRelation relation);
    void LinkBefore(Node& node, Node* parent, Node* before);
    void LinkSorted(Node& node, Node* parent);
    // The first child of `parent` that sorts behind the node; null when there is none.
    Node* FirstBehind(const Node& node, Node* parent);
    void Unlink(Node& node);
    Node* SurvivorFor(Node* going) const;
    void CloseUp(int firstGap);
    // Sorts the children of `parent` now, or at the end of a bulk change.
    void PutInOrder(Node* parent);
    void OrderLater(Node* parent);
    void SortChildren(Node* parent);
    static Node* Merge(Node* a, Node* b);
    void TextChanged(Node& node);
    void Collapsing(Node& node);

    std::vector<std::unique_ptr<Node>> nodes_;
    Node* firstRoot_ = nullptr;
    Node* lastRoot_ = nullptr;
    Node* selected_ = nullptr;
    NodeView* view_ = nullptr;
    bool sorted_ = false;
    bool awaitsOrder_ = false;  // as in Node, for the root level
    int bulkDepth_ = 0;
    std::vector<NodeRef*> watchers_;
    std::vector<Node*> unsorted_;  // parents to be put in order at the end of the bulk change
};

// A bulk change that lasts as long as the scope.
class BulkChangeScope {
 public:
    explicit BulkChangeScope(NodeCollection& nodes) : nodes_(nodes) { nodes_.BeginBulkChange(); }
    ~BulkChangeScope() { nodes_.EndBulkChange(); }
    BulkChangeScope(const BulkChangeScope&) = delete;
    BulkChangeScope& operator=(const BulkChangeScope&) = delete;

 private:
    NodeCollection& nodes_;
};
