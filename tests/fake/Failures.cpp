#include "fake/Failures.h"

#include <utility>

void Failures::FailNth(Operation operation, int n) {
    plan_ = Plan::OneOfAKind;
    planned_ = operation;
    callsLeft_ = n;
    fired_ = false;
}

void Failures::FailNthOfAny(int n) {
    plan_ = Plan::OneOfAny;
    callsLeft_ = n;
    fired_ = false;
}

void Failures::FailAlways(Operation operation) {
    plan_ = Plan::AllOfAKind;
    planned_ = operation;
    fired_ = false;
}

void Failures::KillInNthOfAny(int n) {
    plan_ = Plan::Kill;
    callsLeft_ = n;
    fired_ = false;
}

void Failures::FailPairOfAny(int n, int m) {
    FailNthOfAny(n);
    callsToSecond_ = m;
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
