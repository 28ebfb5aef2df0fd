#pragma once

#include <chrono>
#include <string>

#include "platform/Files.h"

// The time of day, and times as text in the user's regional format.
class ClockPort {
 public:
    virtual ~ClockPort() = default;

    virtual FileTime Now() = 0;
    // Date and time in local time, such as "15.11.1999 13:10:00"; never holds an "&". Empty for a time that
    // the system cannot show.
    virtual std::wstring DateText(FileTime time) = 0;
    // The processor's time that the calling thread has used so far: what it had to wait for is not in it.
    virtual std::chrono::milliseconds OwnWork() = 0;
    // Waits; only for the short pauses between two tries at something another program holds.
    virtual void Pause(std::chrono::milliseconds duration) = 0;
};
