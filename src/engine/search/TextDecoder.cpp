#include "engine/search/TextDecoder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "platform/Text.h"

namespace {

constexpr unsigned kUtf8CodePage = 65001;
// What is looked at to guess a coding.
constexpr std::size_t kGuessedFrom = 16;
// The most bytes of an unfinished character, in a code page with several bytes a character.
constexpr std::size_t kMostWaiting = 64;

bool IsPlain(char byte) {
    return static_cast<signed char>(byte) >= 0;
}

void AppendPlain(std::string_view bytes, std::u16string& text) {
    const std::size_t before = text.size();
    text.resize(before + bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i)
        text[before + i] = static_cast<unsigned char>(bytes[i]);
}

std::size_t PlainAtFront(std::string_view bytes) {
    constexpr std::size_t kBlock = 64;
    std::size_t count = 0;
    for (; bytes.size() - count >= kBlock; count += kBlock) {
        unsigned char all = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            all = static_cast<unsigned char>(all | static_cast<unsigned char>(bytes[count + i]));
        if (all >= 0x80) break;
    }
    while (count < bytes.size() && IsPlain(bytes[count]))
        ++count;
    return count;
}

// A code page of the system as far as single bytes go.
struct CodePage {
    unsigned number;
    bool singleBytes = true;
    std::array<char16_t, 256> units{};

    explicit CodePage(unsigned codePage) : number(codePage) {
        for (unsigned byte = 0; byte < units.size(); ++byte) {
            // A first byte of two would take the second one.
            const char pair[2] = {static_cast<char>(byte), 'A'};
            const std::u16string both = Utf16FromText(TextFromCodePage(codePage, {pair, 2}));
            singleBytes = singleBytes && both.size() == 2 && both[1] == u'A';
            units[byte] = both.empty() ? u'\xFFFD' : both[0];
        }
    }
};

const CodePage& AnsiPage() {
    static const CodePage page(AnsiCodePage());
    return page;
}

const CodePage& OemPage() {
    static const CodePage page(OemCodePage());
    return page;
}

std::size_t DecodeUtf16(std::string_view bytes, std::u16string& text) {
    const std::size_t count = bytes.size() / 2;
    const std::size_t before = text.size();
    text.resize(before + count);
    std::memcpy(text.data() + before, bytes.data(), 2 * count);
    return 2 * count;
}

// Up to the last byte that surely is no part of a longer character.
std::size_t DecodeLongCharacters(const CodePage& page, std::string_view bytes, std::u16string& text,
                                 bool last) {
    std::size_t end = bytes.size();
    if (!last) {
        while (end > 0 && static_cast<unsigned char>(bytes[end - 1]) >= 0x40)
            --end;
        if (bytes.size() - end > kMostWaiting) end = bytes.size();
    }
    text += Utf16FromText(TextFromCodePage(page.number, bytes.substr(0, end)));
    return end;
}

std::size_t DecodeCodePage(const CodePage& page, std::string_view bytes, std::u16string& text, bool last) {
    if (!page.singleBytes) return DecodeLongCharacters(page, bytes, text, last);
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t plain = PlainAtFront(bytes.substr(i));
        AppendPlain(bytes.substr(i, plain), text);
        i += plain;
        for (; i < bytes.size() && !IsPlain(bytes[i]); ++i)
            text += page.units[static_cast<unsigned char>(bytes[i])];
    }
    return bytes.size();
}

