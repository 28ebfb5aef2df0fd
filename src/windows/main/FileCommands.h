#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <vector>

#include "engine/tree/CTreeViewEx.h"

// Clips out to ordinary files and back. Both show how far they are, tell what failed, and return what became
// of it, for the status bar.

// Lets the user choose where the nodes, with what is below them, are to be written, and does it. Empty when
// the user did not want it.
std::wstring ExportByDialog(HWND owner, std::span<Node* const> nodes);

// Makes clips of the files, the last ones in the profile or folder, and saves them.
std::wstring ImportWithProgress(HWND owner, CTreeViewEx& tree, Node& container,
                                std::vector<std::wstring> paths);
