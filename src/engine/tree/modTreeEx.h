#pragma once

#include <cstdint>
#include <string>

#include "engine/tree/Node.h"

// What a node is, and what its tag says. The first character of the tag is the kind: "P" profile, "S"
// structure (folder), "C" clip; the fields behind it are separated by "&". A node with any other tag is of no
// kind.

bool IsClipNode(const Node* node);
bool IsProfileNode(const Node* node);
bool IsStructureNode(const Node* node);

// "P&" counter "&" directory "&" flag "&" info. The directory must not hold "&": parsing cuts it there. The
// info may.
std::wstring MakeProfileTag(std::int32_t counter, const std::wstring& directory, bool globalFlag,
                            const std::wstring& info);

// Takes a profile tag apart. What the tag does not reach stays unchanged, without an error. Throws
// RuntimeError (TypeMismatch) for a counter that is no 32-bit number.
void ParseProfileTag(const std::wstring& tag, std::int32_t& counter, std::wstring& directory,
                     bool& globalFlag, std::wstring& info);

// "C&" number "," format count "&" time "&" info. The time must not hold "&".
std::wstring MakeClipTag(std::int32_t clipNumber, std::int16_t formatCount, const std::wstring& timeCaptured,
                         const std::wstring& info);

// Takes a clip tag apart. An empty tag and one without "," leave everything unchanged. Throws RuntimeError:
// InvalidArgument when a tag that is not empty has no "&" from its third character on (deliberately unlike
// ParseProfileTag: callers tell a damaged clip by it), TypeMismatch for a number that is none.
void ParseClipTag(const std::wstring& tag, std::int32_t& clipNumber, std::int16_t& formatCount,
                  std::wstring& timeCaptured, std::wstring& info);

// "S&" info.
std::wstring MakeStructureTag(const std::wstring& info);
// The tag from its third character on; empty for a shorter one.
std::wstring ParseStructureTag(const std::wstring& tag);

// The full path of the tree data file in a profile's directory.
std::wstring TreeDataFilePath(const std::wstring& directory);

// The number of all descendants, 0 for null.
std::int32_t DescendantCount(const Node* node);
// The level of a node: 1 at the root level, 0 for null.
std::int32_t LevelOf(const Node* node);
