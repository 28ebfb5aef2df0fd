#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/tree/Node.h"

// What the user has chosen, as several nodes at once: null for none of them.
using ChosenNodes = std::span<Node* const>;

// Each once, and none that lies below another one, which it goes with. In the given order.
std::vector<Node*> TopmostOf(ChosenNodes nodes);

// Chosen siblings that stand side by side.
struct SiblingRun {
    Node* parent = nullptr;
    Node* before = nullptr;  // the sibling behind them; null for none
    std::vector<Node*> nodes;
};
// The nodes, of which none lies below another one, as they stand in the tree. Parents come in the order in
// which the nodes name them first.
std::vector<SiblingRun> RunsOf(ChosenNodes nodes);

// The nodes of each profile (of each root), in the given order.
std::vector<std::vector<Node*>> ByProfile(ChosenNodes nodes);

// All that they are, with all below them: "3 Clips und 1 Ordner".
std::wstring CountedText(ChosenNodes nodes);
