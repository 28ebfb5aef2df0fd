#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/Window.h"

struct MenuEntry {
    int depth = 0;   // 0 in the bar, or in the popped-up menu itself
    int number = 0;  // of an entry that opens a menu: -1
    bool separator = false;
    bool enabled = false;
    bool checked = false;
    std::wstring text;
};

// The menu bar of a window of another program, or the menu that a popped-up menu window shows, with
// everything below, as it would be shown now. Needs menuspy.dll beside this program.
std::vector<MenuEntry> MenuEntries(Window window);
// The entry with this number; none when the menu has no such entry.
std::optional<MenuEntry> FindMenuEntry(Window window, int number);

// Waits for the menu that a right click has opened.
Window WaitForPopUpMenu(DWORD processId);
