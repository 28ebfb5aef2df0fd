#include "engine/clipboard/modFileIO.h"

#include <algorithm>
#include <utility>

#include "platform/Platform.h"
#include "platform/Text.h"

FileHandle OpenClipFile(const std::wstring& name, bool forWrite, bool mustExist) {
    if (mustExist && !ThePlatform().files.Exists(name)) return FileHandle::None;
    return CreateClipFile(name, forWrite);
}

FileHandle CreateClipFile(const std::wstring& name, bool forWrite) {
    FilePort& files = ThePlatform().files;
    const FileHandle file = files.Open(name, forWrite ? FileUse::NewOnly : FileUse::Read);
    if (file == FileHandle::None) {
        ThePlatform().user.Tell(L"CreateFile fehlgeschlagen mit Fehlercode: " +
                                NumberText(files.LastError()));
    }
    return file;
}

void CloseClipFile(FileHandle& file) {
    const FileHandle open = std::exchange(file, FileHandle::None);
    if (open != FileHandle::None) ThePlatform().files.Close(open);
}

std::optional<std::int64_t> TellClipFile(FileHandle file) {
    return ThePlatform().files.Tell(file);
}

bool SeekClipFile(FileHandle file, std::int64_t position) {
    return ThePlatform().files.Seek(file, position);
}

std::optional<std::int64_t> RemainingInClipFile(FileHandle file) {
    const auto size = ThePlatform().files.Size(file);
    const auto position = TellClipFile(file);
    if (!size || !position) return std::nullopt;
    return std::max<std::int64_t>(0, *size - *position);
}

std::optional<std::size_t> FindByte(const void* block, std::size_t size, std::string_view bytes) {
    if (block == nullptr) return std::nullopt;
    // The library's own search for one byte leaves it to the system's, which is a third as fast.
    const std::string_view text(static_cast<const char*>(block), size);
    const auto found = std::search(text.begin(), text.end(), bytes.begin(), bytes.end());
    if (found == text.end()) return std::nullopt;
    return static_cast<std::size_t>(found - text.begin());
}
