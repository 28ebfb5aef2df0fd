#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "engine/clipboard/CFormat.h"

// What the preview reads of a clip: no more than it shows.

// The preview shows no more of a text than this, in bytes: what lies behind it nobody reads in a box.
inline constexpr std::size_t kMostPreviewBytes = 1 << 20;
// What fills any box, and what follows at a time: a box takes in a megabyte in nearly half a second.
inline constexpr std::size_t kFirstPreviewBytes = 16 << 10;
inline constexpr std::size_t kNextPreviewBytes = 64 << 10;

// Bytes of a format's data. Not filled with zeros first, unlike a vector's.
struct PreviewBytes {
    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t size = 0;
    std::span<const std::uint8_t> All() const { return {bytes.get(), size}; }
};

// Reads a format's data from the clip's file, from `offset` on and at most `most` bytes. None when there is
// no data, when the file cannot be read, and when it does not hold what the format's header says.
std::optional<PreviewBytes> ReadPreview(const std::wstring& clipFile, const CFormat& format,
                                        std::size_t offset, std::size_t most);

// The text of "Text" or "Unicode" as a text box wants it, every line end as CR LF, piece by piece: up to the
// first zero, cut at kMostPreviewBytes with "[...]" in a line of its own.
class PreviewTextReader {
 public:
    PreviewTextReader() = default;
    // The format is not owned and must live as long as it is read.
    PreviewTextReader(std::wstring clipFile, const CFormat& format)
        : clipFile_(std::move(clipFile)), format_(&format) {}

    // True while there is more to come.
    bool HasMore() const { return format_ != nullptr; }
    // The next piece of some `size` bytes; none when it cannot be read, and nothing comes after that.
    std::optional<std::wstring> Next(std::size_t size);

 private:
    std::wstring clipFile_;
    const CFormat* format_ = nullptr;
    std::size_t offset_ = 0;
};

// Rich text up to its first zero.
std::span<const std::uint8_t> RichTextOf(std::span<const std::uint8_t> bytes);
