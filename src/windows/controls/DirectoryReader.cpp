#include "windows/controls/DirectoryReader.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>

#include "engine/views/ChooserRules.h"
#include "platform/Platform.h"
#include "platform/Text.h"
#include "platform/win32/SystemHandles.h"
#include "platform/win32/SystemPath.h"

namespace {

constexpr DWORD kMostMilliseconds = 4000;

// Shared by the reader and the one who waits: whoever is last frees it.
struct Job {
    std::wstring pattern;
    std::optional<DirectoryContent> content;
};

std::optional<DirectoryContent> ReadNow(const std::wstring& pattern) {
    WIN32_FIND_DATAW found;
    const UniqueFind search(FindFirstFileW(SystemPath(pattern).c_str(), &found));
    // The root of an empty drive has no entries at all, not even ".".
    if (!search.IsSet())
        return GetLastError() == ERROR_FILE_NOT_FOUND ? std::optional(DirectoryContent()) : std::nullopt;
    DirectoryContent content;
    do {
        const std::wstring name = found.cFileName;
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            content.files.push_back(name);
        else if (name != L"." && name != L"..")
            content.directories.push_back(name);
    } while (FindNextFileW(search.Get(), &found));
    const auto before = [](const std::wstring& a, const std::wstring& b) { return CompareNoCase(a, b) < 0; };
    std::sort(content.directories.begin(), content.directories.end(), before);
    std::sort(content.files.begin(), content.files.end(), before);
    return content;
}

DWORD WINAPI ReadInThread(void* parameter) noexcept {
    // An empty drive is an error to be told by the chooser, not a box of the system's.
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, nullptr);
    const std::unique_ptr<std::shared_ptr<Job>> job(static_cast<std::shared_ptr<Job>*>(parameter));
    try {
        (*job)->content = ReadNow((*job)->pattern);
    } catch (const std::bad_alloc&) {
        // The directory counts as not read; who waits for it says so.
    }
    return 0;
}

}  // namespace

std::optional<DirectoryContent> ReadDirectory(const std::wstring& directory) {
    const HourglassScope hourglass(ThePlatform().user);
    const auto job = std::make_shared<Job>();
    job->pattern = JoinDirectory(directory, L"*");
    auto forThread = std::make_unique<std::shared_ptr<Job>>(job);
    const UniqueThread thread(CreateThread(nullptr, 0, &ReadInThread, forThread.get(), 0, nullptr));
    if (!thread.IsSet()) return std::nullopt;
    (void)forThread.release();  // the thread's now
    const bool finished = WaitForSingleObject(thread.Get(), kMostMilliseconds) == WAIT_OBJECT_0;
    return finished ? job->content : std::nullopt;
}
