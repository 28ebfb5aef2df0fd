#pragma once

#include <chrono>
#include <string>

// Whether the drive or server of a directory answers at all, whatever it says: each call to one that does not
// takes as long as the network likes.
class DirectoryAnswersPort {
 public:
    virtual ~DirectoryAnswersPort() = default;

    // Waits for `patience` at most; what has not answered by then is waited for beside the program, and a
    // later call learns of the answer. Drives of this machine count as answering.
    virtual bool Answers(const std::wstring& directory, std::chrono::milliseconds patience) = 0;
};

// Asked from now on; null, as at first, when every directory is to count as answering. Not owned.
void UseDirectoryAnswers(DirectoryAnswersPort* port);
bool DirectoryAnswers(const std::wstring& directory, std::chrono::milliseconds patience);
