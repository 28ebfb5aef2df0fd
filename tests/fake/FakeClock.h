#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "platform/Clock.h"

// A clock that stands still until somebody waits or moves it. Its time zone is UTC.
class FakeClock : public ClockPort {
 public:
    FileTime Now() override { return now; }
    std::wstring DateText(FileTime time) override;
    std::chrono::milliseconds OwnWork() override { return ownWork; }
    void Pause(std::chrono::milliseconds duration) override;

    void Advance(std::chrono::milliseconds duration);

    FileTime now;
    std::chrono::milliseconds ownWork{0};
    std::vector<std::chrono::milliseconds> pauses;
    // What other programs do meanwhile.
    std::function<void()> duringPause;

    FakeClock();
};

// The file time of a date and time in UTC.
FileTime FileTimeOf(int year, int month, int day, int hour, int minute, int second);
