#include "engine/views/PreviewPicture.h"

#include <algorithm>
#include <utility>

namespace {

// The largest header with as many colours as there can be of use.
constexpr std::size_t kUsualHead = kMostDibHeader + 4 * 256;

}  // namespace

PreviewPicture::PreviewPicture(const DibLayout& layout, const PreviewBytes& head)
    : layout_(layout), header_(head.bytes.get(), head.bytes.get() + layout.pixelOffset) {}

std::optional<PreviewPicture> PreviewPicture::In(PreviewData data) {
    auto head = data.Read(0, kUsualHead);
    const auto layout = head ? CheckDibHead(head->All(), data.Size()) : std::nullopt;
    if (!layout) return std::nullopt;
    if (IsRunLengthCoded(*layout)) {
        auto whole = data.Read(0, data.Size());
        return whole ? Of(std::move(*whole)) : std::nullopt;
    }
    if (head->size < layout->pixelOffset) head = data.Read(0, layout->pixelOffset);
    if (!head) return std::nullopt;
    PreviewPicture picture(*layout, *head);
    picture.data_ = std::move(data);
    return picture;
}

std::optional<PreviewPicture> PreviewPicture::Of(PreviewBytes dib) {
    const auto layout = CheckDib(dib.All());
    if (!layout) return std::nullopt;
    PreviewPicture picture(*layout, dib);
    picture.held_ = std::move(dib);
    return picture;
}

bool PreviewPicture::Need(std::int32_t first, std::int32_t count) {
    if (Rows(first, count) != nullptr) return true;
    const Range wanted = RangeOf(first, count);
    const std::size_t keptBegin = std::clamp(Held().begin, wanted.begin, wanted.end);
    const std::size_t keptEnd = std::clamp(Held().end, keptBegin, wanted.end);
    PreviewBytes rows(wanted.end - wanted.begin);
    if (rows.size < wanted.end - wanted.begin) return false;
    const auto fill = [&](std::size_t from, std::size_t to) {
        return from == to || data_.ReadInto({&rows.bytes[from - wanted.begin], to - from}, from);
    };
    if (!fill(wanted.begin, keptBegin) || !fill(keptEnd, wanted.end)) return false;
    if (keptBegin < keptEnd)
        std::copy_n(&held_.bytes[keptBegin - heldFrom_], keptEnd - keptBegin,
                    &rows.bytes[keptBegin - wanted.begin]);
    held_ = std::move(rows);
    heldFrom_ = wanted.begin;
    return true;
}

const std::uint8_t* PreviewPicture::Rows(std::int32_t first, std::int32_t count) const {
    const auto [begin, end] = RangeOf(first, count);
    return begin >= Held().begin && end <= Held().end ? &held_.bytes[begin - heldFrom_] : nullptr;
}

void PreviewPicture::LetGo() {
    if (data_.Size() > 0) held_ = PreviewBytes();
}

PreviewPicture::Range PreviewPicture::RangeOf(std::int32_t first, std::int32_t count) const {
    const std::int32_t before = layout_.topDown ? first : layout_.height - first - count;
    const std::size_t begin = layout_.pixelOffset + static_cast<std::size_t>(before) * layout_.rowBytes;
    return {begin, begin + static_cast<std::size_t>(count) * layout_.rowBytes};
}
