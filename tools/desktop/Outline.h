#pragma once

#include <string>

#include "desktop/Window.h"

// What the screen holds, for the reader of a failed test: every visible window with its class, number, place,
// state and text, and what trees, lists and bars show. Never fails and never waits long, whatever state the
// other programs are in.
std::string ScreenOutline();
std::string WindowOutline(Window window);
