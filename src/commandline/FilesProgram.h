#pragma once

#include <string>
#include <vector>

#include "commandline/ConsolePlatform.h"

// The program nxclip-files: looks into the files of profiles, checks and mends them, and takes clips out and
// in. `words` are the arguments behind the program's name. The result is the exit code: 0 for success, 1 when
// something was found that speaks against it (damage, no hit), 2 when the command could not be carried out.
int RunFilesProgram(const std::vector<std::wstring>& words, ConsolePlatform& platform, ConsolePort& console);
