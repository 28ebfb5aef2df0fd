#pragma once

#include <windows.h>

// The system writes at the upper edge of a text box of one line. This makes those of a dialog, which are
// taller than their text, write in the middle. The effect ends with the boxes; their fonts must be set
// before.
void CentreTextInBoxes(HWND dialog);
