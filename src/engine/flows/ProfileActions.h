#pragma once

#include <cstdint>
#include <string>

#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/ProfileFile.h"
#include "engine/tree/CTreeViewEx.h"

// The commands that change which profiles are attached. Deleting one: ClipOperations.h.
class ProfileActions {
 public:
    // Neither is owned; both must live as long.
    ProfileActions(CTreeViewEx& tree, ActiveContainer& container) : tree_(tree), container_(container) {}

    // Makes a profile in an existing directory, empty or from the template file that is given with its full
    // path, and saves it at once. What a template's top node says of directory and name gives way to the ones
    // given here. Returns the top node; null after a failure, which has been told and leaves tree, list and
    // directory as they were. The first profile of all becomes the active container.
    Node* BuildNewprofile(const std::wstring& name, const std::wstring& directory,
                          const std::wstring& templateFile);

    // Attaches the profile that a directory holds. Null after a failure, as above. Nothing is written.
    Node* ImportProfileDirect(const std::wstring& directory);

    // Takes a profile out of list and tree after a question; its files stay. True when it was taken out.
    bool UnlinkProfile(Node* profile);

 private:
    Node* BuildEmptyProfile(const std::wstring& name, const std::wstring& directory);
    Node* BuildFromTemplate(const std::wstring& name, ProfileFile& file, const std::wstring& templateFile);
    void TakeOut(Node& profile);

    CTreeViewEx& tree_;
    ActiveContainer& container_;
};

// The OK of the dialog for a new profile: checks what was typed and offers to make a missing directory. True
// when the profile can be built now; else the user has been told why not.
bool ConfirmNewProfile(const std::wstring& name, const std::wstring& directory, const std::wstring& info);
// Why a profile cannot be made with this name in this directory; empty when it can.
std::wstring NewProfileRefusal(const std::wstring& name, const std::wstring& directory);

// Makes a directory and those above it that are missing. A failure is told to the user.
bool MakeProfileDirectory(const std::wstring& directory);
// The question that is put before a missing directory is made, and its title.
std::wstring MissingDirectoryQuestion(const std::wstring& directory);
inline constexpr const wchar_t* kMissingDirectoryTitle = L"Verzeichnis existiert nicht";

// What the dialog for an existing profile shows.
struct ProfileProperties {
    std::wstring name;
    std::wstring directory;
    std::wstring info;
    bool globalFree = false;   // structure actions are allowed even while they are locked
    bool locked = false;       // structure actions are blocked now; shown only
    std::int32_t folders = 0;  // all below the profile
    std::int32_t clips = 0;
};

ProfileProperties ReadProfileProperties(const Node& profile);
// The OK of that dialog: takes over name, info and global release and saves. False, with a message, when
// name or info cannot be stored; nothing is changed then.
bool ApplyProfileProperties(CTreeViewEx& tree, Node& profile, const ProfileProperties& properties);
