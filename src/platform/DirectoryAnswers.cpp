#include "platform/DirectoryAnswers.h"

namespace {

DirectoryAnswersPort* inUse = nullptr;

}  // namespace

void UseDirectoryAnswers(DirectoryAnswersPort* port) {
    inUse = port;
}

bool DirectoryAnswers(const std::wstring& directory, std::chrono::milliseconds patience) {
    return inUse == nullptr || inUse->Answers(directory, patience);
}
