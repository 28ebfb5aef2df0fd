#include "platform/FileBytes.h"

#include <limits>

#include "platform/Platform.h"
#include "platform/RuntimeError.h"

namespace {

constexpr std::size_t kMostPerCall = std::numeric_limits<std::uint32_t>::max();

[[noreturn]] void ThrowFileError(const std::wstring& path) {
    throw FileErrorOf(ThePlatform().files.LastError(), path);
}

}  // namespace

void ClosedByFilePort::Close(FileHandle file) {
    ThePlatform().files.Close(file);
}

std::vector<std::uint8_t> ReadWholeFile(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    const FileOwner file(files.Open(path, FileUse::Read));
    if (!file.IsSet()) ThrowFileError(path);
    const std::optional<std::int64_t> size = files.Size(file.Get());
    if (!size) ThrowFileError(path);
    if (static_cast<std::uint64_t>(*size) > kMostPerCall) throw RuntimeError(ErrorNumber::OutOfMemory);

    std::vector<std::uint8_t> bytes;
    try {
        bytes.resize(static_cast<std::size_t>(*size));
    } catch (const std::exception&) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    const auto read = files.Read(file.Get(), bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    if (!read) ThrowFileError(path);
    // Taken for the whole file, its beginning would be saved as if the rest had never been.
    if (*read != bytes.size()) throw RuntimeError(ErrorNumber::FileTooShort);
    return bytes;
}
