#include "engine/flows/LastDeletion.h"

void LastDeletion::Add(const SiblingRun& run, ChosenNodes moved) {
    Run& noted = runs_.emplace_back();
    noted.parent.Follow(run.parent);
    noted.before.Follow(run.before);
    for (Node* const node : moved)
        noted.nodes.emplace_back(node);
}

bool LastDeletion::IsEmpty() const {
    for (const Run& run : runs_)
        for (const NodeRef& node : run.nodes)
            if (node.Get() != nullptr) return false;
    return true;
}

std::vector<Node*> LastDeletion::Nodes() const {
    std::vector<Node*> nodes;
    for (const Run& run : runs_)
        for (const NodeRef& node : run.nodes)
            if (node.Get() != nullptr) nodes.push_back(node.Get());
    return nodes;
}
