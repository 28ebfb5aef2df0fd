#pragma once

#include <chrono>

#include "platform/Clock.h"

// Leaves time to others: after a piece of work comes a rest as long as the work took, within bounds.
class RestAfterWork {
 public:
    RestAfterWork(std::chrono::milliseconds shortest, std::chrono::milliseconds longest)
        : shortest_(shortest), longest_(longest) {}

    // `worked` is the time that the work itself took, without what was waited for.
    void WorkDone(std::chrono::milliseconds worked, FileTime ended);
    // How long the rest still lasts; 0 when it is over.
    std::chrono::milliseconds Left(FileTime now) const;

 private:
    std::chrono::milliseconds shortest_, longest_;
    FileTime begins_ = 0;
    FileTime ends_ = 0;
};
