#include "windows/main/LaterActions.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kLookAgainAfter = 100;  // milliseconds

}  // namespace

void LaterActions::Add(HWND window, std::chrono::milliseconds delay, std::function<void()> action) {
    UINT_PTR number = 1;
    while (actions_.contains(number))
        ++number;
    actions_[number] = std::move(action);
    if (delay.count() == 0 && PostMessageW(window, kLaterMessage, number, 0)) return;
    SetTimer(window, number, static_cast<UINT>(std::max<std::int64_t>(delay.count(), USER_TIMER_MINIMUM)),
             nullptr);
}

void LaterActions::IsDue(HWND window, UINT_PTR number, bool idle) {
    if (!idle) {
        SetTimer(window, number, kLookAgainAfter, nullptr);
        return;
    }
    KillTimer(window, number);
    const auto found = actions_.find(number);
    if (found == actions_.end()) return;
    const std::function<void()> action = std::move(found->second);
    actions_.erase(found);
    action();
}
