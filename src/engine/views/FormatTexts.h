#pragma once

#include <cstdint>
#include <string>

#include "engine/clipboard/modFormatDesc.h"

// The texts about each format in the list of a clip's formats.

// The described table's row of a format; of one that has none, what is known about it besides, and for all
// others row 0. Programs of other systems name a format by its kind and parameters
// ("text/html;charset=utf-8"), which count only where they give the name that the format has on Windows.
const FormatDescription& DescriptionOf(const std::wstring& formatName);

// A number of bytes for people: "512 Bytes", "1,5 KB", "38 MB".
std::wstring SizeText(std::int64_t bytes);
// The same to the byte: "38.400.054 Bytes".
std::wstring ExactSizeText(std::int64_t bytes);
