#include "platform/win32/SystemPath.h"

#include <windows.h>

#include "platform/Paths.h"

std::wstring SystemPath(const std::wstring& path) {
    if (path.empty()) return path;
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (needed == 0) return path;
    std::wstring full(needed, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), needed, full.data(), nullptr));
    return WithLongPathPrefix(full);
}
