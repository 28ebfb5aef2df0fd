#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <memory>

// Runs its action once after a while, when no other message waits. It belongs to no window and bears no
// number that could meet another one's.
class Timer {
 public:
    explicit Timer(std::function<void()> action);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // From now on, or once more from the beginning. The action may start the timer again, and may end it.
    // False when the system has no timer left.
    bool Start(std::chrono::milliseconds delay = std::chrono::milliseconds(0));
    void Stop();

 private:
    static void CALLBACK Due(HWND window, UINT message, UINT_PTR number, DWORD time);

    std::shared_ptr<const std::function<void()>> action_;
    UINT_PTR number_ = 0;
};
