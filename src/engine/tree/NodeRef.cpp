#include "engine/tree/NodeRef.h"

#include "engine/tree/NodeCollection.h"

void NodeRef::Follow(Node* node) {
    if (node_ != nullptr) node_->owner_.Unwatch(*this);
    node_ = node;
    if (node_ != nullptr) node_->owner_.Watch(*this);
}
