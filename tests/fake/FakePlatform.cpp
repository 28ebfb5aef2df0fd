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

FakePlatform::FakePlatform() : before_(UsePlatform(&platform_)) {
    // Whoever holds the clipboard, or is asked for its data, keeps every other program waiting.
    user.beforeMessage = [this](const std::wstring& text) {
        if (clipboard.IsOpen())
            ledger.Complain("the user: \"" + std::string(text.begin(), text.end()) +
                            "\" told while the clipboard is open");
    };
}

FakePlatform::~FakePlatform() {
    UsePlatform(before_);
    for (const std::string& problem : ledger.Problems())
        currentReport(problem);
}

void FakePlatform::SetReport(Report report) {
    currentReport = report;
}
