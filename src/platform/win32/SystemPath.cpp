#include "platform/win32/SystemPath.h"

#include <windows.h>

namespace {

// A directory's path must leave room for a short file name in it.
constexpr std::size_t kLongestPlainPath = MAX_PATH - 14;

}  // namespace

std::wstring SystemPath(const std::wstring& path) {
    if (path.empty() || path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\")) return path;
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (needed == 0) return path;
    std::wstring full(needed, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), needed, full.data(), nullptr));
    if (full.size() <= kLongestPlainPath) return full;
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}
