#include "engine/flows/RestAfterWork.h"

#include <algorithm>

namespace {
constexpr FileTime kPerMillisecond = 10'000;
}

void RestAfterWork::WorkDone(FileTime began, FileTime ended) {
    const FileTime worked = ended > began ? ended - began : 0;
    begins_ = ended;
    ends_ = ended + std::max(worked, static_cast<FileTime>(shortest_.count()) * kPerMillisecond);
}

std::chrono::milliseconds RestAfterWork::Left(FileTime now) const {
    // A clock that was set back ends the rest: it must not last for hours.
    if (now < begins_ || now >= ends_) return std::chrono::milliseconds(0);
    return std::chrono::milliseconds((ends_ - now + kPerMillisecond - 1) / kPerMillisecond);
}
