#pragma once

#include <gtest/gtest.h>

#include <string>

#include "fake/FakePlatform.h"
#include "fake/ProcessState.h"

// Included by every test that runs over the fakes: what a FakePlatform finds out of order at its end fails
// the running test.

inline void ReportAsTestFailure(const std::string& problem) {
    ADD_FAILURE() << "out of order: " << problem;
}

inline const bool kLedgerReportsAsTestFailures = [] {
    FakePlatform::SetReport(ReportAsTestFailure);
    return true;
}();

// A test with one fake machine in force from its start to its end, and nothing process-wide left of others.
class FakePlatformTest : public testing::Test {
 protected:
    FakePlatform fake;
    ProcessStateScope processState;
};
