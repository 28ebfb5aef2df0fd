#pragma once

#include <optional>
#include <string>

// What a program in a console says and hears.
class ConsolePort {
 public:
    virtual ~ConsolePort() = default;

    // Goes to the output as it is, be that a screen, a file or another program.
    virtual void Write(const std::wstring& text) = 0;
    virtual void WriteError(const std::wstring& text) = 0;
    // True when somebody reads along on a screen: progress is shown to them alone.
    virtual bool IsWatched() = 0;
    // The next line of the input without its end; none at its end.
    virtual std::optional<std::wstring> ReadLine() = 0;
    // The full path of what the user names from the directory in which the program was started.
    virtual std::wstring FullPath(const std::wstring& named) = 0;
};
