#pragma once

#include <chrono>
#include <string>

#include "platform/Handles.h"

// What start-up asks of the machine and puts on the screen.
class StartUpHost {
 public:
    virtual ~StartUpHost() = default;

    // Another instance of this program file runs; while none does, this one is it.
    virtual bool OtherInstanceRuns() = 0;
    // Lets some time go by in which the other instance may get on.
    virtual void Wait(std::chrono::milliseconds time) = 0;
    virtual WindowHandle FindTopLevelWindow(const std::wstring& title) = 0;
    virtual bool IsMinimised(WindowHandle window) = 0;
    // Shows a minimised window in its normal state.
    virtual void ShowNormal(WindowHandle window) = 0;
    virtual void ActivateByTitle(const std::wstring& title) = 0;

    // Shows the splash window and returns when it has closed.
    virtual void ShowSplash() = 0;
    // Creates the main window, loads it and shows it.
    virtual void ShowMainWindow() = 0;
};

// Brings the program up, from the whole command line to the shown main window. False when another instance
// has been activated instead: this one ends then, without having shown anything. One whose window cannot be
// found is given some seconds to get it, or to end.
bool StartUp(StartUpHost& host, const std::wstring& commandLine, const std::wstring& programDirectory);
