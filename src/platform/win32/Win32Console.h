#pragma once

#include "platform/Console.h"

// The console of the process in its own letters; a file or another program in its place gets UTF-8.
class Win32Console : public ConsolePort {
 public:
    void Write(const std::wstring& text) override;
    void WriteError(const std::wstring& text) override;
    bool IsWatched() override;
    std::optional<std::wstring> ReadLine() override;
    std::wstring FullPath(const std::wstring& named) override;
};
