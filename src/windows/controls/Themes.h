#pragma once

#include <windows.h>

// Lets a page of a dialog look like the tab that it stands on, where the system has visual styles. Their
// library is looked up: it is none of those that the system has loaded for every program.
void LookLikeTab(HWND page);
