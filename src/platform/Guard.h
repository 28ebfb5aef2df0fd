#pragma once

#include <utility>

// The guard at the doors through which the system calls the program: window procedures, hooks, callbacks, COM
// methods. An exception must not leave there: 32-bit Windows swallows it without running destructors, the
// 64-bit one ends the program.

// Tells the user later what the exception that is being handled says. Call it in a catch clause.
void TellEscapedException() noexcept;

// The function's result; `fallback` when it throws, and the user is told once the program is back in its
// message loop.
template <typename Result, typename Function>
Result Guarded(Result fallback, Function&& function) noexcept {
    try {
        return std::forward<Function>(function)();
    } catch (...) {
        TellEscapedException();
        return fallback;
    }
}

// The same for what gives no result.
template <typename Function>
void Guarded(Function&& function) noexcept {
    Guarded(false, [&] {
        std::forward<Function>(function)();
        return true;
    });
}
