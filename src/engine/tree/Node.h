#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/tree/ImageValue.h"
#include "engine/tree/NodeTexts.h"

class NodeCollection;

// One node of the tree: a profile, a folder or a clip. The collection owns it; a reference is good until the
// node is removed. Setting a property tells the screen.
class Node {
 public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    std::wstring Text() const { return texts_.Text().Text(); }
    std::wstring Tag() const { return texts_.Tag().Text(); }
    // The same as they are kept, for those who go through many nodes.
    KeptText TextAsKept() const { return texts_.Text(); }
    KeptText TagAsKept() const { return texts_.Tag(); }
    const ImageValue& Image() const { return image_; }
    const ImageValue& SelectedImage() const { return OtherImages().selected; }
    const ImageValue& ExpandedImage() const { return OtherImages().expanded; }
    bool Expanded() const { return expanded_; }
    // True while the node's children are kept in the order of their texts, without regard to case.
    bool Sorted() const { return sorted_; }

    void SetText(const std::wstring& text);
    void SetTag(const std::wstring& tag) { texts_.SetTag(tag); }
    void SetImage(const ImageValue& image);
    void SetSelectedImage(const ImageValue& image);
    void SetExpandedImage(const ImageValue& image);
    // Kept even while the node has no children: they are shown open once they come. A closed node takes the
    // selection from what is below it.
    void SetExpanded(bool expanded);
    void SetSorted(bool sorted);

    Node* Parent() const { return parent_; }
    Node* FirstChild() const { return firstChild_; }
    Node* LastChild() const { return lastChild_; }
    Node* Next() const { return next_; }
    Node* Previous() const { return previous_; }
    // The number of direct children.
    int Children() const { return children_; }
    // The position in the collection, from 1: the order in which the nodes were added.
    int Index() const { return index_; }
    const NodeCollection& Owner() const { return owner_; }
    // The texts from the root level down to this node, joined with "\".
    std::wstring FullPath() const;

    // For the screen alone: its item for this node, 0 while there is none.
    std::uintptr_t viewItem = 0;

 private:
    friend class NodeCollection;
    friend class NodeRef;
    // What hardly any node has.
    struct Images {
        ImageValue selected;
        ImageValue expanded;
    };

    explicit Node(NodeCollection& owner) : owner_(owner) {}
    void SetPicture(ImageValue& picture, const ImageValue& value);
    const Images& OtherImages() const;
    Images& OtherImagesToSet();

    // There are many nodes: their size counts.
    NodeCollection& owner_;
    NodeTexts texts_;
    Node* parent_ = nullptr;
    Node* firstChild_ = nullptr;
    Node* lastChild_ = nullptr;
    Node* next_ = nullptr;
    Node* previous_ = nullptr;
    std::unique_ptr<Images> otherImages_;
    ImageValue image_;
    int children_ = 0;
    int index_ = 0;
    bool expanded_ = false;
    bool sorted_ = false;
    bool awaitsOrder_ = false;  // its children are put in order at the end of the bulk change
    bool going_ = false;        // is being removed
};
