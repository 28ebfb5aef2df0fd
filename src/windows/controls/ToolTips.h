#pragma once

#include <windows.h>

#include <initializer_list>

struct ControlTip {
    int control;
    const wchar_t* text;
};

// Shows a text while the mouse rests on a control of a dialog, unless the user turned tool tips off. The
// texts must be literals; the tips are destroyed with the dialog.
void ShowToolTips(HWND dialog, std::initializer_list<ControlTip> tips);
