#include "commandline/FilesProgram.h"
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32Console.h"
#include "platform/win32/Win32Files.h"

int wmain(int count, wchar_t** arguments) {
    Win32Files files;
    Win32Clock clock;
    Win32Console console;
    ConsolePlatform platform(files, clock, console);
    return RunFilesProgram({arguments + 1, arguments + (count > 0 ? count : 1)}, platform, console);
}
