#include "windows/main/LaterActions.h"

#include <algorithm>
#include <utility>

void LaterActions::Add(HWND window, std::chrono::milliseconds delay, std::function<void()> action) {
    const UINT_PTR timer = ++lastTimer_;
    actions_[timer] = std::move(action);
    SetTimer(window, timer, static_cast<UINT>(std::max<std::int64_t>(delay.count(), USER_TIMER_MINIMUM)),
             nullptr);
}

void LaterActions::OnTimer(HWND window, UINT_PTR timer, bool idle) {
    if (!idle) return;
    KillTimer(window, timer);
    const auto found = actions_.find(timer);
    if (found == actions_.end()) return;
    const std::function<void()> action = std::move(found->second);
    actions_.erase(found);
    action();
}
