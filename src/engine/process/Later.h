#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "engine/process/MayBegin.h"

// Who can do something later.
class Scheduler {
 public:
    virtual ~Scheduler() = default;
    // Runs `action` once, from a message of its own, when `delay` is over and nothing more urgent waits.
    // Dropped when the scheduler ends before that. Throws when it is not sure to come.
    virtual void Later(std::chrono::milliseconds delay, std::function<void()> action) = 0;
};

// An action that is put off. However often it is put off until it comes, it comes once: as soon as its time
// is over and the program is free for what was put off (MayBegin).
class Once {
 public:
    // The scheduler is not owned and lives as long. The action may put itself off again, and may destroy
    // this.
    Once(Scheduler& scheduler, std::function<void()> action, Who who = Who::PutOffAction);
    Once(const Once&) = delete;
    Once& operator=(const Once&) = delete;

    // Does nothing while it is due. When the scheduler throws, it is not due.
    void PutOff(std::chrono::milliseconds delay = std::chrono::milliseconds(0));
    bool IsDue() const { return state_->due; }

 private:
    struct State {
        Scheduler& scheduler;
        std::function<void()> action;
        Who who;
        bool due = false;
    };
    static void Schedule(const std::shared_ptr<State>& state, std::chrono::milliseconds delay);
    static void Come(const std::shared_ptr<State>& state);

    // What waits in the scheduler knows by it that this is gone.
    std::shared_ptr<State> state_;
};
