#pragma once

#include <chrono>

#include "platform/Clock.h"

// Keeps half of the time free: after a piece of work comes a rest as long as it was, and never shorter than a
// few screen refreshes.
class RestAfterWork {
 public:
    explicit RestAfterWork(std::chrono::milliseconds shortest) : shortest_(shortest) {}

    void WorkDone(FileTime began, FileTime ended);
    // How long the rest still lasts; 0 when it is over.
    std::chrono::milliseconds Left(FileTime now) const;

 private:
    std::chrono::milliseconds shortest_;
    FileTime begins_ = 0;
    FileTime ends_ = 0;
};
