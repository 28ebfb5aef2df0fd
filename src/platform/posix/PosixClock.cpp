#include "platform/posix/PosixClock.h"

#include <ctime>
#include <thread>

#include "platform/Text.h"

namespace {

constexpr FileTime kStepsOfASecond = 10'000'000;
constexpr FileTime kSecondsTo1970 = 11'644'473'600;

}  // namespace

FileTime PosixClock::Now() {
    using namespace std::chrono;
    const auto since1970 = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    return kSecondsTo1970 * kStepsOfASecond + static_cast<FileTime>(since1970) * 10;
}

std::wstring PosixClock::DateText(FileTime time) {
    const auto seconds =
        static_cast<std::int64_t>(time / kStepsOfASecond) - static_cast<std::int64_t>(kSecondsTo1970);
    const auto since1970 = static_cast<std::time_t>(seconds);
    std::tm local{};
    char text[64];
    if (localtime_r(&since1970, &local) == nullptr ||
        std::strftime(text, sizeof text, "%d.%m.%Y %H:%M:%S", &local) == 0)
        return {};
    return TextFromAnsi(text);
}

std::chrono::milliseconds PosixClock::OwnWork() {
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::milliseconds(used.tv_nsec / 1'000'000);
}

void PosixClock::Pause(std::chrono::milliseconds duration) {
    std::this_thread::sleep_for(duration);
}
