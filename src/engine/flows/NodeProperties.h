#pragma once

#include <cstdint>
#include <string>

#include "engine/tree/CTreeViewEx.h"

// Names and info texts of folders and clips: the rules of their property dialogs and of renaming in place.
// Each change is saved at once; one that could not be saved stays in the tree and is saved with the next one.

// OK is enabled: the name is not blank.
bool NameCanBeConfirmed(const std::wstring& name);
// Why a name or an info text cannot be stored; empty when it can. `tag` is the whole tag with the info text.
std::wstring NameRefusal(const std::wstring& name);
std::wstring InfoRefusal(const std::wstring& info, const std::wstring& tag);

struct ClipProperties {
    std::wstring name;
    std::wstring info;
    std::wstring timeCaptured;
    std::int16_t formatCount = 0;
    std::wstring file;  // full path
};
ClipProperties ReadClipProperties(const Node& clip);
// The OK of the clip dialog: takes over name and info. False, with a message, when one of them cannot be
// stored; nothing is changed then.
bool ApplyClipProperties(CTreeViewEx& tree, Node& clip, const std::wstring& name, const std::wstring& info);

struct FolderProperties {
    std::wstring name;
    std::wstring info;
};
FolderProperties ReadFolderProperties(const Node& folder);
bool ApplyFolderProperties(CTreeViewEx& tree, Node& folder, const std::wstring& name,
                           const std::wstring& info);

// Makes a folder as the last one in a profile or folder. Null, with a message, when it cannot be made.
Node* NewFolder(CTreeViewEx& tree, Node* container, const std::wstring& name, const std::wstring& info);

// Renames any node in place. False, with a message, when the name cannot be stored.
bool RenameNode(CTreeViewEx& tree, Node& node, const std::wstring& name);
