#include "platform/Paths.h"

namespace {

bool IsDriveRoot(const std::wstring& path) {
    return path.size() == 3 && path[1] == L':' && path[2] == L'\\';
}

}  // namespace

std::wstring JoinDirectory(const std::wstring& directory, const std::wstring& name) {
    return WithBackslash(directory) + name;
}

std::wstring DirectoryOf(const std::wstring& path) {
    const std::size_t separator = path.rfind(L'\\');
    if (separator == std::wstring::npos) return {};
    const std::wstring withSeparator = path.substr(0, separator + 1);
    return IsDriveRoot(withSeparator) ? withSeparator : path.substr(0, separator);
}

std::wstring DirectoryAbove(const std::wstring& directory) {
    const std::wstring itself = WithoutBackslash(directory);
    return IsDriveRoot(itself) ? itself : DirectoryOf(itself);
}

std::wstring LastPartOf(const std::wstring& path) {
    return path.substr(path.rfind(L'\\') + 1);
}

std::wstring WithBackslash(const std::wstring& directory) {
    return directory.ends_with(L'\\') ? directory : directory + L'\\';
}

std::wstring WithoutBackslash(const std::wstring& directory) {
    const bool cut = directory.ends_with(L'\\') && !IsDriveRoot(directory);
    return cut ? directory.substr(0, directory.size() - 1) : directory;
}

bool IsFullPath(const std::wstring& path) {
    if (path.starts_with(L"\\\\")) return path.size() > 2 && path[2] != L'\\';
    const auto isLetter = [](wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); };
    return path.size() >= 3 && isLetter(path[0]) && path[1] == L':' && path[2] == L'\\';
}

std::wstring WithLongPathPrefix(const std::wstring& fullPath) {
    // A directory must leave room for a short file name behind it, and the end counts as well.
    constexpr std::size_t kLongestPlainPath = 260 - 14;
    if (fullPath.size() <= kLongestPlainPath || fullPath.starts_with(L"\\\\?\\") ||
        fullPath.starts_with(L"\\\\.\\"))
        return fullPath;
    if (fullPath.starts_with(L"\\\\")) return L"\\\\?\\UNC" + fullPath.substr(1);
    return L"\\\\?\\" + fullPath;
}
