#pragma once

#include <windows.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>

// Waiting for another program: always for a condition, always with a bound. A bound that passes is an error
// which says what was waited for and what the screen held at that moment.

inline constexpr std::chrono::milliseconds kPollPause{5};
inline constexpr std::chrono::milliseconds kBound{10000};

class DriverError : public std::runtime_error {
 public:
    // `what` says what went wrong; the outline of all windows is added here.
    explicit DriverError(std::string_view what);
};

// Waits a moment. Messages to this program's own windows are answered meanwhile: the owner of the clipboard
// is told, and waited for, when another program empties it.
void Pause();

// Programs whose unexpected end makes every further wait pointless; see Process.
bool WatchedProcessesRun(std::string& whatEnded);

// Calls `condition` until its result counts as true and returns that result.
template <class Condition>
auto WaitFor(std::string_view what, Condition condition, std::chrono::milliseconds bound = kBound) {
    const auto end = std::chrono::steady_clock::now() + bound;
    for (;;) {
        // Asked before the condition: what the program did last, it did before it ended.
        std::string ended;
        const bool running = WatchedProcessesRun(ended);
        if (auto result = condition()) return result;
        if (!running) throw DriverError("waiting for " + std::string(what) + ": " + ended);
        if (std::chrono::steady_clock::now() >= end) {
            throw DriverError("waited " + std::to_string(bound.count()) + " ms in vain for " +
                              std::string(what));
        }
        Pause();
    }
}
