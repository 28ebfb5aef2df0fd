#pragma once

#include <windows.h>

#include "engine/views/StoredWindow.h"

// The main window's place on the screen, from one run to the next. Left and top are kept by the system's
// resolution, which is the same on every monitor, the size by the window's own: so it comes back on the
// monitor on which it was.

// Moves a window that is not shown yet to its stored place; the result is the state to show it in. A
// maximised one goes back to that place as well.
MainState RestoreMainPlace(HWND window);
// Shows the window in its state for the first time; as an icon it goes back to the state.
void ShowAtFirst(HWND window, MainState state, bool asIcon);
// Stores place and state, unless the window is minimised.
void StoreMainPlace(HWND window);
