#include "engine/flows/ContentName.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "engine/clipboard/DibLayout.h"
#include "engine/search/ClipFileReader.h"
#include "platform/FileBytes.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

using Record = ClipFileReader::Record;
using Records = std::vector<Record>;

// No name needs more of a text.
constexpr std::size_t kMostCharacters = 4096;
// The size of a picture stands in its front.
constexpr std::size_t kPictureHead = 4096;

const Record* FirstOf(const Records& records, TextForm form, bool picture = false) {
    const auto found = std::ranges::find_if(records, [&](const Record& record) {
        const bool isPicture = (record.content.kinds & kPictureContent) != 0;
        return record.content.form == form && isPicture == picture && record.size > 0;
    });
    return found != records.end() ? &*found : nullptr;
}

std::wstring WideText(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return TextFromUtf16(bytes);
}

std::wstring BeginningOf(ClipFileReader& reader, const Record& record) {
    std::u16string text;
    reader.ReadText(record, 0, [&](const ClipFileReader::Window& window) {
        text += window.text.substr(0, kMostCharacters - text.size());
        return text.size() < kMostCharacters;
    });
    return WideText(text);
}

// A line each.
std::wstring NameOfFiles(ClipFileReader& reader, const Record& record) {
    std::int64_t lines = 0;
    std::u16string text;
    reader.ReadText(record, 0, [&](const ClipFileReader::Window& window) {
        lines += std::ranges::count(window.text, u'\n');
        text += window.text.substr(0, kMostCharacters - std::min(text.size(), kMostCharacters));
        return true;
    });
    const std::wstring first = LastPartOf(WideText(text.substr(0, text.find(u'\n'))));
    return lines < 2 ? first : NumberText(lines) + L" Dateien: " + first + L" ...";
}

std::uint32_t HighestFirst(std::span<const std::uint8_t> bytes) {
    std::uint32_t number = 0;
    for (const std::uint8_t byte : bytes)
        number = (number << 8) | byte;
    return number;
}

std::wstring PictureName(std::int64_t width, std::int64_t height) {
    return L"Bild " + NumberText(width) + L" x " + NumberText(height);
}

std::wstring NameOfPicture(std::span<const std::uint8_t> head, std::size_t size) {
    constexpr std::uint32_t kPngMark = 0x89504E47;
    constexpr std::size_t kPngHead = 24;
    if (head.size() >= kPngHead && HighestFirst(head.first(4)) == kPngMark)
        return PictureName(HighestFirst(head.subspan(16, 4)), HighestFirst(head.subspan(20, 4)));
    const auto dib = CheckDibHead(head, size);
    return dib ? PictureName(dib->width, dib->height) : std::wstring();
}

std::wstring NameOfPicture(const std::wstring& clipFile, const Record& record) {
    FilePort& files = ThePlatform().files;
    const FileOwner file(files.Open(clipFile, FileUse::Read));
    if (!file.IsSet() || !files.Seek(file.Get(), record.offset)) return {};
    std::vector<std::uint8_t> head(std::min(static_cast<std::size_t>(record.size), kPictureHead));
    const auto count = static_cast<std::uint32_t>(head.size());
    if (files.Read(file.Get(), head.data(), count) != count) return {};
    return NameOfPicture(head, static_cast<std::size_t>(record.size));
}

std::wstring NameOf(ClipFileReader& reader, const Records& records, const std::wstring& clipFile) {
    if (FirstOf(records, TextForm::Html, true) != nullptr) return L"Zeichnung (SVG)";
    if (const Record* const list = FirstOf(records, TextForm::Files)) return NameOfFiles(reader, *list);
    for (const TextForm form : {TextForm::Html, TextForm::RichText}) {
        const Record* const record = FirstOf(records, form);
        const std::wstring text = record != nullptr ? Trim(BeginningOf(reader, *record)) : std::wstring();
        if (!text.empty()) return text;
    }
    // Some kinds of pictures do not say their size at their beginning.
    for (const Record& record : records) {
        if ((record.content.kinds & kPictureContent) == 0) continue;
        const std::wstring name = NameOfPicture(clipFile, record);
        if (!name.empty()) return name;
    }
    return {};
}

}  // namespace

std::wstring NameOfContent(const std::wstring& clipFile, int count) {
    ClipFileReader reader(ThePlatform().files);
    if (!reader.Open(clipFile)) return {};
    const Records records = reader.ReadRecords(count);
    return WithoutLettersBeyondAnsi(NameOf(reader, records, clipFile));
}

bool IsMarkup(const std::wstring& text) {
    return text.starts_with(L"<?xml") || text.starts_with(L"<svg");
}

std::wstring ShortName(const std::wstring& name, std::int32_t most) {
    std::wstring shorter;
    for (const wchar_t c : name)
        if (c != L' ' || (!shorter.empty() && shorter.back() != L' ')) shorter += c;
    if (most > 0) shorter.resize(std::min(shorter.size(), static_cast<std::size_t>(most)));
    return Trim(shorter);
}
