#include "ui/ChooserRules.h"

#include <algorithm>

#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// Both in upper case. Goes back to the last "*" only, so that a long name of many of them costs no more than
// its length for each.
bool MatchesOne(const std::wstring& name, const std::wstring& pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::wstring::npos;
    std::size_t nameAtStar = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            nameAtStar = n;
        } else if (p < pattern.size() && (pattern[p] == L'?' || pattern[p] == name[n])) {
            ++n;
            ++p;
        } else if (star != std::wstring::npos) {
            p = star + 1;
            n = ++nameAtStar;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == L'*')
        ++p;
    return p == pattern.size();
}

// "*.*" means all files, also those without a dot.
bool MeansAll(const std::wstring& pattern) {
    return pattern == L"*.*" || pattern == L"*";
}

bool IsDirectoryName(const std::wstring& name) {
    return !name.empty() && name != L"." && name != L".." &&
           name.find_first_of(L"\\/:*?\"<>|") == std::wstring::npos;
}

}  // namespace

std::wstring DriveAfterChange(const std::wstring& drive, bool readable) {
    if (readable) return drive;
    ThePlatform().user.Tell(L"Laufwerk " + drive + L" nicht verfügbar !!!", L"Laufwerksfehler");
    return L"c:";
}

bool MatchesPattern(const std::wstring& name, const std::wstring& patterns) {
    const std::wstring upperName = UpperCase(name);
    std::size_t begin = 0;
    while (begin <= patterns.size()) {
        const std::size_t end = std::min(patterns.find(L';', begin), patterns.size());
        const std::wstring pattern = UpperCase(Trim(patterns.substr(begin, end - begin)));
        if (!pattern.empty() && (MeansAll(pattern) || MatchesOne(upperName, pattern))) return true;
        begin = end + 1;
    }
    return false;
}

std::vector<std::wstring> FilesMatching(const std::wstring& directory, const std::wstring& patterns) {
    std::vector<std::wstring> matching;
    for (const std::wstring& name : ThePlatform().files.List(JoinDirectory(directory, L"*"))) {
        if (MatchesPattern(name, patterns)) matching.push_back(name);
    }
    return matching;
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
