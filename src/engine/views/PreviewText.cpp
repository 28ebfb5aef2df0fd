#include "engine/views/PreviewText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "engine/clipboard/FormatNames.h"
#include "platform/Text.h"

namespace {

// The bytes of a text as its characters: of one byte each in the code page, of two in UTF-16. A single byte
// at the end of those is none.
class Characters {
 public:
    Characters(std::span<const std::uint8_t> bytes, std::size_t size)
        : bytes_(bytes.first(bytes.size() - bytes.size() % size)), size_(size) {}

    std::size_t Count() const { return bytes_.size() / size_; }
    std::uint32_t At(std::size_t index) const {
        const std::uint8_t* const bytes = &bytes_[index * size_];
        return size_ == 1 ? bytes[0] : static_cast<std::uint32_t>(bytes[0] | bytes[1] << 8);
    }
    Characters First(std::size_t count) const { return {bytes_.first(count * size_), size_}; }
    std::size_t Bytes() const { return bytes_.size(); }
    std::wstring Text() const {
        const std::string_view bytes(reinterpret_cast<const char*>(bytes_.data()), bytes_.size());
        return size_ == 1 ? TextFromAnsi(bytes) : TextFromUtf16(bytes);
    }

 private:
    std::span<const std::uint8_t> bytes_;
    std::size_t size_;
};

Characters UpToZero(const Characters& text) {
    std::size_t count = 0;
    while (count < text.Count() && text.At(count) != 0)
        ++count;
    return text.First(count);
}

std::wstring WithBoxLineEnds(const std::wstring& text) {
    std::wstring result;
    result.reserve(text.size() + text.size() / 16);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool lineFeed = text[i] == L'\n';
        const bool loneReturn = text[i] == L'\r' && (i + 1 == text.size() || text[i + 1] != L'\n');
        if (lineFeed || loneReturn)
            result += L"\r\n";
        else if (text[i] != L'\r')
            result += text[i];
    }
    return result;
}

// Where a piece that is not the last one may end: behind a line, so that no letter and no line end is torn. A
// line longer than the piece is cut, only not in front of a line feed or of a letter's second half.
std::size_t PieceEnd(const Characters& piece) {
    const std::size_t count = piece.Count();
    for (std::size_t end = count; end > 0; --end) {
        if (piece.At(end - 1) == '\n') return end;
    }
    if (count < 2) return count;
    const std::uint32_t last = piece.At(count - 1);
    return last == '\r' || (last >= 0xD800 && last < 0xDC00) ? count - 1 : count;
}

}  // namespace

PreviewTextReader::PreviewTextReader(std::wstring clipFile, const CFormat& format)
    : data_(std::move(clipFile), format),
      characterSize_(format.FormatId == kUnicodeFormat ? 2 : 1),
      hasMore_(true) {
    if (format.FormatId != kUnicodeFormat && format.FormatId != kTextFormat)
        visible_ = VisibleText::Of(ContentOfFormat(format.FormatId, AnsiFromText(format.FormatName)).form);
}

PreviewTextReader::PreviewTextReader(std::wstring clipFile, const CFormat& format, std::size_t begin)
    : PreviewTextReader(std::move(clipFile), format) {
    if (visible_ == nullptr)
        begin_ = offset_ = std::min(begin, data_.Size() / characterSize_) * characterSize_;
}

std::optional<std::wstring> PreviewTextReader::Next(std::size_t size) {
    if (!std::exchange(hasMore_, false)) return std::nullopt;
    if (visible_ != nullptr) return NextVisible(size);
    const std::wstring cut = begin_ > 0 && offset_ == begin_ ? L"[...]\r\n" : L"";
    const std::size_t whole = data_.Size() / characterSize_ * characterSize_;
    const std::size_t most = begin_ + kMostPreviewBytes;
    const std::size_t wanted = std::min(size, most - offset_) / characterSize_ * characterSize_;
    const auto read = data_.Read(offset_, wanted);
    if (!read) return std::nullopt;
    const Characters piece(read->All(), characterSize_);
    const Characters text = UpToZero(piece);
    const std::size_t next = offset_ + read->size;
    if (text.Count() < piece.Count() || next >= whole) return cut + WithBoxLineEnds(text.Text());
    if (next == most) return cut + WithBoxLineEnds(text.Text()) + L"\r\n[...]";
    const Characters shown = text.First(PieceEnd(text));
    offset_ += shown.Bytes();
    hasMore_ = true;
    return cut + WithBoxLineEnds(shown.Text());
}

std::optional<std::wstring> PreviewTextReader::NextVisible(std::size_t size) {
    const std::size_t end = std::min(data_.Size(), kMostPreviewBytes);
    const auto read = data_.Read(offset_, std::min(size, end - offset_));
    if (!read) return std::nullopt;
    offset_ += read->size;
    std::u16string text;
    visible_->Take({reinterpret_cast<const char*>(read->bytes.get()), read->size}, text);
    hasMore_ = offset_ < end && !visible_->Ended();
    if (!hasMore_) visible_->End(text);
    const bool cut = !hasMore_ && !visible_->Ended() && end < data_.Size();
    return WithBoxLineEnds(TextFromUtf16(std::u16string_view(text))) + (cut ? L"\r\n[...]" : L"");
}

std::span<const std::uint8_t> RichTextOf(std::span<const std::uint8_t> bytes) {
    return bytes.first(static_cast<std::size_t>(std::find(bytes.begin(), bytes.end(), 0) - bytes.begin()));
}
