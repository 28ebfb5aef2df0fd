#pragma once

#include <cstdint>
#include <vector>

#include "engine/formatsets/FormatSetList.h"

// The format-set file's bytes. Layout: docs/formats/nxclip-nxf.md.

// Throws RuntimeError (Overflow) when a text is too long to be stored.
std::vector<std::uint8_t> EncodeFormatSets(const FormatSetList& list);

// Appends the sets to `list` as they are read whole. Throws RuntimeError on bytes that are no such list; what
// follows its end is ignored.
void DecodeFormatSets(const std::vector<std::uint8_t>& bytes, FormatSetList& list);
