#pragma once

#include "platform/Clock.h"

// Times as a German writes them, whatever the locale of the shell is.
class PosixClock : public ClockPort {
 public:
    FileTime Now() override;
    std::wstring DateText(FileTime time) override;
    std::chrono::milliseconds OwnWork() override;
    void Pause(std::chrono::milliseconds duration) override;
};
