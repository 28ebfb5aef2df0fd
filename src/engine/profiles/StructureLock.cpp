#include "engine/profiles/StructureLock.h"

#include "engine/process/modOption.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"

namespace {

// The profile of `node` carries the global release.
bool IsReleased(const Node* node) {
    const Node* const profile = GetTopNode(node);
    return IsProfileNode(profile) && AttributesOf(profile).globalFlag;
}

}  // namespace

bool LockBlocks(TreeAction action, const Node* node, bool lockEdit) {
    if (!lockEdit) return false;
    switch (action) {
        case TreeAction::Snap:
            return true;
        case TreeAction::DeleteClip:
        case TreeAction::EditClip:
            return false;
        default:
            return !IsReleased(node);
    }
}

bool ActionAllowed(TreeAction action, const Node* node) {
    if (LockBlocks(action, node, Options().LockEdit)) {
        ThePlatform().user.Tell(L"Die Strukturaktionen sind gesperrt !!!");
        return false;
    }
    // A drag may only copy from such a profile; what it does where it ends is looked at there.
    if (action == TreeAction::UnlinkProfile || action == TreeAction::DragAndDrop) return true;
    return ChangeAllowed(node);
}

bool ChangeAllowed(const Node* node) {
    if (!IsEditedByOther(node)) return true;
    ThePlatform().user.Tell(kEditedByOther);
    return false;
}

TreeAction DeleteActionFor(const Node& node) {
    if (IsProfileNode(&node)) return TreeAction::DeleteProfile;
    return IsStructureNode(&node) ? TreeAction::DeleteFolder : TreeAction::DeleteClip;
}

TreeAction EditActionFor(const Node& node) {
    if (IsProfileNode(&node)) return TreeAction::EditProfile;
    return IsStructureNode(&node) ? TreeAction::EditFolder : TreeAction::EditClip;
}
