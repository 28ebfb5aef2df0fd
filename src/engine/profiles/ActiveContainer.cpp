#include "engine/profiles/ActiveContainer.h"

#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";
constexpr const wchar_t* kKey = L"ActiveContainer";

bool MayBeActive(const Node* node) {
    return node == nullptr || IsNodeOfKind(node, kProfileKind | kStructureKind);
}

Node* Neighbour(const Node& node) {
    return node.Next() != nullptr ? node.Next() : node.Previous();
}

}  // namespace

std::wstring KindImage(const Node* node) {
    if (IsProfileNode(node)) return L"Profile";
    if (IsStructureNode(node)) return L"Structure";
    return IsClipNode(node) ? L"Clip" : L"";
}

void ActiveContainer::SetActiveContainer(Node* node) {
    if (!MayBeActive(node)) return;
    if (node_ != nullptr) node_->SetImage(KindImage(node_));
    node_ = node;
    if (node_ != nullptr) node_->SetImage(std::wstring(L"Camera"));
    TellListener();
}

std::wstring ActiveContainer::Title() const {
    return node_ != nullptr ? node_->Text() : L"<Keine aktive Ablage>";
}

void ActiveContainer::TellListener() const {
    if (changed_) changed_();
}

void ActiveContainer::LeaveSubtree(const Node& node) {
    if (node_ == nullptr || !tree_.IsSubNode(node_, &node)) return;
    Node* const heir = node.Parent() != nullptr ? node.Parent() : Neighbour(node);
    SetActiveContainer(MayBeActive(heir) ? heir : nullptr);
}

void ActiveContainer::Restore() {
    // The container of before, if any, went with the tree that was loaded anew.
    node_ = nullptr;
    const auto stored = ParseInt32(ThePlatform().settings.Read(kSection, kKey, L"-1"));
    tree_.SetActiveContainer(stored.value_or(-1));
    Node* const last = tree_.NodeAtPosition(tree_.ActiveContainer());
    const bool found = last != nullptr && MayBeActive(last);
    SetActiveContainer(found ? last : tree_.TreeView()->Root());
}

void ActiveContainer::Store() const {
    tree_.SetActiveContainer(tree_.PositionOf(node_));
    ThePlatform().settings.Write(kSection, kKey, NumberText(tree_.ActiveContainer()));
}
