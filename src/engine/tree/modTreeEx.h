#pragma once

#include <cstdint>
#include <string>

#include "engine/tree/Node.h"

// What a node is, and what its tag says. A node whose tag begins with none of the three kinds' letters is of
// no kind.

bool IsClipNode(const Node* node);
bool IsProfileNode(const Node* node);
bool IsStructureNode(const Node* node);

// The fields of ProfileTag one by one (engine/tree/Tags.h says what they mean and what reading throws).
// What the tag does not reach, and everything after a failure, stays unchanged.
std::wstring MakeProfileTag(std::int32_t counter, const std::wstring& directory, bool globalFlag,
                            const std::wstring& info);
void ParseProfileTag(const std::wstring& tag, std::int32_t& counter, std::wstring& directory,
                     bool& globalFlag, std::wstring& info);

// The same for ClipTag.
std::wstring MakeClipTag(std::int32_t clipNumber, std::int16_t formatCount, const std::wstring& timeCaptured,
                         const std::wstring& info);
void ParseClipTag(const std::wstring& tag, std::int32_t& clipNumber, std::int16_t& formatCount,
                  std::wstring& timeCaptured, std::wstring& info);

// The same for StructureTag.
std::wstring MakeStructureTag(const std::wstring& info);
std::wstring ParseStructureTag(const std::wstring& tag);

// The full path of the tree data file in a profile's directory.
std::wstring TreeDataFilePath(const std::wstring& directory);

// The number of all descendants, 0 for null.
std::int32_t DescendantCount(const Node* node);
// The level of a node: 1 at the root level, 0 for null.
std::int32_t LevelOf(const Node* node);
