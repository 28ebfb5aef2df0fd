#include "engine/process/modMain.h"

#include <exception>

#include "platform/Busy.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Text.h"

std::wstring AppPath;
std::wstring FormatSetFile;
bool DebugMode = false;
bool FirstStartPending = false;
bool StartedByWindows = false;
bool DiagnosticsOpen = false;
bool RequestTrace = false;

bool ModalDialogOpen() noexcept {
    return Is(Busy::Dialog);
}

std::wstring AddBackslash(const std::wstring& path) {
    return WithBackslash(UpperCase(Trim(path)));
}

bool FileExists(const std::wstring& path) {
    try {
        return ThePlatform().files.Exists(path);
    } catch (const std::exception&) {
        return false;
    }
}

void SetTopless(WindowHandle window, bool onTop) {
    if (!ThePlatform().windows.SetAlwaysOnTop(window, onTop)) ThePlatform().user.Tell(L"SetTopless failed");
}