// One character that is not plain, from several bytes; 0 when it is cut off, and the byte itself by the ANSI
// code page when it is none.
std::size_t DecodeOneUtf8(std::string_view bytes, std::u16string& text, bool last) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned lead = byteAt(0);
    const std::size_t size = lead >= 0xC2 && lead < 0xE0   ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
    std::size_t whole = 1;
    while (whole < size && whole < bytes.size() && (byteAt(whole) & 0xC0) == 0x80)
        ++whole;
    if (size != 0 && whole < size && whole == bytes.size() && !last) return 0;
    std::uint32_t code = 0;
    if (size != 0 && whole == size) {
        code = lead & (0x7Fu >> size);
        for (std::size_t i = 1; i < size; ++i)
            code = code << 6 | (byteAt(i) & 0x3F);
    }
    const bool tooLong = (size == 3 && code < 0x800) || (size == 4 && code < 0x10000);
    const bool isHalf = code >= 0xD800 && code < 0xE000;
    if (size == 0 || whole < size || tooLong || isHalf || code > 0x10FFFF) {
        text += AnsiPage().units[lead];
        return 1;
    }
    if (code >= 0x10000) {
        text += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
        text += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    } else {
        text += static_cast<char16_t>(code);
    }
    return size;
}

std::size_t DecodeUtf8(std::string_view bytes, std::u16string& text, bool last) {
    std::size_t i = 0;
    while (i < bytes.size()) {
        const std::size_t plain = PlainAtFront(bytes.substr(i));
        AppendPlain(bytes.substr(i, plain), text);
        i += plain;
        if (i == bytes.size()) break;
        const std::size_t taken = DecodeOneUtf8(bytes.substr(i), text, last);
        if (taken == 0) break;
        i += taken;
    }
    return i;
}

bool LooksLikeUtf16(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return true;
    std::size_t zeros = 0;
    for (std::size_t i = 1; i < bytes.size(); i += 2)
        zeros += bytes[i] == '\0' && bytes[i - 1] != '\0' ? 1 : 0;
    return bytes.size() >= 2 && zeros > bytes.size() / 4;
}

}  // namespace

std::size_t FirstZero(std::u16string_view text, std::size_t from) {
    constexpr std::size_t kBlock = 64;
    for (; text.size() - from >= kBlock; from += kBlock) {
        std::uint16_t any = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            any = static_cast<std::uint16_t>(any | (text[from + i] == 0 ? 0xFFFF : 0));
        if (any != 0) break;
    }
    return std::min(text.find(u'\0', from), text.size());
}

void TextDecoder::Guess() {
    coding_ = LooksLikeUtf16(waiting_) ? TextCoding::Utf16 : TextCoding::Utf8;
}

std::size_t TextDecoder::Decode(std::string_view bytes, std::u16string& text, bool last) const {
    switch (coding_) {
        case TextCoding::Utf16:
            return DecodeUtf16(bytes, text);
        case TextCoding::Ansi:
            if (AnsiPage().number == kUtf8CodePage) return DecodeUtf8(bytes, text, last);
            return DecodeCodePage(AnsiPage(), bytes, text, last);
        case TextCoding::Oem:
            return DecodeCodePage(OemPage(), bytes, text, last);
        default:
            return DecodeUtf8(bytes, text, last);
    }
}

void TextDecoder::Take(std::string_view bytes, std::u16string& text) {
    if (!waiting_.empty() || coding_ == TextCoding::Guessed) {
        // As few as complete what waits: the many behind them need not be copied. The guess looks at the same
        // bytes however they come.
        const std::size_t taken = coding_ == TextCoding::Guessed ? waiting_.size() : 0;
        const std::size_t few = std::min(bytes.size(), kGuessedFrom - taken);
        waiting_ += bytes.substr(0, few);
        bytes.remove_prefix(few);
        if (coding_ == TextCoding::Guessed) {
            if (waiting_.size() < kGuessedFrom) return;
            Guess();
        }
        waiting_.erase(0, Decode(waiting_, text, false));
        if (bytes.empty()) return;
        if (!waiting_.empty()) {
            waiting_ += bytes;
            waiting_.erase(0, Decode(waiting_, text, false));
            return;
        }
    }
    waiting_ = bytes.substr(Decode(bytes, text, false));
}

void TextDecoder::End(std::u16string& text) {
    if (coding_ == TextCoding::Guessed) Guess();
    Decode(waiting_, text, true);
    waiting_.clear();
}
