#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "engine/clipboard/CFormat.h"
#include "engine/search/VisibleText.h"
#include "engine/views/PreviewData.h"

// What the preview reads of a text: no more than it shows.

// The preview shows no more of a text than this, in bytes: what lies behind it nobody reads in a box.
inline constexpr std::size_t kMostPreviewBytes = 1 << 20;
// What fills any box, and what follows at a time: a box takes in a megabyte in nearly half a second.
inline constexpr std::size_t kFirstPreviewBytes = 16 << 10;
inline constexpr std::size_t kNextPreviewBytes = 32 << 10;

// The text of "Text" or "Unicode" as a text box wants it, every line end as CR LF, piece by piece: up to the
// first zero, cut at kMostPreviewBytes with "[...]" in a line of its own. Of any other format that which a
// user sees of it.
class PreviewTextReader {
 public:
    PreviewTextReader() = default;
    PreviewTextReader(std::wstring clipFile, const CFormat& format);
    // From a later character on, behind "[...]" in a line of its own; of "Text" and "Unicode" only.
    PreviewTextReader(std::wstring clipFile, const CFormat& format, std::size_t begin);

    // True while there is more to come.
    bool HasMore() const { return hasMore_; }
    // The next piece of some `size` bytes; none when it cannot be read, and nothing comes after that.
    std::optional<std::wstring> Next(std::size_t size);

 private:
    std::optional<std::wstring> NextVisible(std::size_t size);

    PreviewData data_;
    std::shared_ptr<VisibleText> visible_;  // of what is no plain text
    std::size_t characterSize_ = 1;
    std::size_t begin_ = 0;  // in bytes, as the next one
    std::size_t offset_ = 0;
    bool hasMore_ = false;
};

// Rich text up to its first zero.
std::span<const std::uint8_t> RichTextOf(std::span<const std::uint8_t> bytes);
