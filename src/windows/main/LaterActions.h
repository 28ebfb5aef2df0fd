#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <list>
#include <utility>

#include "engine/process/Later.h"
#include "windows/controls/Timer.h"

// Posted to the window for each action without delay.
inline constexpr UINT kLaterMessage = WM_APP + 1;

// What the main window does later. Timers come when nothing more urgent waits; what has no delay comes as
// soon as what was posted before it is done.
class LaterActions : public Scheduler {
 public:
    // The window that gets the messages. Before there is one, and when it takes no more, timers stand in.
    void SetWindow(HWND window) { window_ = window; }
    void Later(std::chrono::milliseconds delay, std::function<void()> action) override;
    // A message of an action has come. False when there is none left.
    bool NextIsDue();

 private:
    struct Delayed {
        Delayed(LaterActions& all, std::function<void()> what)
            : action(std::move(what)), timer([this, &all] { all.IsDue(*this); }) {}
        std::function<void()> action;
        Timer timer;
    };
    void IsDue(const Delayed& delayed);

    HWND window_ = nullptr;
    std::list<std::function<void()>> posted_;
    std::list<Delayed> delayed_;
};
