#include "windows/main/LaterActions.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kLookAgainAfter = 100;  // milliseconds

}  // namespace

void LaterActions::Add(HWND window, std::chrono::milliseconds delay, std::function<void()> action) {
    UINT_PTR timer = 1;
    while (actions_.contains(timer))
        ++timer;
    actions_[timer] = std::move(action);
    SetTimer(window, timer, static_cast<UINT>(std::max<std::int64_t>(delay.count(), USER_TIMER_MINIMUM)),
             nullptr);
}

void LaterActions::OnTimer(HWND window, UINT_PTR timer, bool idle) {
    if (!idle) {
        SetTimer(window, timer, kLookAgainAfter, nullptr);
        return;
    }
    KillTimer(window, timer);
    const auto found = actions_.find(timer);
    if (found == actions_.end()) return;
    const std::function<void()> action = std::move(found->second);
    actions_.erase(found);
    action();
}
