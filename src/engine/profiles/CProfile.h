#pragma once

#include <string>

#include "engine/profiles/ProfileFile.h"
#include "engine/tree/NodeRef.h"

// One attached profile: a directory with a tree data file and clip data files.
class CProfile {
 public:
    // What the user calls it: the text of its top node.
    std::wstring Name;
    // The directory as the user chose it, with or without "\" at its end.
    std::wstring Directory;
    // The tree was changed since it was last saved.
    bool Dirty = false;
    // The profile's top node; null while the profile is not in the tree. Not owned.
    ::Node* Node = nullptr;
    // What stands in the tree for it while its drive or server does not answer: a node of no kind.
    NodeRef Waiting;
    // Its tree data file; neither taken nor read while the profile is not in the tree.
    ProfileFile File;
};
