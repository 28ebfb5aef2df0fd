#pragma once

#include "platform/Clock.h"

class Win32Clock : public ClockPort {
 public:
    FileTime Now() override;
    std::wstring DateText(FileTime time) override;
    std::chrono::milliseconds OwnWork() override;
    void Pause(std::chrono::milliseconds duration) override;
};
