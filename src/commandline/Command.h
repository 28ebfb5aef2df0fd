#pragma once

#include <string>
#include <vector>

#include "commandline/Arguments.h"
#include "commandline/ConsolePlatform.h"

// What a command has at hand.
struct CommandContext {
    const Arguments& arguments;
    ConsolePlatform& platform;
    ConsolePort& console;
};

// One command of the program. It returns the exit code and throws CommandError.
struct Command {
    const wchar_t* name;
    const wchar_t* usage;    // what stands behind the name
    const wchar_t* summary;  // a line
    const wchar_t* help;     // what is to be known besides
    std::size_t leastValues;
    std::size_t mostValues;
    std::vector<OptionRow> options;
    int (*run)(const CommandContext& context);
};

inline constexpr OptionRow kDirectoryOption = {L"--directory", L"-d", true};
inline constexpr OptionRow kOutputOption = {L"--output", L"-o", true};
