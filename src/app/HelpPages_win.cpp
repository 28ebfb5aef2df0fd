#include "app/HelpPages_win.h"

#include <windows.h>
// Needs <windows.h> in front of it.
#include <shellapi.h>

namespace {

// Where Windows has no help viewer any more, a stub of some kilobytes stands in its place, which only says
// so. The viewer itself has hundreds of them.
constexpr DWORD kLargestStub = 64 * 1024;

}  // namespace

bool WindowsHelpPages::ViewerWorks() {
    wchar_t viewer[MAX_PATH];
    const DWORD length = SearchPathW(nullptr, L"winhlp32.exe", nullptr, MAX_PATH, viewer, nullptr);
    if (length == 0 || length >= MAX_PATH) return false;
    WIN32_FILE_ATTRIBUTE_DATA facts;
    return GetFileAttributesExW(viewer, GetFileExInfoStandard, &facts) &&
           (facts.nFileSizeHigh != 0 || facts.nFileSizeLow > kLargestStub);
}

bool WindowsHelpPages::OpenPage(const std::wstring& file) {
    const HINSTANCE result = ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    // By its documentation everything above 32 is success; the handle is none.
    return reinterpret_cast<INT_PTR>(result) > 32;
}
