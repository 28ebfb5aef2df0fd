#include "windows/controls/Timer.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/Guard.h"

namespace {

// A message of a timer that has ended may still be on its way.
std::vector<Timer*>& Timers() {
    static std::vector<Timer*> timers;
    return timers;
}

}  // namespace

Timer::Timer(std::function<void()> action)
    : action_(std::make_shared<const std::function<void()>>(std::move(action))) {
    Timers().push_back(this);
}

Timer::~Timer() {
    Stop();
    std::erase(Timers(), this);
}

bool Timer::Start(std::chrono::milliseconds delay) {
    Stop();
    const auto rest =
        std::clamp<std::chrono::milliseconds::rep>(delay.count(), USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM);
    number_ = SetTimer(nullptr, 0, static_cast<UINT>(rest), &Timer::Due);
    return number_ != 0;
}

void Timer::Stop() {
    if (number_ != 0) KillTimer(nullptr, std::exchange(number_, 0));
}

void CALLBACK Timer::Due(HWND, UINT, UINT_PTR number, DWORD) {
    Guarded([&] {
        const auto found = std::find_if(Timers().begin(), Timers().end(),
                                        [=](const Timer* timer) { return timer->number_ == number; });
        if (found == Timers().end()) return;
        (*found)->Stop();
        const auto action = (*found)->action_;
        (*action)();
    });
}
