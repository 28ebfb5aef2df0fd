#pragma once

#include <string>

#include "engine/profiles/ProfileLock.h"
#include "engine/tree/NodeRef.h"
#include "platform/SafeFile.h"

// Another program changed the tree data file, so that this one must not simply write over it.
enum class ProfileConflict {
    None,
    Found,   // the user is to be asked
    PutOff,  // he has been, and wants neither tree for now
};

// One attached profile: a directory with a tree data file and clip data files.
class CProfile {
 public:
    // What the user calls it: the text of its top node.
    std::wstring Name;
    // The directory as the user chose it, with or without "\" at its end.
    std::wstring Directory;
    // The tree was changed since it was last saved.
    bool Dirty = false;
    // The journal of its last save is still there.
    bool Unfinished = false;
    // The profile's top node; null while the profile is not in the tree. Not owned.
    ::Node* Node = nullptr;
    // What stands in the tree for it while its drive or server does not answer: a node of no kind.
    NodeRef Waiting;
    // Keeps the directory for this program.
    ProfileLock Lock;
    ProfileConflict Conflict = ProfileConflict::None;
    // The tree data file as this program last read or wrote it.
    FileMark OnDisk;
    // What tells the directory from every other one; empty when that is not known.
    std::wstring Identity;
};
