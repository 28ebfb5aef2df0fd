#pragma once

#include <functional>
#include <string>

#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/ProfileFile.h"
#include "engine/tree/CTreeViewEx.h"

// How directories become attached profiles. What goes wrong is told to the user.

// Takes the directory for this program, loads its profile and enters it into the list, or into the entry that
// waits for it there. When another program has the directory, the profile can only be read, which is told.
// Clips that no node leads to are offered; a profile that is damaged is offered to be made from a copy of its
// file or from its clips. Null when there is no profile in the end; the list is as it was then.
Node* AttachProfileDirectory(CTreeViewEx& tree, const std::wstring& directory);

// Enters a profile that stands in the tree, with its file that was taken beforehand and read for this tree.
void EnterProfile(Node& profile, ProfileFile file);

// What the user says of a listed profile whose directory is gone.
struct MissingProfileAnswer {
    enum class Choice { Keep, TakeOut, Moved };
    Choice choice = Choice::Keep;
    std::wstring directory;  // where it lies now, when it was moved
};
using AskForMissingProfile =
    std::function<MissingProfileAnswer(const std::wstring& name, const std::wstring& directory)>;

// At the window's load: empties the tree, reads the profile list from the settings store and attaches every
// profile of it. One that cannot be loaded is reported and stays in the list without a node, for the reason
// may be gone at the next start; only of one whose directory is gone is asked what became of it.
void LoadListedProfiles(CTreeViewEx& tree, const AskForMissingProfile& ask);

// The drive of the profile that is held by this file is to be ejected: what was written there comes onto the
// disk, and the profile can only be read from then on, until TakeOverFreedProfiles finds it again.
void LetProfileGo(FileHandle lock);

// True while one of the attached profiles can only be read because another program has it.
bool AnyEditedByOther();

// Asks about every profile whose file another program changed since it was read or written last, once for
// each change: its tree may be loaded again or written over, and both are kept. References to the nodes of
// one that is loaded again are dead then; selection and active container follow. True when there was one.
bool SettleConflicts(CTreeViewEx& tree, ActiveContainer& container);

// Takes over the profiles that another program had and has left meanwhile. Each is loaded again, for it may
// have been changed: references to its nodes are dead then; selection and active container follow. What a
// start would offer is offered; one that cannot be loaded all the same leaves the tree and stays in the list.
// True when there was one.
bool TakeOverFreedProfiles(CTreeViewEx& tree, ActiveContainer& container);
