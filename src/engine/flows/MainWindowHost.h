#pragma once

#include "engine/process/Later.h"
#include "engine/tree/NodeCollection.h"
#include "platform/Handles.h"

// What the flows ask of the main window, and nothing else. The window does it; the flows decide when.
class MainWindowHost : public Scheduler {
 public:
    virtual WindowHandle Window() = 0;
    // The tree control's nodes.
    virtual NodeCollection& Nodes() = 0;
    // The profile or folder that new clips go into; null when there is none.
    virtual Node* ActiveContainer() = 0;
    // The tool bar's toggle "Lock" is pressed.
    virtual bool LockPressed() = 0;

    // Selects the node in the tree, scrolls it into view and refreshes the list and the preview, once.
    virtual void SelectAndShow(Node& node) = 0;

    // Marks the profile that holds `node` as changed.
    virtual void SetProfileChanged(Node& node) = 0;
    // Writes every changed profile. A failure is told to the user there.
    virtual bool SaveAllProfiles() = 0;

    virtual void BringToFront() = 0;
    // Opens the clip's property dialog and returns when it has closed. The node may be gone then. Unasked, it
    // appears above the other windows without taking the keyboard from the program that the user works in.
    virtual void EditClipProperties(Node& node, bool unasked) = 0;
    virtual void Minimise() = 0;
};
