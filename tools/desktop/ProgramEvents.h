#pragma once

#include <windows.h>

#include "desktop/Window.h"

// What comes up in a program between two looks at it and may have gone by the second one: dialogs that shut
// the main window out, and menus. The system tells of each while this thread takes messages, as in Pause(),
// and also of a program that has ended since. There is one of these at a time.
class ProgramEvents {
 public:
    explicit ProgramEvents(Window main);
    ~ProgramEvents();
    ProgramEvents(const ProgramEvents&) = delete;
    ProgramEvents& operator=(const ProgramEvents&) = delete;

    // How many there were so far.
    int Dialogs() const { return dialogs_; }
    int Menus() const { return menus_; }

 private:
    static void CALLBACK OnCreated(HWINEVENTHOOK hook, DWORD event, HWND window, LONG object, LONG child,
                                   DWORD thread, DWORD time) noexcept;

    Window main_;
    HWINEVENTHOOK hook_;
    int dialogs_ = 0;
    int menus_ = 0;
};
