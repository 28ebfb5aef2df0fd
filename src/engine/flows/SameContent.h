#pragma once

#include <string>

#include "engine/tree/Node.h"

// The newest clip directly in `container` when it holds the same formats in the same order, with the same
// data, as the clip data file `clipFile`; null when it does not or cannot be read. A text ends at its zero,
// and formats that hold an address or a handle of the copying program are passed over.
const Node* NewestClipIfSame(const Node& container, const std::wstring& clipFile);
