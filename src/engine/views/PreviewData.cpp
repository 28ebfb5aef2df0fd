#include "engine/views/PreviewData.h"

#include <algorithm>
#include <new>
#include <utility>

#include "engine/clipboard/modFileIO.h"
#include "platform/Platform.h"

PreviewBytes::PreviewBytes(std::size_t count)
    : bytes(new (std::nothrow) std::uint8_t[count]), size(bytes != nullptr ? count : 0) {}

PreviewData::PreviewData(std::wstring clipFile, const CFormat& format) : clipFile_(std::move(clipFile)) {
    if (format.DataOffset < 0 || format.DataSize < 1) return;
    place_ = format.DataOffset;
    size_ = static_cast<std::size_t>(format.DataSize);
}

std::optional<PreviewBytes> PreviewData::Read(std::size_t offset, std::size_t most) const {
    if (size_ == 0 || offset > size_) return std::nullopt;
    const std::size_t count = std::min(size_ - offset, most);
    PreviewBytes read(count);
    if (read.size < count || !ReadInto({read.bytes.get(), count}, offset)) return std::nullopt;
    return read;
}

bool PreviewData::ReadInto(std::span<std::uint8_t> place, std::size_t offset) const {
    if (offset > size_ || place.size() > size_ - offset) return false;
    const FileOwner file(OpenClipFile(clipFile_, false, true));
    if (!file.IsSet()) return false;
    FilePort& files = ThePlatform().files;
    const auto end = files.Size(file.Get());
    if (!end || *end < place_ + static_cast<std::int64_t>(size_)) return false;
    const auto count = static_cast<std::uint32_t>(place.size());
    return SeekClipFile(file.Get(), place_ + static_cast<std::int64_t>(offset)) &&
           files.Read(file.Get(), place.data(), count) == count;
}
