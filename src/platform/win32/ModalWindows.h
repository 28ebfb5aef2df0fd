#pragma once

#include <windows.h>

// The window that a new modal window belongs to: the youngest modal dialog or message box over `window`, or
// `window` itself while there is none. Null stays null. A modeless window is never meant: as an owner it
// would leave the main window open to commands below the box.
HWND ModalWindowOver(HWND window);

// Marks a dialog as one that keeps the user from nothing.
void MarkAsModeless(HWND dialog);

// Ends the menu that a window of this thread has open, also one that shows its bar or its system menu alone.
// Without one it does nothing. The menu's loop comes back when this has returned.
void EndMenuLoop();

// Ends the loop in which a control of `window` follows the mouse or shows a menu of its own. The loop may
// still take a message after this, and the control goes on afterwards. False when none does.
bool EndLoopOfAControl(HWND window);
