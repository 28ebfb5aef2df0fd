#pragma once

#include <memory>

#include "platform/Console.h"
#include "platform/Platform.h"

// The machine as a program sees it that works on files alone: there is no clipboard, no window and no store
// of settings, and the user sits at a console: what he is told goes where errors go, a line each. In force
// while it lives.
class ConsolePlatform {
 public:
    // Not owned; must live as long.
    ConsolePlatform(FilePort& files, ClockPort& clock, ConsolePort& console);
    ~ConsolePlatform();
    ConsolePlatform(const ConsolePlatform&) = delete;
    ConsolePlatform& operator=(const ConsolePlatform&) = delete;

    // Every question is answered by Yes from now on, and not put.
    void SayYes();

 private:
    struct Ports;
    std::unique_ptr<Ports> ports_;
    Platform* before_;
};
