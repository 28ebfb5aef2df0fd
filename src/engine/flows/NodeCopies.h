#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/flows/ChosenNodes.h"
#include "engine/tree/CTreeViewEx.h"

// Nodes that are copied, with the clips' data files if they are not moved. Taken back in the end unless they
// were kept.
class NodeCopies {
 public:
    // `current` names it while it lives, for the handler of the tree's events. Both must outlive it.
    NodeCopies(CTreeViewEx& tree, NodeCopies*& current);
    ~NodeCopies();
    NodeCopies(const NodeCopies&) = delete;
    NodeCopies& operator=(const NodeCopies&) = delete;

    // Copies the nodes into `target`, or in front of it, and, by way of the tree's events, the files of those
    // that do not move. False after a failure, which has been told.
    bool Make(Node* target, bool asChild, ChosenNodes sources, bool isMove);
    // Brings the copied files onto the disk: where the sources go afterwards, they are all that is left. Else
    // they are flushed when nobody waits.
    bool Flush();
    // All that were made, in their order.
    ChosenNodes Nodes() const { return copies_; }
    std::vector<Node*> Keep();
    void TakeBack();

    // One clip that could not be copied ends the whole copy.
    bool HasFailed() const { return failure_.has_value(); }
    void Fail(std::wstring text, std::wstring title) { failure_ = {std::move(text), std::move(title)}; }
    void Add(const std::wstring& file);

 private:
    struct Failure {
        std::wstring text;
        std::wstring title;
    };

    CTreeViewEx& tree_;
    NodeCopies*& current_;
    std::vector<Node*> copies_;
    std::vector<std::wstring> files_;
    std::optional<Failure> failure_;  // told when what was made has been taken back
};
