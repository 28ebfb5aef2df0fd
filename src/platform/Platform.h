#pragma once

#include "platform/Clipboard.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Memory.h"
#include "platform/Metafiles.h"
#include "platform/SettingsStore.h"
#include "platform/User.h"
#include "platform/Windows.h"

// All that the engine asks of the machine it runs on. Set once at start-up; a test replaces it for a scope.
struct Platform {
    ClipboardPort& clipboard;
    MemoryPort& memory;
    MetafilePort& metafiles;
    FilePort& files;
    SettingsPort& settings;
    UserPort& user;
    WindowPort& windows;
    ClockPort& clock;
};

// The platform in force. There must be one: calling this before UsePlatform ends the program.
Platform& ThePlatform();

// Puts `platform` in force and returns the one before (null at first). It must outlive its use.
Platform* UsePlatform(Platform* platform);
