#include "fake/SynthesisedFormats.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/ByteBuffer.h"
#include "platform/Text.h"

namespace {

constexpr FormatNumber kText = 1, kBitmap = 2, kOemText = 7, kDib = 8, kUnicode = 13, kLocale = 16,
                       kDibV5 = 17;
constexpr std::uint32_t kGermanLocale = 0x0407;
constexpr std::uint32_t kDibV5HeaderSize = 124;

// For each format its sources, the best first.
struct Rule {
    FormatNumber format;
    std::array<FormatNumber, 2> sources;
};
constexpr std::array<Rule, 6> kRules = {{{kText, {kUnicode, kOemText}},
                                         {kOemText, {kUnicode, kText}},
                                         {kUnicode, {kText, kOemText}},
                                         {kBitmap, {kDib, kDibV5}},
                                         {kDib, {kBitmap, kDibV5}},
                                         {kDibV5, {kDib, kBitmap}}}};

// The letters in which German texts differ between the two code pages.
constexpr std::wstring_view kOemLetters = L"äöüÄÖÜß";
constexpr std::string_view kOemBytes = "\x84\x94\x81\x8E\x99\x9A\xE1";

std::string OemFromText(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t c : text) {
        const std::size_t letter = kOemLetters.find(c);
        if (letter != std::wstring_view::npos)
            bytes += kOemBytes[letter];
        else
            bytes += c < 0x80 ? static_cast<char>(c) : '?';
    }
    return bytes;
}

std::wstring TextFromOem(std::string_view bytes) {
    std::wstring text;
    for (const char byte : bytes) {
        const std::size_t letter = kOemBytes.find(byte);
        if (letter != std::string_view::npos)
            text += kOemLetters[letter];
        else
            text += static_cast<std::uint8_t>(byte) < 0x80 ? static_cast<wchar_t>(byte) : L'?';
    }
    return text;
}

std::wstring TextFromUnicode(const std::string& bytes) {
    ByteReader reader(bytes.data(), bytes.size() / 2 * 2);
    std::wstring text;
    while (reader.Remaining() > 0)
        text += static_cast<wchar_t>(reader.UInt16());
    return text;
}

std::wstring TextOf(FormatNumber format, const std::string& bytes) {
    std::wstring text = format == kUnicode ? TextFromUnicode(bytes)
                        : format == kText  ? TextFromAnsi(bytes)
                                           : TextFromOem(bytes);
    return text.substr(0, text.find(L'\0'));
}

std::string StringOf(const ByteWriter& writer) {
    return std::string(writer.Image().begin(), writer.Image().end());
}

// A picture's bytes with a header of another size; what the new header has more is zero.
std::string WithHeaderSize(const std::string& picture, std::uint32_t headerSize) {
    if (picture.size() < 4) return picture;
    const std::size_t oldSize = ByteReader(picture.data(), picture.size()).UInt32();
    if (oldSize > picture.size()) return picture;
    std::string header = picture.substr(4, oldSize - 4);
    header.resize(headerSize - 4);
    ByteWriter writer;
    writer.UInt32(headerSize);
    writer.Bytes(header.data(), header.size());
    writer.Bytes(picture.data() + oldSize, picture.size() - oldSize);
    return StringOf(writer);
}

}  // namespace

std::vector<SynthesisedFormat> SynthesisedFormatsOf(const std::vector<FormatNumber>& formats) {
    const auto there = [&](FormatNumber format) {
        return std::find(formats.begin(), formats.end(), format) != formats.end();
    };
    std::vector<SynthesisedFormat> made;
    if ((there(kText) || there(kOemText) || there(kUnicode)) && !there(kLocale))
        made.push_back({kLocale, kLocale});
    for (const Rule& rule : kRules) {
        if (there(rule.format)) continue;
        const auto source = std::find_if(rule.sources.begin(), rule.sources.end(), there);
        if (source != rule.sources.end()) made.push_back({rule.format, *source});
    }
    return made;
}

std::string SynthesisedBytes(FormatNumber format, FormatNumber madeFrom, const std::string& bytes) {
    ByteWriter writer;
    switch (format) {
        case kLocale:
            writer.UInt32(kGermanLocale);
            break;
        case kUnicode:
            for (const wchar_t c : TextOf(madeFrom, bytes))
                writer.UInt16(static_cast<std::uint16_t>(c));
            writer.UInt16(0);
            break;
        case kText:
            return AnsiFromText(TextOf(madeFrom, bytes)) + '\0';
        case kOemText:
            return OemFromText(TextOf(madeFrom, bytes)) + '\0';
        case kDib:
            return WithHeaderSize(bytes, 40);
        case kDibV5:
            return WithHeaderSize(bytes, kDibV5HeaderSize);
        default:
            break;
    }
    return StringOf(writer);
}
