#include "commandline/Progress.h"

#include <utility>

#include "platform/Text.h"

Progress::Progress(ConsolePort& console, std::wstring what) : console_(console), what_(std::move(what)) {}

Progress::~Progress() {
    if (shownPercent_ > 0) console_.WriteError(L"\r" + std::wstring(what_.size() + 6, L' ') + L"\r");
}

void Progress::Show(std::size_t done, std::size_t of) {
    constexpr std::size_t kWorthIt = 100;  // fewer are done at once
    if (of < kWorthIt || !console_.IsWatched()) return;
    const std::size_t percent = done * 100 / of;
    if (percent == shownPercent_) return;
    shownPercent_ = percent;
    console_.WriteError(L"\r" + what_ + L" " + NumberText(static_cast<std::int64_t>(percent)) + L" %");
}
