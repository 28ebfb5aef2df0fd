#pragma once

#include <cstdint>
#include <string>

#include "tree/Node.h"

// What a clip's node says of the clip, and where its data lies.
struct StoredClip {
    std::int32_t number = 0;
    std::int16_t formatCount = 0;
    std::wstring timeCaptured;
    std::wstring info;
    // The full path of its clip data file; empty when the node has no profile or that has no directory.
    std::wstring path;
};

// Throws RuntimeError when the tag is damaged.
StoredClip StoredClipOf(const Node& node);
