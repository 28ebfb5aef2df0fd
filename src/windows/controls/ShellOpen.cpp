#include "windows/controls/ShellOpen.h"

// The shell needs <windows.h> in front of it.
#include <shellapi.h>

#include "platform/win32/LateFunction.h"

bool OpenByShell(HWND owner, const std::wstring& file) {
    static const auto execute = LateFunction<decltype(&ShellExecuteW)>(L"shell32.dll", "ShellExecuteW");
    if (execute == nullptr) return false;
    // A result up to 32 is an error by the call's own rule.
    const HINSTANCE opened = execute(owner, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(opened) > 32;
}
