#pragma once

#include <string>
#include <vector>

#include "engine/profiles/DirectoryCheck.h"
#include "engine/tree/CTreeViewEx.h"

// Attaches the profile in the directory as the program's start does, with everything that mends, and then
// puts right what a start leaves as it is: entries that lead to no data go, two that lead to the same data
// get each their own, of a damaged file the formats that are whole are kept. No bytes are lost: a copy of the
// tree data file is made first, and what no entry leads to any more is put aside beside it, as
// "C<number>.nxc.defekt".
//
// Each step asks the user what a start would ask. A sentence for each thing that was done beyond the load;
// nothing, told, when the profile could not be attached or saved. CheckDirectory says what is left.
std::vector<std::wstring> RepairDirectory(CTreeViewEx& tree, const std::wstring& directory);
