#include "windows/controls/WindowsHelpPages.h"

#include <windows.h>

#include "windows/controls/ShellOpen.h"

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
    return OpenByShell(nullptr, file);
}
