#pragma once

#include <windows.h>

// The system writes at the upper edge of a text box of one line. This makes those of a dialog, which are
// taller than their text, write in the middle. It goes with the boxes; their fonts must be set.
void CentreTextInBoxes(HWND dialog);
