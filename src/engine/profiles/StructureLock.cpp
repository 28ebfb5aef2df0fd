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
        case TreeAction::ShowProperties:
            return false;
        default:
            return !IsReleased(node);
    }
}

const wchar_t* WhyNot(TreeAction action, const Node* node, bool lockEdit) {
    if (LockBlocks(action, node, lockEdit)) return L"Die Strukturaktionen sind gesperrt !!!";
    // A drag may only copy from such a profile; what it does where it ends is looked at there.
    if (action == TreeAction::UnlinkProfile || action == TreeAction::DragAndDrop) return nullptr;
    return IsEditedByOther(node) ? kEditedByOther : nullptr;
}

bool ActionAllowed(TreeAction action, const Node* node) {
    const wchar_t* const reason = WhyNot(action, node, Options().LockEdit);
    if (reason != nullptr) ThePlatform().user.Inform(reason);
    return reason == nullptr;
}

bool ChangeAllowed(const Node* node) {
    if (!IsEditedByOther(node)) return true;
    ThePlatform().user.Inform(kEditedByOther);
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
