#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "engine/clipboard/CFormat.h"

// Bytes of a format's data. Not filled with zeros first, unlike a vector's.
struct PreviewBytes {
    // The bytes are none when there is no memory for them.
    explicit PreviewBytes(std::size_t count = 0);
    std::span<const std::uint8_t> All() const { return {bytes.get(), size}; }

    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t size;
};

// The data of one format in a clip's file, of which the preview reads no more than it shows. The file is open
// only while a part is read: it can be moved or deleted at any time.
class PreviewData {
 public:
    PreviewData() = default;
    PreviewData(std::wstring clipFile, const CFormat& format);

    std::size_t Size() const { return size_; }
    // The bytes from `offset` on, at most `most`. None when there is no data, when the file cannot be read,
    // and when it does not hold what the format's header says.
    std::optional<PreviewBytes> Read(std::size_t offset, std::size_t most) const;
    // Fills `place` with the bytes from `offset` on; false when that cannot be done.
    bool ReadInto(std::span<std::uint8_t> place, std::size_t offset) const;

 private:
    std::wstring clipFile_;
    std::int64_t place_ = 0;  // in the file
    std::size_t size_ = 0;
};
