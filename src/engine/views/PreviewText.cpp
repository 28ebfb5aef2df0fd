#include "engine/views/PreviewText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "engine/clipboard/modFileIO.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

std::wstring WithBoxLineEnds(std::span<const std::uint8_t> bytes) {
    const std::wstring text =
        TextFromAnsi(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
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

// Where a piece that is not the last one may end: behind a line, so that no character and no line end is
// torn. A line longer than the piece is cut, only not in front of a line feed.
std::size_t PieceEnd(std::span<const std::uint8_t> piece) {
    const auto lineFeed = std::find(piece.rbegin(), piece.rend(), '\n');
    if (lineFeed != piece.rend()) return static_cast<std::size_t>(piece.rend() - lineFeed);
    return piece.size() > 1 && piece.back() == '\r' ? piece.size() - 1 : piece.size();
}

}  // namespace

std::optional<PreviewBytes> ReadPreview(const std::wstring& clipFile, const CFormat& format,
                                        std::size_t offset, std::size_t most) {
    if (format.DataOffset < 0 || format.DataSize < 1) return std::nullopt;
    const auto size = static_cast<std::size_t>(format.DataSize);
    const ClipFileScope file(OpenClipFile(clipFile, false, true));
    if (!file.IsOpen() || offset > size) return std::nullopt;
    const auto end = ThePlatform().files.Size(file.Handle());
    if (!end || *end < std::int64_t{format.DataOffset} + format.DataSize) return std::nullopt;
    if (!SeekClipFile(file.Handle(), format.DataOffset + static_cast<std::int64_t>(offset)))
        return std::nullopt;
    PreviewBytes read;
    read.size = std::min(size - offset, most);
    read.bytes.reset(new std::uint8_t[read.size]);
    const auto wanted = static_cast<std::uint32_t>(read.size);
    if (ThePlatform().files.Read(file.Handle(), read.bytes.get(), wanted) != wanted) return std::nullopt;
    return read;
}

std::optional<std::wstring> PreviewTextReader::Next(std::size_t size) {
    if (format_ == nullptr) return std::nullopt;
    const CFormat& format = *std::exchange(format_, nullptr);
    const std::size_t wanted = std::min(size, kMostPreviewBytes - offset_);
    const auto read = ReadPreview(clipFile_, format, offset_, wanted);
    if (!read) return std::nullopt;
    const auto text = RichTextOf(read->All());
    const std::size_t next = offset_ + read->size;
    if (text.size() < read->size || next == static_cast<std::size_t>(format.DataSize))
        return WithBoxLineEnds(text);
    if (next == kMostPreviewBytes) return WithBoxLineEnds(text) + L"\r\n[...]";
    const std::size_t end = PieceEnd(text);
    offset_ += end;
    format_ = &format;
    return WithBoxLineEnds(text.first(end));
}

std::span<const std::uint8_t> RichTextOf(std::span<const std::uint8_t> bytes) {
    return bytes.first(static_cast<std::size_t>(std::find(bytes.begin(), bytes.end(), 0) - bytes.begin()));
}
