#pragma once

#include <cstdint>
#include <string>

#include "engine/tree/Node.h"

// Finding a node's profile, the attributes in its tag, and the names of files. Nodes may be null for "none".

inline constexpr int kProfileKind = 1;
inline constexpr int kStructureKind = 2;
inline constexpr int kClipKind = 4;

// True when the node is of one of the kinds in `mask`.
bool IsNodeOfKind(const Node* node, int mask);

// The root-level ancestor, the node itself when it is at the root level.
Node* GetTopNode(Node* node);
const Node* GetTopNode(const Node* node);
// The profile that owns `node`; null when the root of its branch is none, which is told if `showError`.
Node* GetProfileNode(Node* node, bool showError);

// The directory in the tag of a profile node, as it stands there; empty for any other node and for a tag
// whose counter is no number. It does not look for the owning profile.
std::wstring GetProfileDirectory(const Node* node);
// Rewrites the directory in the tag of a profile node; any other node is left alone. The profile list is not
// touched. Throws RuntimeError (TypeMismatch) for a counter that is no number.
void SetProfileDirectory(Node* node, const std::wstring& directory);

// The full path of the data file for a new clip at or below `node`, and its number. Empty when `node` is null
// or has no profile, which is told. With `commit` the number is used up: the profile's tag counts it, and the
// profile is marked as changed. The disk is not looked at. Throws RuntimeError: TypeMismatch for a counter
// that is no number, Overflow when there are no numbers left.
std::wstring NewClipFileName(Node* node, bool commit, std::int32_t& clipNumber);

// False for a number so near to the last one that only damage can have made it: counting on from there would
// soon end all captures.
bool IsTrustedClipNumber(std::int32_t number);

// Makes the clip counter of a profile node at least `number`, so that the next clip gets a higher one.
// Throws like SetProfileDirectory.
void RaiseClipCounter(Node& profile, std::int32_t number);

// The full path of a clip data file.
std::wstring ClipFilePath(const std::wstring& directory, std::int32_t clipNumber);
// The number in a clip node's tag; 0 for a node that is no clip and for a damaged tag.
std::int32_t ClipNumberOf(const Node* clip);
// The full path of a clip node's data file; empty for a node that is no clip, has no profile or whose tag is
// damaged.
std::wstring ClipFileOf(const Node* clip);

// Marks the attached profile with this directory as changed; that there is none is told to the user.
void SetDirtyProfile(const std::wstring& directory);

// True when another program has the profile that holds `node`: what is below it may only be read.
bool IsEditedByOther(const Node* node);
// Said when something is to be changed there.
inline constexpr const wchar_t* kAlreadyAttached = L"Das Profil ist schon eingebunden !!!";
inline constexpr const wchar_t* kEditedByOther = L"Das Profil wird von einem anderen Programm bearbeitet.";

// What a node's tag says. Which fields mean something depends on its kind.
struct NodeAttributes {
    std::int32_t clipNumber = 0;
    std::int16_t formatCount = 0;
    std::wstring timeCaptured;
    std::int32_t counter = 0;
    std::wstring directory;
    bool globalFlag = false;
    std::wstring info;
};
// A damaged tag gives what could be read before the damage; no node, or one of no kind, gives nothing.
NodeAttributes AttributesOf(const Node* node);
// The same into a value that everybody shares, for the search; good until the next ReadNodeAttributes.
void ReadNodeAttributes(const Node* node);
const NodeAttributes& ReadAttributes();

// All folders and clips below a node.
struct NodeCounts {
    std::int32_t folders = 0;
    std::int32_t clips = 0;
};
NodeCounts CountBelow(const Node& node);
