#include "windows/main/LaterActions.h"

#include <algorithm>
#include <new>
#include <utility>

void LaterActions::Later(std::chrono::milliseconds delay, std::function<void()> action) {
    if (delay.count() == 0 && window_ != nullptr) {
        posted_.push_back(std::move(action));
        if (PostMessageW(window_, kLaterMessage, 0, 0)) return;
        action = std::move(posted_.back());
        posted_.pop_back();
    }
    delayed_.emplace_back(*this, std::move(action));
    if (delayed_.back().timer.Start(delay)) return;
    delayed_.pop_back();
    throw std::bad_alloc();
}

void LaterActions::IsDue(const Delayed& delayed) {
    // The entry must outlive its action, which may change the list.
    std::list<Delayed> due;
    due.splice(due.begin(), delayed_,
               std::find_if(delayed_.begin(), delayed_.end(),
                            [&](const Delayed& each) { return &each == &delayed; }));
    due.front().action();
}

bool LaterActions::NextIsDue() {
    if (posted_.empty()) return false;
    const std::function<void()> action = std::move(posted_.front());
    posted_.pop_front();
    action();
    return true;
}
