#pragma once

#include <string>

#include "engine/tree/NodeCollection.h"

// Makes a clip, the last one in the profile or folder `container`, of an ordinary file: of what is in it, or,
// where that is nothing that a clipboard holds, of the way to it. It is named after the file. The profile is
// changed and not saved. Null, and `why` says it in a sentence, when that fails; nothing is left then.
Node* ImportFile(NodeCollection& nodes, Node& container, const std::wstring& path, std::wstring& why);
