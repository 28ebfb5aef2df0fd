#include "fake/Failures.h"

#include <utility>

void Failures::Start(Plan plan, int n, int m) {
    plan_ = plan;
    callsLeft_ = n;
    callsToSecond_ = m;
    fired_ = false;
}

void Failures::FailNone() {
    plan_ = Plan::None;
    callsToSecond_ = 0;
    dead_ = false;
}

int Failures::Calls(Operation operation) const {
    const auto found = calls_.find(operation);
    return found == calls_.end() ? 0 : found->second;
}

bool Failures::Strikes(Operation operation) {
    ++calls_[operation];
    const bool ofAny = plan_ == Plan::OneOfAny || plan_ == Plan::Kill;
    const bool meant = ofAny || (plan_ != Plan::None && operation == planned_);
    if (!meant) return false;
    if (plan_ == Plan::Kill) {
        dead_ = fired_;
        if (!dead_ && --callsLeft_ > 0) return false;
    } else if (plan_ != Plan::AllOfAKind) {
        if (callsLeft_ <= 0 || --callsLeft_ > 0) return false;
        callsLeft_ = std::exchange(callsToSecond_, 0);
    }
    fired_ = true;
    return true;
}
