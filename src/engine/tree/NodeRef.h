#pragma once

class Node;

// Names a node for as long as that lives, and nothing once it is gone: what is remembered across a question,
// a menu or a message is remembered by this. A moved node is a new one. The collection must outlive it.
class NodeRef {
 public:
    explicit NodeRef(Node* node = nullptr) { Follow(node); }
    ~NodeRef() { Follow(nullptr); }
    NodeRef(const NodeRef&) = delete;
    NodeRef& operator=(const NodeRef&) = delete;

    Node* Get() const { return node_; }
    // Names another node, or none (null).
    void Follow(Node* node);

 private:
    friend class NodeCollection;
    Node* node_ = nullptr;
};
