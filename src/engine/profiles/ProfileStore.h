#pragma once

#include <span>
#include <string>

#include "engine/profiles/ProfileFile.h"
#include "engine/tree/CTreeViewEx.h"

// How profiles come from disk into the tree and back. Each operation tells the user what goes wrong.

// Reads the file and puts its profile at the end of the root level. The top node's tag then names the file's
// directory, whatever was in it: a file that was copied or moved must not lead to the clips of another place.
// Null when there is no readable profile; no node stays behind then. A file of which only the beginning makes
// a tree is kept first, for the next save replaces it; without a copy it is not loaded.
Node* LoadProfile(CTreeViewEx& tree, ProfileFile& file);

// Writes one profile's tree data file, but for the subtrees of `without`: what is about to be removed is
// removed on disk first. The profile counts as unchanged after a full save. False after an error,
// which leaves the file as it was, for a profile that another program has, and for a file that was changed
// behind this program's back: what is to become of that one is asked later (SettleConflicts).
bool SaveProfile(CTreeViewEx& tree, Node& profile, std::span<Node* const> without = {});
// The same, but that the disk is full is left to the caller to tell.
CTreeViewEx::Saved TrySaveProfile(CTreeViewEx& tree, Node& profile, std::span<Node* const> without);

// Writes every changed profile. One that fails does not keep the others from being written; it stays changed.
// That another program changed one is no failure.
bool SaveAllProfiles(CTreeViewEx& tree);

// For the end: nobody is asked any more, so both trees of every profile in conflict are kept.
void KeepTreesInConflict(CTreeViewEx& tree);

// Makes what was written last safe from the loss of the current, for the moments when nobody waits: the clip
// files that were written or copied, and then the saved trees, whose journals go. The one does the next file
// alone and returns false when none is left; costs nothing then.
bool FinishNextSave();
void FinishSaves();

// Marks the profile that holds `node` as changed.
void SetProfileChanged(Node* node);
