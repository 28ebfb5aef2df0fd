#pragma once

#include <windows.h>
// The list control needs <windows.h> in front of it.
#include <commctrl.h>

#include "engine/views/HitList.h"

// Draws the cell of a list that shows the line around a hit, with the hit marked. False when there is none:
// the list draws the cell then.
bool DrawHitLine(HWND list, const NMLVCUSTOMDRAW& draw, const HitList& hits);
