#include "engine/tree/NodeCollection.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/tree/TreeWalk.h"
#include "platform/Guard.h"
#include "platform/Text.h"

namespace {

bool SortsBefore(const Node& a, const Node& b) {
    // A long list takes many comparisons: the memory of the texts is used again.
    static std::wstring textA, textB;
    a.TextAsKept().CopyTo(textA);
    b.TextAsKept().CopyTo(textB);
    return CompareNoCase(textA, textB) < 0;
}

bool IsInSubtree(const Node* node, const Node& top) {
    while (node != nullptr && node != &top)
        node = node->Parent();
    return node != nullptr;
}

}  // namespace

template <typename Goes>
void NodeCollection::Forget(Goes goes) {
    std::erase_if(watchers_, [&](NodeRef* reference) {
        if (!goes(*reference->node_)) return false;
        reference->node_ = nullptr;
        return true;
    });
}

void NodeCollection::ForgetAll() {
    Forget([](const Node&) { return true; });
}

NodeCollection::~NodeCollection() {
    ForgetAll();
}

Node& NodeCollection::Add(Node* relative, NodeRelation relation, const std::wstring& text,
                          const ImageValue& image, const ImageValue& selectedImage) {
    return Add(relative, relation, NodeTexts(text, std::wstring_view()), image, selectedImage);
}

Node& NodeCollection::Add(Node* relative, NodeRelation relation, NodeTexts texts, const ImageValue& image,
                          const ImageValue& selectedImage) {
    std::unique_ptr<Node> made(new Node(*this));
    Node& node = *made;
    node.texts_ = std::move(texts);
    node.image_ = image;
    if (!selectedImage.IsEmpty()) node.OtherImagesToSet().selected = selectedImage;
    nodes_.push_back(std::move(made));
    node.index_ = Count();
    Link(node, relative, relation);
    if (view_ != nullptr) view_->NodeAdded(node);
    return node;
}

void NodeCollection::Remove(Node& node) {
    Node* const only = &node;
    RemoveAll({&only, 1});
}

// The removed nodes are marked first, so that one pass closes all gaps, however many there are.
void NodeCollection::RemoveAll(std::span<Node* const> nodes) {
    std::vector<Node*> going;
    int firstGap = Count() + 1;
    for (Node* const node : nodes) {
        if (node->going_) continue;
        going.push_back(node);
        for (TreeWalk walk(node); walk.InSubtree(); walk.Step()) {
            walk.Current()->going_ = true;
            firstGap = std::min(firstGap, walk.Current()->index_);
        }
    }
    std::erase_if(going, [](const Node* node) { return node->parent_ != nullptr && node->parent_->going_; });
    if (selected_ != nullptr && selected_->going_) Select(SurvivorFor(selected_));
    Forget([](const Node& node) { return node.going_; });
    std::erase_if(unsorted_, [](const Node* parent) { return parent != nullptr && parent->going_; });
    std::for_each(going.begin(), going.end(), [this](Node* node) {
        if (view_ != nullptr) view_->NodeRemoving(*node);
        Unlink(*node);
    });
    CloseUp(firstGap);
}

// Where the selection goes when the node does: to the next sibling that stays, else to the previous one, else
// to the parent.
Node* NodeCollection::SurvivorFor(Node* going) const {
    while (going->parent_ != nullptr && going->parent_->going_)
        going = going->parent_;
    for (Node* next = going->next_; next != nullptr; next = next->next_)
        if (!next->going_) return next;
    for (Node* previous = going->previous_; previous != nullptr; previous = previous->previous_)
        if (!previous->going_) return previous;
    return going->parent_;
}

void NodeCollection::CloseUp(int firstGap) {
    const auto gap = nodes_.begin() + (firstGap - 1);
    nodes_.erase(std::remove_if(gap, nodes_.end(), [](const auto& each) { return each->going_; }),
                 nodes_.end());
    for (int index = firstGap; index <= Count(); ++index)
        nodes_[static_cast<std::size_t>(index - 1)]->index_ = index;
}

void NodeCollection::Clear() {
    Select(nullptr);
    ForgetAll();
    // The nodes live until the screen has forgotten them.
    const std::vector<std::unique_ptr<Node>> gone = std::exchange(nodes_, {});
    firstRoot_ = lastRoot_ = nullptr;
    unsorted_.clear();
    awaitsOrder_ = false;
    if (view_ != nullptr) view_->AllRemoved();
}

Node* NodeCollection::Item(int index) const {
    return index >= 1 && index <= Count() ? nodes_[static_cast<std::size_t>(index - 1)].get() : nullptr;
}

void NodeCollection::Select(Node* node) {
    if (selected_ == node) return;
    selected_ = node;
    if (view_ != nullptr) view_->SelectionChanged(node);
}

void NodeCollection::SetSorted(bool sorted) {
    sorted_ = sorted;
    if (sorted) PutInOrder(nullptr);
}

void NodeCollection::BeginBulkChange() {
    ++bulkDepth_;
    if (view_ != nullptr) view_->BeginBulkChange();
}

// Called by a destructor: whatever fails of it, the change has ended, here and on the screen.
void NodeCollection::EndBulkChange() {
    if (bulkDepth_ == 1) {
        Guarded([&] {
            for (Node* parent : std::exchange(unsorted_, {})) {
                AwaitsOrder(parent) = false;
                if (KeepsSorted(parent)) SortChildren(parent);
            }
        });
    }
    --bulkDepth_;
    if (view_ != nullptr) Guarded([&] { view_->EndBulkChange(); });
}

