#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/profiles/CProfile.h"
#include "engine/tree/CTreeViewEx.h"

// How profiles come from disk into the tree and back. Each operation tells the user what goes wrong.

// Reads the tree data file in `directory` and puts the profile at the end of the root level. The top node's
// tag then names `directory`, whatever the file said: a file that was copied or moved must not lead to the
// clips of another place. Null when there is no readable profile; no node stays behind then. A file of which
// only the beginning makes a tree is kept first, for the next save replaces it; without a copy it is not
// loaded.
Node* LoadProfileDirectory(CTreeViewEx& tree, const std::wstring& directory);
// The same; `onDisk` is of the file as it was read: what another program writes afterwards is noticed by it.
Node* LoadProfileDirectory(CTreeViewEx& tree, const std::wstring& directory, FileMark& onDisk);

// Writes one profile's tree data file, but for the subtrees of `without`: what is about to be removed is
// removed on disk first. The profile counts as unchanged after a full save. False after an error,
// which leaves the file as it was, for a profile that another program has, and for a file that was changed
// behind this program's back: what is to become of that one is asked later (SettleConflicts).
bool SaveProfile(CTreeViewEx& tree, Node& profile, std::span<Node* const> without = {});
// The same, but that the disk is full is left to the caller to tell.
CTreeViewEx::Saved TrySaveProfile(CTreeViewEx& tree, Node& profile, std::span<Node* const> without);

// Copies the tree data file of a directory to "nxclip.bak", or to the next such name that is free, unless one
// of these copies holds the same already. False, told, when no copy can be made.
bool KeepTreeFile(const std::wstring& directory);
// The names of the copies in a directory, in the order in which they were made.
std::vector<std::wstring> KeptTreeFiles(const std::wstring& directory);

// Writes every changed profile. One that fails does not keep the others from being written; it stays changed.
// That another program changed one is no failure.
bool SaveAllProfiles(CTreeViewEx& tree);

// Writes the tree of a profile whose file another program changed beside that file, where KeepTreeFile keeps
// its copies. False, told, when that is not possible.
bool KeepOwnTree(CTreeViewEx& tree, const CProfile& entry);
// For the end: nobody is asked any more, so of every profile in conflict both trees are kept.
void KeepTreesInConflict(CTreeViewEx& tree);

// Makes what was written last safe from the loss of the current, for the moments when nobody waits: the clip
// files that were written or copied, and then the saved trees, whose journals go. The one does the next file
// alone and returns false when none is left; costs nothing then.
bool FinishNextSave();
void FinishSaves();

// Marks the profile that holds `node` as changed.
void SetProfileChanged(Node* node);
