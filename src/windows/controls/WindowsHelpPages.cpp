#include "windows/controls/WindowsHelpPages.h"

#include <windows.h>
// Starting the browser needs <windows.h> in front of it.
#include <shellapi.h>

namespace {

// Later systems ship a stand-in of some 10 KB that only says that the viewer is gone.
constexpr DWORD kSmallestViewerBytes = 100'000;

}  // namespace

bool WindowsHelpPages::ViewerWorks() {
    wchar_t path[MAX_PATH] = L"";
    const DWORD length = SearchPathW(nullptr, L"winhlp32.exe", nullptr, MAX_PATH, path, nullptr);
    if (length == 0 || length >= MAX_PATH) return false;
    WIN32_FILE_ATTRIBUTE_DATA viewer{};
    return GetFileAttributesExW(path, GetFileExInfoStandard, &viewer) &&
           (viewer.nFileSizeHigh > 0 || viewer.nFileSizeLow >= kSmallestViewerBytes);
}

bool WindowsHelpPages::OpenPage(const std::wstring& file) {
    // A result up to 32 is an error by the call's own rule.
    return reinterpret_cast<INT_PTR>(
               ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL)) > 32;
}
