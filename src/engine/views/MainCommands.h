#pragma once

#include "engine/tree/Node.h"

// Which of the main window's commands make sense right now; the menus and the tool bar are greyed by it. What
// a greyed command would do is refused by the command itself as well.
struct CommandState {
    bool snap = false;         // there is a container to take the clip, and nothing locks it
    bool toClipboard = false;  // a clip is selected
    bool remove = false;       // something is selected that may go
    bool rename = false;
    bool properties = false;
    bool newFolder = false;  // something is selected: a clip stands for the container that it lies in
    bool newProfile = false;
    bool importProfile = false;
    bool unlinkProfile = false;
    bool activate = false;  // a profile or folder is selected that is not the active container
};

CommandState CommandsFor(const Node* selected, const Node* activeContainer, bool lockEdit);
