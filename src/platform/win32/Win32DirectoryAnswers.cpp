#include "platform/win32/Win32DirectoryAnswers.h"

#include <windows.h>

#include <array>
#include <memory>
#include <utility>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace {

bool HasDriveLetter(const std::wstring& directory) {
    return directory.size() >= 2 && directory[1] == L':';
}

// "C:", or "\\server\share".
std::wstring RootOf(const std::wstring& directory) {
    if (HasDriveLetter(directory)) return UpperCase(directory.substr(0, 2));
    std::size_t end = 0;
    for (int separators = 0; end < directory.size(); ++end)
        if (directory[end] == L'\\' && ++separators == 4) break;
    return UpperCase(directory.substr(0, end));
}

// What the letter stands for is known without asking the drive.
bool IsOnThisMachine(const std::wstring& directory) {
    if (!HasDriveLetter(directory)) return false;
    std::array<wchar_t, MAX_PATH> device{};
    if (QueryDosDeviceW(directory.substr(0, 2).c_str(), device.data(), static_cast<DWORD>(device.size())) ==
        0)
        return false;
    return std::wstring(device.data()).starts_with(L"\\Device\\HarddiskVolume");
}

DWORD WINAPI Ask(void* parameter) noexcept {
    // An empty drive answers as well; no box of the system's is wanted for it.
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, nullptr);
    const std::unique_ptr<std::wstring> path(static_cast<std::wstring*>(parameter));
    GetFileAttributesW(path->c_str());
    return 0;
}

UniqueThread AskInThread(const std::wstring& directory) {
    auto path = std::make_unique<std::wstring>(WithLongPathPrefix(directory));
    UniqueThread thread(CreateThread(nullptr, 0, &Ask, path.get(), 0, nullptr));
    if (thread.IsSet()) (void)path.release();  // the thread's now
    return thread;
}

}  // namespace

bool Win32DirectoryAnswers::Answers(const std::wstring& directory, std::chrono::milliseconds patience) {
    if (directory.empty() || IsOnThisMachine(directory)) return true;
    const std::wstring root = RootOf(directory);
    auto asked = asking_.find(root);
    if (asked == asking_.end()) {
        UniqueThread thread = AskInThread(directory);
        if (!thread.IsSet()) return true;
        asked = asking_.emplace(root, std::move(thread)).first;
    }
    if (WaitForSingleObject(asked->second.Get(), static_cast<DWORD>(patience.count())) != WAIT_OBJECT_0)
        return false;
    asking_.erase(asked);
    return true;
}