void NodeCollection::Link(Node& node, Node* relative, NodeRelation relation) {
    const bool asChild = relation == NodeRelation::Child;
    Node* const parent = asChild || relative == nullptr ? relative : relative->parent_;
    if (KeepsSorted(parent)) {
        LinkSorted(node, parent);
    } else if (relation == NodeRelation::First) {
        LinkBefore(node, parent, FirstOf(parent));
    } else if (relation == NodeRelation::Previous) {
        LinkBefore(node, parent, relative);
    } else if (relation == NodeRelation::Next && relative != nullptr) {
        LinkBefore(node, parent, relative->next_);
    } else {
        LinkBefore(node, parent, nullptr);
    }
}

// Puts the node in front of a child of `parent`; null means behind the last one.
void NodeCollection::LinkBefore(Node& node, Node* parent, Node* before) {
    node.parent_ = parent;
    node.next_ = before;
    node.previous_ = before != nullptr ? before->previous_ : LastOf(parent);
    (node.previous_ != nullptr ? node.previous_->next_ : FirstOf(parent)) = &node;
    (before != nullptr ? before->previous_ : LastOf(parent)) = &node;
    if (parent != nullptr) ++parent->children_;
}

void NodeCollection::LinkSorted(Node& node, Node* parent) {
    Node* const last = LastOf(parent);
    if (bulkDepth_ > 0) OrderLater(parent);
    // What comes in order, as most does, needs no search.
    if (bulkDepth_ > 0 || last == nullptr || !SortsBefore(node, *last)) {
        LinkBefore(node, parent, nullptr);
        return;
    }
    LinkBefore(node, parent, FirstBehind(node, parent));
}

// By halves: to step from sibling to sibling costs next to nothing, to compare two texts a lot.
Node* NodeCollection::FirstBehind(const Node& node, Node* parent) {
    int count = 0;
    for (const Node* sibling = FirstOf(parent); sibling != nullptr; sibling = sibling->next_)
        ++count;
    Node* first = FirstOf(parent);
    while (count > 0) {
        Node* middle = first;
        for (int step = 0; step < count / 2; ++step)
            middle = middle->next_;
        if (SortsBefore(node, *middle)) {
            count /= 2;
        } else {
            first = middle->next_;
            count -= count / 2 + 1;
        }
    }
    return first;
}

void NodeCollection::Unlink(Node& node) {
    Node* const parent = node.parent_;
    (node.previous_ != nullptr ? node.previous_->next_ : FirstOf(parent)) = node.next_;
    (node.next_ != nullptr ? node.next_->previous_ : LastOf(parent)) = node.previous_;
    if (parent != nullptr) --parent->children_;
}

void NodeCollection::PutInOrder(Node* parent) {
    if (bulkDepth_ > 0)
        OrderLater(parent);
    else
        SortChildren(parent);
}

void NodeCollection::OrderLater(Node* parent) {
    if (AwaitsOrder(parent)) return;
    unsorted_.push_back(parent);
    AwaitsOrder(parent) = true;
}

void NodeCollection::TextChanged(Node& node) {
    Node* const parent = node.parent_;
    if (!KeepsSorted(parent)) return;
    if (bulkDepth_ > 0) {
        OrderLater(parent);
        return;
    }
    const bool tooEarly = node.next_ != nullptr && SortsBefore(*node.next_, node);
    const bool tooLate = node.previous_ != nullptr && SortsBefore(node, *node.previous_);
    if (!tooEarly && !tooLate) return;
    Unlink(node);
    LinkSorted(node, parent);
    if (view_ != nullptr) view_->NodeMoved(node);
}

// What is selected is never hidden in a closed folder.
void NodeCollection::Collapsing(Node& node) {
    if (IsInSubtree(selected_, node)) Select(&node);
}

// Merges two chains of siblings, each in order; of equal ones those of `a` come first. Only next_ is kept.
Node* NodeCollection::Merge(Node* a, Node* b) {
    Node* first = nullptr;
    Node** end = &first;
    while (a != nullptr && b != nullptr) {
        Node*& smaller = SortsBefore(*b, *a) ? b : a;
        *end = smaller;
        end = &smaller->next_;
        smaller = smaller->next_;
    }
    *end = a != nullptr ? a : b;
    return first;
}

// A merge sort of the chain itself: it needs no memory, keeps the order of equal texts and stays inside the
// chain even if the comparison of the user's language should contradict itself.
void NodeCollection::SortChildren(Node* parent) {
    Node* rest = FirstOf(parent);
    const Node* inOrder = rest;
    while (inOrder != nullptr && inOrder->next_ != nullptr && !SortsBefore(*inOrder->next_, *inOrder))
        inOrder = inOrder->next_;
    if (inOrder == nullptr || inOrder->next_ == nullptr) return;

    std::array<Node*, 32> runs{};  // a run at place i holds 2 to the i nodes, which came before those below i
    while (rest != nullptr) {
        Node* run = std::exchange(rest, rest->next_);
        run->next_ = nullptr;
        std::size_t place = 0;
        for (; runs[place] != nullptr; ++place)
            run = Merge(std::exchange(runs[place], nullptr), run);
        runs[place] = run;
    }
    Node* all = nullptr;
    for (Node* run : runs)
        all = Merge(run, all);

    FirstOf(parent) = all;
    Node* previous = nullptr;
    for (Node* node = all; node != nullptr; node = node->next_) {
        node->previous_ = previous;
        previous = node;
    }
    LastOf(parent) = previous;
    if (view_ != nullptr) view_->ChildrenReordered(parent);
}
