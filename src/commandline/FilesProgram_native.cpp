#include "commandline/FilesProgram.h"
#include "platform/Text.h"
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixConsole.h"
#include "platform/posix/PosixFiles.h"

int main(int count, char** arguments) {
    PosixFiles files;
    PosixClock clock;
    PosixConsole console;
    ConsolePlatform platform(files, clock, console);
    std::vector<std::wstring> words;
    for (int i = 1; i < count; ++i)
        words.push_back(TextFromUtf8(arguments[i]));
    return RunFilesProgram(words, platform, console);
}
