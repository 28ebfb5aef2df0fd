#pragma once

#include <string>

#include "engine/tree/Node.h"

// What stands beside a node in the tree: the picture of its kind, or the camera that says where new clips go.

// "Profile", "Structure" or "Clip"; empty for a node of no kind.
std::wstring KindImage(const Node* node);
void ShowKind(Node& node);
void ShowAsActive(Node& node);
bool IsShownAsActive(const Node& node);
