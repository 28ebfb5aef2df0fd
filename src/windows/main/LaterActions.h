#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <map>

// What the main window does later, by timers: they come when nothing more urgent waits.
class LaterActions {
 public:
    void Add(HWND window, std::chrono::milliseconds delay, std::function<void()> action);
    // A timer of the window has come. While the program is not idle it comes again and again.
    void OnTimer(HWND window, UINT_PTR timer, bool idle);

 private:
    // By the numbers of their timers, which are the smallest that are free: the window has timers of its own.
    std::map<UINT_PTR, std::function<void()>> actions_;
};
