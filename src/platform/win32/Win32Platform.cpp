#include "platform/win32/Win32Platform.h"

#include <windows.h>

Win32Platform::Win32Platform() {
    // A drive without a disk is an error like any other, not a question that the system puts to the user.
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}
