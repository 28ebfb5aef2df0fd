#pragma once

// A way through the tree from `start` on: a node, its children, then its next sibling. Without recursion,
// since a damaged file can nest nodes very deeply. Nodes may be added on the way. NodeType is Node or const
// Node.
template <typename NodeType>
class TreeWalk {
 public:
    explicit TreeWalk(NodeType* start) : node_(start), inSubtree_(start != nullptr) {}

    // Null behind the last node of the tree.
    NodeType* Current() const { return node_; }
    // The level below the start.
    int Depth() const { return depth_; }
    // False once the way has left the subtree of the start.
    bool InSubtree() const { return inSubtree_; }
    void Step();
    // Like Step, past everything below the current node.
    void StepOver();

 private:
    NodeType* node_;
    int depth_ = 0;
    bool inSubtree_;
};

template <typename NodeType>
void TreeWalk<NodeType>::Step() {
    if (node_ == nullptr) return;
    if (node_->FirstChild() != nullptr) {
        node_ = node_->FirstChild();
        ++depth_;
        return;
    }
    StepOver();
}

template <typename NodeType>
void TreeWalk<NodeType>::StepOver() {
    while (node_ != nullptr && node_->Next() == nullptr) {
        node_ = node_->Parent();
        --depth_;
    }
    if (node_ != nullptr) node_ = node_->Next();
    if (depth_ <= 0) inSubtree_ = false;
}
