#include "engine/flows/DropRules.h"

#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"

bool DropPermitted(const CTreeViewEx& tree, const Node* source, const Node* target, bool asChild, bool move) {
    if (!tree.DropAllowed(source, target, true)) return false;
    if (IsProfileNode(source)) {
        // A damaged file may hold what looks like a profile inside of one: no profile goes there, or leaves
        // it.
        const auto isListed = [](const Node* node) {
            return IsProfileNode(node) && node->Parent() == nullptr;
        };
        const bool besideProfile = target == nullptr || (isListed(target) && !asChild);
        return move && isListed(source) && besideProfile;
    }
    if (target == nullptr || !IsNodeOfKind(source, kStructureKind | kClipKind)) return false;
    const Node* const newParent = asChild ? target : target->Parent();
    return IsNodeOfKind(newParent, kProfileKind | kStructureKind);
}

Node* DraggedNodeIn(const NodeCollection& nodes, const DraggedNode& payload, std::int32_t ownTree) {
    return payload.Window == ownTree ? nodes.Item(payload.Index) : nullptr;
}

bool DropsAsChild(const CTreeViewEx& tree, const Node* source, const Node* target, bool move, int offset,
                  int rowHeight) {
    if (!DropPermitted(tree, source, target, true, move)) return false;
    const bool mayStandInFront = DropPermitted(tree, source, target, false, move);
    return !mayStandInFront || offset * 3 >= rowHeight;
}
