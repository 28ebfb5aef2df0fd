#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/clipboard/DibLayout.h"
#include "engine/views/PreviewData.h"

// A device-independent bitmap that was checked: its header with the colours, and of its pixels the rows that
// are looked at, as they stand in the clip's file. Only run-length coded pixels are read at once, since no
// row of them can be found without those before it.
class PreviewPicture {
 public:
    PreviewPicture() = default;
    // None when the picture is damaged (see CheckDib) or cannot be read.
    static std::optional<PreviewPicture> In(PreviewData data);
    static std::optional<PreviewPicture> Of(PreviewBytes dib);

    const DibLayout& Layout() const { return layout_; }
    const std::vector<std::uint8_t>& Header() const { return header_; }
    // Run-length coded pixels.
    const std::uint8_t* Runs() const { return held_.bytes.get() + layout_.pixelOffset; }

    // Sees to it that these rows, counted from the picture's top, are in memory, and reads those that are
    // not; false when that fails. Rows outside of them may go.
    bool Need(std::int32_t first, std::int32_t count);
    // Where these rows begin, in the order in which they are stored; null when not all of them are there.
    const std::uint8_t* Rows(std::int32_t first, std::int32_t count) const;
    // Frees what can be read again.
    void LetGo();

 private:
    // Bytes of the data, from the first to behind the last one.
    struct Range {
        std::size_t begin;
        std::size_t end;
    };
    PreviewPicture(const DibLayout& layout, const PreviewBytes& head);
    Range RangeOf(std::int32_t first, std::int32_t count) const;
    Range Held() const { return {heldFrom_, heldFrom_ + held_.size}; }

    PreviewData data_;
    DibLayout layout_;
    std::vector<std::uint8_t> header_;
    PreviewBytes held_;
    std::size_t heldFrom_ = 0;  // in the data
};
