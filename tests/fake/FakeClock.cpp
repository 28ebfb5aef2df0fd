#include "fake/FakeClock.h"

#include <ctime>
#include <cwchar>
#include <limits>

namespace {

constexpr FileTime kStepsPerMillisecond = 10'000;
constexpr FileTime kStepsPerSecond = 1000 * kStepsPerMillisecond;
constexpr std::chrono::sys_days kFirstDay = std::chrono::year(1601) / 1 / 1;

}  // namespace

FileTime FileTimeOf(int year, int month, int day, int hour, int minute, int second) {
    const std::chrono::sys_days date = std::chrono::year(year) / month / day;
    const std::chrono::seconds since = date - kFirstDay + std::chrono::hours(hour) +
                                       std::chrono::minutes(minute) + std::chrono::seconds(second);
    return static_cast<FileTime>(since.count()) * kStepsPerSecond;
}

FakeClock::FakeClock() : now(FileTimeOf(1999, 11, 15, 13, 10, 0)) {}

std::wstring FakeClock::DateText(FileTime time) {
    if (time > static_cast<FileTime>(std::numeric_limits<std::int64_t>::max())) return {};
    const auto sinceFirstDay = std::chrono::seconds(static_cast<std::int64_t>(time / kStepsPerSecond));
    const auto seconds = static_cast<std::time_t>((kFirstDay + sinceFirstDay).time_since_epoch().count());
    wchar_t text[64];
    return {text, std::wcsftime(text, 64, L"%d.%m.%Y %H:%M:%S", std::gmtime(&seconds))};
}

void FakeClock::Pause(std::chrono::milliseconds duration) {
    pauses.push_back(duration);
    Advance(duration);
    if (duringPause) duringPause();
}

void FakeClock::Advance(std::chrono::milliseconds duration) {
    now += static_cast<FileTime>(duration.count()) * kStepsPerMillisecond;
}
