#include "engine/tree/Node.h"

#include "engine/tree/NodeCollection.h"

void Node::SetText(const std::wstring& text) {
    if (Text() == text) return;
    texts_.SetText(text);
    if (owner_.View() != nullptr) owner_.View()->NodeTextChanged(*this);
    owner_.TextChanged(*this);
}

void Node::SetImage(const ImageValue& image) {
    SetPicture(image_, image);
}

void Node::SetSelectedImage(const ImageValue& image) {
    if (SelectedImage() != image) SetPicture(OtherImagesToSet().selected, image);
}

void Node::SetExpandedImage(const ImageValue& image) {
    if (ExpandedImage() != image) SetPicture(OtherImagesToSet().expanded, image);
}

const Node::Images& Node::OtherImages() const {
    static const Images none;
    return otherImages_ != nullptr ? *otherImages_ : none;
}

Node::Images& Node::OtherImagesToSet() {
    if (otherImages_ == nullptr) otherImages_ = std::make_unique<Images>();
    return *otherImages_;
}

void Node::SetPicture(ImageValue& picture, const ImageValue& value) {
    if (picture == value) return;
    picture = value;
    if (owner_.View() != nullptr) owner_.View()->NodeImageChanged(*this);
}

void Node::SetExpanded(bool expanded) {
    if (expanded_ == expanded) return;
    if (!expanded) owner_.Collapsing(*this);
    expanded_ = expanded;
    if (owner_.View() != nullptr) owner_.View()->NodeExpandedChanged(*this);
}

void Node::SetSorted(bool sorted) {
    sorted_ = sorted;
    if (sorted) owner_.PutInOrder(this);
}

std::wstring Node::FullPath() const {
    std::vector<const Node*> way;
    for (const Node* node = this; node != nullptr; node = node->parent_)
        way.push_back(node);
    std::wstring path;
    for (auto node = way.rbegin(); node != way.rend(); ++node) {
        if (node != way.rbegin()) path += L'\\';
        path += (*node)->Text();
    }
    return path;
}
