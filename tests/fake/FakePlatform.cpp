#include "fake/FakePlatform.h"

#include <cstdio>
#include <cstdlib>

namespace {

void PrintAndEnd(const std::string& problem) {
    std::fprintf(stderr, "out of order: %s\n", problem.c_str());
    std::abort();
}

FakePlatform::Report currentReport = PrintAndEnd;

}  // namespace

FakePlatform::FakePlatform() : before_(UsePlatform(&platform_)) {}

FakePlatform::~FakePlatform() {
    UsePlatform(before_);
    for (const std::string& problem : ledger.Problems())
        currentReport(problem);
}

void FakePlatform::SetReport(Report report) {
    currentReport = report;
}
