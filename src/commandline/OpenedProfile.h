#pragma once

#include <string>
#include <vector>

#include "engine/tree/CTreeViewEx.h"

// The profile that a command works on.
class OpenedProfile {
 public:
    // Reads it as it stands on the disk and changes nothing there, be it open elsewhere or not. Throws
    // CommandError when there is no readable profile.
    static constexpr bool kForReading = false;
    // Takes it for this program and enters it into the list, so that it can be changed. Throws CommandError,
    // also when another program has it.
    static constexpr bool kForWriting = true;
    OpenedProfile(const std::wstring& directory, bool forWriting);
    ~OpenedProfile();
    OpenedProfile(const OpenedProfile&) = delete;
    OpenedProfile& operator=(const OpenedProfile&) = delete;

    CTreeViewEx& Tree() { return tree_; }
    Node& Top() { return *top_; }
    // The node that the user names: a clip by its number, each by its path in the tree with or without the
    // profile's name in front, its parts separated by "/" or "\". Where there are several, those of the kind
    // count that is wanted. Throws CommandError for none and for several.
    enum class Wanted { Any, Clip, Container };
    Node& Find(const std::wstring& named, Wanted wanted = Wanted::Any);

 private:
    std::vector<Node*> AllNamed(const std::wstring& named, Wanted wanted) const;

    NodeCollection nodes_;
    CTreeViewEx tree_;
    Node* top_ = nullptr;
};

// Where a directory is wanted and none is given.
inline constexpr const wchar_t* kCurrentDirectory = L".";

// Throws CommandError when there is no such directory or it holds no profile.
void ExpectProfile(const std::wstring& directory);
// Throws CommandError when another program has the profile.
void ExpectFree(const std::wstring& directory);
