#pragma once

#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/CProfile.h"
#include "engine/tree/CTreeViewEx.h"

// Listed profiles whose drive or server does not answer: they wait in the tree, greyed, and are looked for
// again. Nothing is asked of their directories meanwhile.

// Asks all directories of the list at once, so that those that answer have done so before one is waited for.
void AskAllDirectories();
// True when the entry's directory does not answer; only the first of those is waited for.
bool IsSilent(const CProfile& entry);

// Puts a node that stands for the profile at the end of the root level.
void ShowWaiting(NodeCollection& nodes, CProfile& entry);

bool AnyWaiting();
// The entry that waits in the tree as this node; null for any other node.
CProfile* WaitingAs(const Node* node);

// Attaches those whose directories answer by now, each at its place in the tree. What a start tells and asks
// is told and asked; the active container of the last run is taken up with its profile. True when there was
// one.
bool AttachAnswering(CTreeViewEx& tree, ActiveContainer& container);
