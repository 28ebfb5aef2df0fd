#pragma once

#include <windows.h>

// What programs that read the screen to their user need to know of a window. A tree, a list, a tab and a text
// box have no name of their own: theirs is that of the static text directly before them in the order of
// windows. Dialogs say it in their templates, with a text that is not visible where none is to be seen.

// Puts such a text directly before a window; it is never shown, and goes with their parent.
void NameByHiddenText(HWND window, const wchar_t* name);

inline constexpr long kGraphicRole = 0x28;

struct ReaderDescription {
    const wchar_t* name;
    long role = 0;  // one of the system's ROLE_SYSTEM numbers; 0 for that of the window's class
};

// For a window whose name by the system's rule says nothing ("..."), or whose kind the system does not know:
// tells both when a program asks. The description must outlive the window.
void TellReaders(HWND window, const ReaderDescription& description);
