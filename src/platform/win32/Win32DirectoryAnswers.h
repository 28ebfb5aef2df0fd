#pragma once

#include <map>
#include <string>

#include "platform/DirectoryAnswers.h"
#include "platform/win32/SystemHandles.h"

// Which drives and servers answer. Each is asked by a thread of its own, one at a time: a thread that waits
// for one that hangs can only be left to itself.
class Win32DirectoryAnswers : public DirectoryAnswersPort {
 public:
    bool Answers(const std::wstring& directory, std::chrono::milliseconds patience) override;

 private:
    std::map<std::wstring, UniqueThread> asking_;  // by drive, or server and share, in upper case
};
