#include "engine/flows/SameContent.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "engine/profiles/modProfile.h"
#include "platform/FileBytes.h"
#include "platform/Platform.h"

namespace {

constexpr std::int64_t kPiece = 1 << 16;

// Numbers are given in the order of capture, and never twice.
const Node* NewestClip(const Node& container) {
    const Node* newest = nullptr;
    for (const Node* child = container.FirstChild(); child != nullptr; child = child->Next()) {
        if (ClipNumberOf(child) > ClipNumberOf(newest)) newest = child;
    }
    return newest;
}

bool HoldTheSame(const std::wstring& path, const std::wstring& otherPath) {
    FilePort& files = ThePlatform().files;
    const FileOwner file(files.Open(path, FileUse::Read));
    const FileOwner other(files.Open(otherPath, FileUse::Read));
    if (!file.IsSet() || !other.IsSet()) return false;
    const auto size = files.Size(file.Get());
    if (!size || files.Size(other.Get()) != size) return false;

    std::vector<char> bytes(kPiece), otherBytes(kPiece);
    for (std::int64_t rest = *size; rest > 0; rest -= kPiece) {
        const auto piece = static_cast<std::uint32_t>(std::min(rest, kPiece));
        if (files.Read(file.Get(), bytes.data(), piece) != piece ||
            files.Read(other.Get(), otherBytes.data(), piece) != piece ||
            std::memcmp(bytes.data(), otherBytes.data(), piece) != 0)
            return false;
    }
    return true;
}

}  // namespace

const Node* NewestClipIfSame(const Node& container, const std::wstring& clipFile) {
    const Node* const newest = NewestClip(container);
    if (newest == nullptr || !HoldTheSame(ClipFileOf(newest), clipFile)) return nullptr;
    return newest;
}
