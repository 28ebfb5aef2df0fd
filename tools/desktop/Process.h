#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "desktop/Window.h"

// A program that this one started: the program under test, or one that plays a part in a test. It ends with
// this object, whatever it is doing, and with this whole program, whatever becomes of that.
class Process {
 public:
    // A new program counts as watched: while it should be running, its end fails every wait. What it prints
    // goes to `outputFile`, or where this program's output goes.
    explicit Process(const std::wstring& commandLine, const std::wstring& directory = L"",
                     const std::wstring& outputFile = L"");
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD Id() const { return id_; }
    bool Running() const;
    // The windows of this program and of those that it started itself.
    std::vector<Window> Windows() const;
    // From now on the end is no fault.
    void MayEnd() { mayEnd_ = true; }
    // Waits for the end, which is expected from now on, and returns the exit code.
    DWORD WaitForEnd(std::chrono::milliseconds bound = kBound);
    void Terminate();
    // Waits until the program waits for input.
    void WaitUntilIdle() const;

    // Ends every program that lives; from any thread.
    static void TerminateAll();

 private:
    friend bool WatchedProcessesRun(std::string&);
    std::string name_;
    HANDLE job_ = nullptr;
    HANDLE process_ = nullptr;
    DWORD id_ = 0;
    bool mayEnd_ = false;
};
