#include "fake/Failures.h"

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

void Failures::FailNone() {
    plan_ = Plan::None;
}

int Failures::Calls(Operation operation) const {
    const auto found = calls_.find(operation);
    return found == calls_.end() ? 0 : found->second;
}

bool Failures::Strikes(Operation operation) {
    ++calls_[operation];
    const bool meant = plan_ == Plan::OneOfAny || (plan_ != Plan::None && operation == planned_);
    if (!meant) return false;
    if (plan_ != Plan::AllOfAKind) {
        if (callsLeft_ <= 0 || --callsLeft_ > 0) return false;
    }
    fired_ = true;
    return true;
}
