#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/tree/CTreeViewEx.h"
#include "platform/Files.h"

// Clip data files that no node leads to: the end of the process between the writing of the file and that of
// the tree leaves one.
struct FoundClip {
    std::int32_t number = 0;
    std::int16_t formatCount = 0;  // 1 or more: its whole records
    FileTime changed = 0;
};

// The found clips of a directory, by number. Removes what a broken-off copy or an interrupted capture left
// there: a file that is empty, or that ends before its first record. One that cannot be read, or makes no
// sense, stays. `profile` is the top node over the directory; null when there is none: every file is found
// then, half ones stay.
std::vector<FoundClip> FindClips(const std::wstring& directory, const Node* profile);

// Makes a node for each in a profile or folder, as its last ones.
void AddFoundClips(NodeCollection& nodes, Node& container, const std::vector<FoundClip>& clips);

// At a start and a take-over: asks whether the clips that are found are to be taken into the folder
// "Wiedergefunden" of the attached profile, and does that. What the user does not want is not offered again.
void OfferFoundClips(CTreeViewEx& tree, Node& profile);
// The user's own wish: offers those as well that were refused, and says when there are none.
void SearchLostClips(CTreeViewEx& tree, Node& profile);
