#include "desktop/ScratchDirectory.h"

#include <windows.h>

ScratchDirectory::ScratchDirectory() {
    static int count = 0;
    path_ = std::filesystem::temp_directory_path() /
            (L"nxclip-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path OwnDirectory() {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path();
}
