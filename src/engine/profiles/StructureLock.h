#pragma once

#include "engine/tree/Node.h"

// What the user can do to the tree.
enum class TreeAction {
    NewProfile,
    ImportProfile,
    UnlinkProfile,
    DeleteProfile,
    EditProfile,  // properties and renaming in place
    NewFolder,
    DeleteFolder,
    EditFolder,
    DeleteClip,
    EditClip,
    DragAndDrop,
    Snap,
    ShowProperties,
};

// The one place that says what the option LockEdit (the tool bar's "Lock") blocks:
// - every action that makes, removes, renames or moves profiles and folders, and drag and drop as a whole;
// - snapping: nothing new comes in while it is pressed.
// What happens to a clip in its place (delete, properties, renaming, putting it on the clipboard) stays
// possible, and property dialogs open to be read. A profile with the global release is free of the lock but
// for snapping: `node` is the node acted on, null where there is none (a new profile, an import).
bool LockBlocks(TreeAction action, const Node* node, bool lockEdit);

// What keeps the action from `node`, in the words for the user: the lock, or another program that has the
// profile of `node`. Null for nothing.
const wchar_t* WhyNot(TreeAction action, const Node* node, bool lockEdit);

// Nothing does, the option being as it stands; otherwise the user is told.
bool ActionAllowed(TreeAction action, const Node* node);

// False, told, when another program has the profile that holds `node`.
bool ChangeAllowed(const Node* node);

// The action that deletes, or edits, this node.
TreeAction DeleteActionFor(const Node& node);
TreeAction EditActionFor(const Node& node);
