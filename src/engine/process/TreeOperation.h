#pragma once

// An operation on the tree that is under way, with its questions and failure boxes: a drop, a copy, a move, a
// delete, a rename, something new, an import. While one lives no clip is taken, whoever asks for it: the
// operation goes on with the nodes it knows when the box has closed.
class TreeOperationScope {
 public:
    TreeOperationScope();
    ~TreeOperationScope();
    TreeOperationScope(const TreeOperationScope&) = delete;
    TreeOperationScope& operator=(const TreeOperationScope&) = delete;
};

bool TreeOperationUnderWay();
