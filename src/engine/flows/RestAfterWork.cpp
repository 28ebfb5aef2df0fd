#include "engine/flows/RestAfterWork.h"

#include <algorithm>

namespace {
constexpr FileTime kPerMillisecond = 10'000;
}

void RestAfterWork::WorkDone(std::chrono::milliseconds worked, FileTime ended) {
    const std::chrono::milliseconds rest = std::clamp(worked, shortest_, longest_);
    begins_ = ended;
    ends_ = ended + static_cast<FileTime>(rest.count()) * kPerMillisecond;
}

std::chrono::milliseconds RestAfterWork::Left(FileTime now) const {
    // A clock that was set back ends the rest: it must not last for hours.
    if (now < begins_ || now >= ends_) return std::chrono::milliseconds(0);
    return std::chrono::milliseconds((ends_ - now + kPerMillisecond - 1) / kPerMillisecond);
}
