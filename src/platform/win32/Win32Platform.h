#pragma once

#include "platform/Platform.h"
#include "platform/win32/Win32Clipboard.h"
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32Files.h"
#include "platform/win32/Win32Memory.h"
#include "platform/win32/Win32Metafiles.h"
#include "platform/win32/Win32Settings.h"
#include "platform/win32/Win32User.h"
#include "platform/win32/Win32Windows.h"

// The machine itself. Made once at start-up, put in force by UsePlatform(&win32.platform), and kept to the
// end.
struct Win32Platform {
    Win32Platform();
    Win32Platform(const Win32Platform&) = delete;
    Win32Platform& operator=(const Win32Platform&) = delete;

    Win32Clipboard clipboard;
    Win32Memory memory;
    Win32Metafiles metafiles;
    Win32Files files;
    Win32Settings settings;
    Win32User user;
    Win32Windows windows;
    Win32Clock clock;

    Platform platform{clipboard, memory, metafiles, files, settings, user, windows, clock};
};
