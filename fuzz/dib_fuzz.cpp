// A bitmap that nobody vouches for: whatever passes the check is drawn here as the system would draw it, and
// must read nothing but the block and write nothing but the picture.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Require.h"
#include "engine/clipboard/DibLayout.h"

namespace {

constexpr std::uint32_t kRle4 = 2;

// A picture that follows run-length coding as the system does, without asking whether it may.
class Canvas {
 public:
    explicit Canvas(const DibLayout& dib)
        : width_(dib.width),
          dots_(static_cast<std::size_t>(dib.width) * dib.height),
          four_(dib.compression == kRle4) {}

    void Draw(std::span<const std::uint8_t> runs) {
        std::size_t at = 0;
        while (at + 2 <= runs.size()) {
            const std::uint8_t count = runs[at++];
            const std::uint8_t code = runs[at++];
            if (count > 0) {
                Put(count);
            } else if (code == 0) {
                x_ = 0;
                ++y_;
            } else if (code == 1) {
                return;
            } else if (code == 2) {
                Require(at + 2 <= runs.size());
                x_ += runs[at++];
                y_ += runs[at++];
            } else {
                const std::size_t bytes = four_ ? (code + 1u) / 2 : code;
                at += bytes + bytes % 2;
                Require(at <= runs.size());
                Put(code);
            }
        }
    }

 private:
    void Put(int count) {
        for (; count > 0; --count, ++x_) {
            Require(x_ < width_ && y_ * width_ + x_ < dots_.size());
            dots_[y_ * width_ + x_] = true;
        }
    }

    std::size_t width_;
    std::vector<bool> dots_;
    bool four_;
    std::size_t x_ = 0;
    std::size_t y_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto dib = CheckDib({data, size});
    if (!dib) return 0;
    Require(dib->width >= 1 && dib->height >= 1);
    Require(std::int64_t{dib->width} * dib->height <= kMostDibPixels);
    Require(dib->pixelOffset >= 12 && dib->pixelOffset <= size && dib->pixelBytes <= size - dib->pixelOffset);
    if (dib->compression == 1 || dib->compression == kRle4) {
        if (std::int64_t{dib->width} * dib->height > 1'000'000) return 0;
        Canvas(*dib).Draw({data + dib->pixelOffset, dib->pixelBytes});
    } else {
        const std::uint64_t bitsOfALine =
            std::uint64_t{static_cast<std::uint32_t>(dib->width)} * dib->bitCount;
        Require(dib->pixelBytes * 8 >= bitsOfALine * dib->height);
    }
    return 0;
}
