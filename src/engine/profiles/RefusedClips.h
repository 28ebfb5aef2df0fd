#pragma once

#include <string>
#include <vector>

#include "engine/profiles/FoundClips.h"

// What the user did not want of the clips that were found in a directory. It is not offered again at a start;
// whatever came after that is.

// Takes those out of `clips` that were refused.
void LeaveOutRefused(std::vector<FoundClip>& clips, const std::wstring& directory);
// Keeps what was refused, in place of what was refused there before.
void KeepRefusal(const std::vector<FoundClip>& clips, const std::wstring& directory);
