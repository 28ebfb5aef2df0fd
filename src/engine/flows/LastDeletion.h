#pragma once

#include <deque>
#include <vector>

#include "engine/flows/ChosenNodes.h"
#include "engine/tree/NodeRef.h"

// Where the nodes stood that the user deleted last, as long as they can be put back there: in the folder for
// what is deleted, and not moved or deleted there since.
class LastDeletion {
 public:
    // Siblings, with the place that they stood at.
    struct Run {
        NodeRef parent;  // none once that is gone
        NodeRef before;  // the sibling in front of which they stood; none for the end of their parent
        std::deque<NodeRef> nodes;  // as they stand now
    };

    // Another deletion: what was noted of the last one counts no more.
    void Begin() { runs_.clear(); }
    // `moved` are the nodes of the run at their new place, in its order.
    void Add(const SiblingRun& run, ChosenNodes moved);
    bool IsEmpty() const;
    // All of its nodes that can still be put back.
    std::vector<Node*> Nodes() const;
    // Where they stood. Runs of which nothing is left are among them.
    const std::deque<Run>& Runs() const { return runs_; }

 private:
    std::deque<Run> runs_;
};
