#include "engine/process/modProt.h"

#include "engine/process/modMain.h"
#include "platform/FileBytes.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

std::wstring LogFile() {
    return AppPath + L"protokol.txt";
}

}  // namespace

void ResetLog() {
    FilePort& files = ThePlatform().files;
    if (!FileExists(LogFile()) || files.Remove(LogFile())) return;
    ThePlatform().user.Tell(FileErrorOf(files.LastError(), LogFile()).Description());
}

bool WriteLog(const std::wstring& message) {
    try {
        Platform& platform = ThePlatform();
        const std::wstring time = platform.clock.DateText(platform.clock.Now());
        const std::string line = AnsiFromText(time + L": " + message + L"\r\n");
        const FileOwner file(platform.files.Open(LogFile(), FileUse::Append));
        if (file.IsSet()) {
            platform.files.Write(file.Get(), line.data(), static_cast<std::uint32_t>(line.size()));
        }
    } catch (const std::exception&) {
        // A log that cannot be written must never disturb what it logs.
    }
    return true;
}

void LogDebug(const std::wstring& message) {
    if (DebugMode) WriteLog(message);
}
