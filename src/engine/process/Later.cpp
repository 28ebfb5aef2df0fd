#include "engine/process/Later.h"

#include <utility>

namespace {

constexpr std::chrono::milliseconds kLookAgainAfter(100);

}  // namespace

Once::Once(Scheduler& scheduler, std::function<void()> action, Who who)
    : state_(new State{scheduler, std::move(action), who}) {}

void Once::PutOff(std::chrono::milliseconds delay) {
    if (!state_->due) Schedule(state_, delay);
}

void Once::Schedule(const std::shared_ptr<State>& state, std::chrono::milliseconds delay) {
    state->due = false;
    state->scheduler.Later(delay, [waiting = std::weak_ptr(state)] {
        if (const auto arrived = waiting.lock()) Come(arrived);
    });
    state->due = true;
}

void Once::Come(const std::shared_ptr<State>& state) {
    if (MayBegin(state->who) != Answer::Now) return Schedule(state, kLookAgainAfter);
    state->due = false;
    state->action();
}
