#pragma once

#include <memory>

#include "platform/Console.h"
#include "platform/Platform.h"

// The machine as a program sees it that works on files alone: there is no clipboard, no window and no store
// of settings, and the user sits at a console. In force while it lives.
class ConsolePlatform {
 public:
    // Not owned; must live as long.
    ConsolePlatform(FilePort& files, ClockPort& clock, ConsolePort& console);
    ~ConsolePlatform();
    ConsolePlatform(const ConsolePlatform&) = delete;
    ConsolePlatform& operator=(const ConsolePlatform&) = delete;

    // What the user is told goes where errors go, a line each. While this is off they are told nothing: the
    // caller knows better.
    void SetTells(bool tells);
    // Every question is answered by Yes from now on, and not put.
    void SayYes();

 private:
    struct Ports;
    std::unique_ptr<Ports> ports_;
    Platform* before_;
};
