#include "fake/FakeClock.h"

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
    const std::chrono::seconds since(static_cast<std::chrono::seconds::rep>(time / kStepsPerSecond));
    const auto days = std::chrono::floor<std::chrono::days>(since);
    const std::chrono::year_month_day date(kFirstDay + days);
    const std::chrono::hh_mm_ss clock(since - days);
    wchar_t text[64];
    std::swprintf(text, 64, L"%02u.%02u.%04d %02d:%02d:%02d", static_cast<unsigned>(date.day()),
                  static_cast<unsigned>(date.month()), static_cast<int>(date.year()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text;
}

void FakeClock::Pause(std::chrono::milliseconds duration) {
    pauses.push_back(duration);
    Advance(duration);
}

void FakeClock::Advance(std::chrono::milliseconds duration) {
    now += static_cast<FileTime>(duration.count()) * kStepsPerMillisecond;
}
