#pragma once

#include <optional>
#include <string>

#include "engine/tree/NodeCollection.h"
#include "platform/Clock.h"

// The folder of a profile that takes what the user deletes, if he wants that. It is one like any other and
// known by how its information begins, so that it may get another name, and so that a folder of the user's
// own that happens to have its name is none.

inline constexpr const wchar_t* kDeletedFolderName = L"Gelöscht";

// True for such a folder directly below its profile.
bool IsDeletedFolder(const Node* node);
// The profile's folder for what is deleted; null when it has none so far.
Node* DeletedFolderOf(const Node& profile);
// Makes it, at the end of the profile.
Node& AddDeletedFolder(NodeCollection& nodes, Node& profile);
// Adds a node as the container's last child but for that folder, which stays the last one.
Node& AddInFrontOfDeleted(NodeCollection& nodes, Node& container, const std::wstring& text,
                          const std::wstring& image);
// True for what lies in such a folder, however deep.
bool IsDeleted(const Node* node);

// What lies directly in it tells at the end of its information when it was deleted, and from where; nothing
// else does. Brings the information of a node that came from `from` (a place as the user reads it) in line
// with where it stands now. One that has no room for it, or cannot be read, stays as it is.
void NoteWhereItStands(Node& node, const std::wstring& from, FileTime now);
// How many days ago that was; none for a node that does not tell.
std::optional<int> DaysSinceDeletion(const Node& node, FileTime now);
