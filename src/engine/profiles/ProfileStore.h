#pragma once

#include <string>

#include "engine/tree/CTreeViewEx.h"

// How profiles come from disk into the tree and back. Each operation tells the user what goes wrong.

// Reads the tree data file in `directory` and puts the profile at the end of the root level. The top node's
// tag then names `directory`, whatever the file said: a file that was copied or moved must not lead to the
// clips of another place. Null when there is no readable profile; no node stays behind then. A file of which
// only the beginning makes a tree is copied to "nxclip.bak" first, for the next save replaces it.
Node* LoadProfileDirectory(CTreeViewEx& tree, const std::wstring& directory);

// At the window's load: empties the tree, reads the profile list from the settings store and loads every
// profile of it. Those that cannot be loaded are reported and left out of the list.
void LoadListedProfiles(CTreeViewEx& tree);

// Writes one profile's tree data file, without the subtree of `without` if that is given: what is about to be
// removed is removed on disk first. The profile counts as unchanged after a full save. False after an error,
// which leaves the file as it was unless the disk itself fails in the write.
bool SaveProfile(CTreeViewEx& tree, Node& profile, Node* without = nullptr);

// Writes every changed profile. One that fails does not keep the others from being written; it stays changed.
bool SaveAllProfiles(CTreeViewEx& tree);

// Makes the last saves safe from the loss of the current and removes their journals: for the moments when
// nobody waits. Costs nothing when there are none.
void FinishSaves();

// Marks the profile that holds `node` as changed.
void SetProfileChanged(Node* node);
