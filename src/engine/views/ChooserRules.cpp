#include "engine/views/ChooserRules.h"

#include <algorithm>

#include "platform/NamePattern.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

bool IsDirectoryName(const std::wstring& name) {
    return !name.empty() && name != L"." && name != L".." &&
           name.find_first_of(L"\\/:*?\"<>|") == std::wstring::npos;
}

}  // namespace

std::wstring DriveOf(const std::wstring& path) {
    if (!path.starts_with(L"\\\\")) return LowerCase(path.substr(0, 2));
    const std::size_t share = path.find(L'\\', 2);
    return path.substr(0, share == std::wstring::npos ? share : path.find(L'\\', share + 1));
}

std::vector<std::wstring> DirectoriesDownTo(const std::wstring& path) {
    const std::size_t rootLength = DriveOf(path).size() + 1;
    std::vector<std::wstring> directories = {WithoutBackslash(path)};
    while (directories.front().size() > rootLength)
        directories.insert(directories.begin(), DirectoryAbove(directories.front()));
    return directories;
}

std::wstring DriveAfterChange(const std::wstring& drive, bool readable) {
    if (readable) return drive;
    ThePlatform().user.Tell(L"Laufwerk " + drive + L" nicht verfügbar !!!", L"Laufwerksfehler");
    return L"c:";
}

std::wstring TypedPath(const std::wstring& text) {
    std::wstring path = Trim(text);
    if (path.size() > 1 && path.starts_with(L'"') && path.ends_with(L'"'))
        path = Trim(path.substr(1, path.size() - 2));
    std::replace(path.begin(), path.end(), L'/', L'\\');
    if (path.size() == 2 && path.back() == L':') path += L'\\';
    if (IsFullPath(path)) return path;
    TellNoSuchPath(path);
    return {};
}

void TellNoSuchPath(const std::wstring& path) {
    ThePlatform().user.Inform(L"\"" + path + L"\" gibt es nicht, oder es ist nicht erreichbar.");
}

bool MatchesPattern(const std::wstring& name, const std::wstring& patterns) {
    std::size_t begin = 0;
    while (begin <= patterns.size()) {
        const std::size_t end = std::min(patterns.find(L';', begin), patterns.size());
        const std::wstring pattern = Trim(patterns.substr(begin, end - begin));
        if (!pattern.empty() && MatchesNamePattern(name, pattern)) return true;
        begin = end + 1;
    }
    return false;
}

std::wstring MakeDirectoryIn(const std::wstring& parent, const std::wstring& name) {
    const std::wstring directory = JoinDirectory(parent, Trim(name));
    UserPort& user = ThePlatform().user;
    if (!IsDirectoryName(Trim(name))) {
        user.Tell(L"Der Name \"" + name + L"\" ist für ein Verzeichnis nicht erlaubt !!!",
                  L"Verzeichnisfehler");
        return {};
    }
    FilePort& files = ThePlatform().files;
    if (files.MakeDirectory(directory)) return directory;
    user.Tell(FileErrorOf(files.LastError(), directory).Description(), L"Verzeichnisfehler");
    return {};
}
