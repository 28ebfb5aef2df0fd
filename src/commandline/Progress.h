#pragma once

#include <string>

#include "platform/Console.h"

// How far a long work has come, on one line of a screen; nothing where nobody looks.
class Progress {
 public:
    Progress(ConsolePort& console, std::wstring what);
    // Takes the line away.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Show(std::size_t done, std::size_t of);

 private:
    ConsolePort& console_;
    const std::wstring what_;
    std::size_t shownPercent_ = 0;
};
