#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <map>

// Posted to the window for an action without delay; wParam is its number.
inline constexpr UINT kLaterMessage = WM_APP + 1;

// What the main window does later. Timers come when nothing more urgent waits; what has no delay comes as
// soon as what was posted before it is done.
class LaterActions {
 public:
    void Add(HWND window, std::chrono::milliseconds delay, std::function<void()> action);
    // The timer or the message of an action has come. While the program is not idle it is looked at again and
    // again, by the timer.
    void IsDue(HWND window, UINT_PTR number, bool idle);

 private:
    // By their numbers and those of their timers, which are the smallest that are free: the window has timers
    // of its own.
    std::map<UINT_PTR, std::function<void()>> actions_;
};
