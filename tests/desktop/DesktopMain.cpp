// The desktop tests' main program: GoogleTest, with a bound for every test and the screen's content in every
// failure.

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <cstdio>
#include <thread>

#include "desktop/Outline.h"
#include "desktop/Process.h"

namespace {

using Clock = std::chrono::steady_clock;

// Every wait has its own bound; these are for a test that stands still all the same.
constexpr std::chrono::seconds kTestBound{60};
constexpr std::chrono::seconds kGrace{15};

std::atomic<Clock::rep> testStarted{0};  // 0 between tests

// Ends the programs of a test that takes too long, and this one when even that does not help.
void Watch() {
    bool ended = false;
    for (;;) {
        Sleep(200);
        const Clock::rep started = testStarted;
        const auto running = Clock::now() - Clock::time_point(Clock::duration(started));
        if (started == 0 || running < kTestBound) {
            ended = false;
        } else if (!ended) {
            std::printf("the test has run for %lld seconds; its programs are ended\n%s",
                        static_cast<long long>(kTestBound.count()), ScreenOutline().c_str());
            std::fflush(stdout);
            Process::TerminateAll();
            ended = true;
        } else if (running > kTestBound + kGrace) {
            std::printf("the test still does not end\n");
            std::fflush(stdout);
            TerminateProcess(GetCurrentProcess(), 3);
        }
    }
}

class Listener : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        testStarted = Clock::now().time_since_epoch().count();
        shown_ = false;
    }
    void OnTestEnd(const testing::TestInfo&) override { testStarted = 0; }
    void OnTestPartResult(const testing::TestPartResult& result) override {
        // What was thrown brings the screen along, and the programs are gone by now.
        const bool thrown = result.file_name() == nullptr;
        if (!result.failed() || shown_ || thrown) return;
        shown_ = true;
        std::printf("%s", ScreenOutline().c_str());
        std::fflush(stdout);
    }

    bool shown_ = false;
};

}  // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    testing::UnitTest::GetInstance()->listeners().Append(new Listener);
    std::thread(Watch).detach();
    return RUN_ALL_TESTS();
}
