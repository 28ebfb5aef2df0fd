#pragma once

#include "platform/Console.h"

// The terminal and what stands in its place, in UTF-8.
class PosixConsole : public ConsolePort {
 public:
    void Write(const std::wstring& text) override;
    void WriteError(const std::wstring& text) override;
    bool IsWatched() override;
    std::optional<std::wstring> ReadLine() override;
    std::wstring FullPath(const std::wstring& named) override;
};
