#pragma once

#include <string>

#include "fake/Failures.h"
#include "fake/FakeClipboard.h"
#include "fake/FakeClock.h"
#include "fake/FakeFiles.h"
#include "fake/FakeMemory.h"
#include "fake/FakeMetafiles.h"
#include "fake/FakeSettings.h"
#include "fake/FakeUser.h"
#include "fake/FakeWindows.h"
#include "fake/Ledger.h"
#include "platform/Platform.h"

// A whole machine in memory, in force while it lives. When its life ends, it reports everything that the
// program left out of order: leaks, double frees, locks, open files, an open clipboard.
class FakePlatform {
 public:
    FakePlatform();
    ~FakePlatform();
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    void FailNth(Operation operation, int n) { failures.FailNth(operation, n); }
    void FailNthOfAny(int n) { failures.FailNthOfAny(n); }
    bool Fired() const { return failures.Fired(); }

    Ledger ledger;
    Failures failures;
    FakeClock clock;
    FakeFiles files{ledger, failures, clock};
    FakeUser user{failures, files};
    FakeSettings settings{failures};
    FakeWindows windows{failures, files};
    FakeMemory memory{ledger, failures};
    FakeMetafiles metafiles{ledger, failures};
    FakeClipboard clipboard{ledger, failures, memory, metafiles, windows};

    // Receives each problem. Without one, a problem is printed and ends the program; FakePlatformTest.h makes
    // it a failure of the running test.
    using Report = void (*)(const std::string& problem);
    static void SetReport(Report report);

 private:
    Platform platform_{clipboard, memory, metafiles, files, settings, user, windows, clock};
    Platform* before_;
};
