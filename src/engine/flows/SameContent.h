#pragma once

#include <string>

#include "engine/tree/Node.h"

// The newest clip directly in `container` when its data file holds, byte for byte, what `clipFile` holds;
// null when it holds something else or cannot be read.
const Node* NewestClipIfSame(const Node& container, const std::wstring& clipFile);
