#pragma once

#include <windows.h>

#include "engine/views/MainLayout.h"

inline Box BoxOf(const RECT& area) {
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

// Moves and sizes a window within its parent (a top-level one on the screen).
inline void PlaceWindow(HWND window, const Box& box) {
    SetWindowPos(window, nullptr, box.left, box.top, box.width, box.height, SWP_NOZORDER | SWP_NOACTIVATE);
}
