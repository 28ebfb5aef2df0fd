#include "engine/views/MainCommands.h"

#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"

CommandState CommandsFor(const Node* selected, const Node* activeContainer, bool lockEdit) {
    const auto allowed = [&](TreeAction action, const Node* node) {
        return !LockBlocks(action, node, lockEdit);
    };
    const bool known = IsNodeOfKind(selected, kProfileKind | kStructureKind | kClipKind);
    const bool container = IsNodeOfKind(selected, kProfileKind | kStructureKind);
    CommandState state;
    state.snap = activeContainer != nullptr && allowed(TreeAction::Snap, activeContainer);
    state.toClipboard = IsNodeOfKind(selected, kClipKind);
    state.remove = known && allowed(DeleteActionFor(*selected), selected);
    state.rename = known && allowed(EditActionFor(*selected), selected);
    state.properties = known;
    state.newFolder = selected != nullptr && allowed(TreeAction::NewFolder, selected);
    state.newProfile = allowed(TreeAction::NewProfile, nullptr);
    state.importProfile = allowed(TreeAction::ImportProfile, nullptr);
    state.unlinkProfile =
        IsNodeOfKind(selected, kProfileKind) && allowed(TreeAction::UnlinkProfile, selected);
    state.activate = container && selected != activeContainer;
    return state;
}
