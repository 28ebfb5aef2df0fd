#pragma once

#include <windows.h>

#include "platform/win32/SystemHandles.h"

// The header of a bitmap of 32-bit colours whose first row is the top one; sizes in pixels.
BITMAPINFOHEADER TopDownHeader(int width, int height);

// Such a bitmap, zeroed. `pixels`, when given, gets the place of its colours, which live as long as it; null,
// like the result, when there is no memory for it.
UniqueBitmap MakeScreenBitmap(int width, int height, void** pixels = nullptr);
