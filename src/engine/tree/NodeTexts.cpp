#include "engine/tree/NodeTexts.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "platform/Text.h"

namespace {

constexpr std::size_t kLongest = 0x7FFFFFFF;

// Every ANSI code page begins with the same 128 characters, and most texts consist of them.
constexpr bool IsPlain(std::uint32_t character) {
    return character < 0x80;
}

// A text on its way into a block.
struct Packed {
    std::string bytes;
    bool wide = false;

    explicit Packed(std::wstring_view text) {
        const bool plain = std::all_of(text.begin(), text.end(), [](wchar_t character) {
            return IsPlain(static_cast<std::uint32_t>(character));
        });
        wide = !plain && !FitsAnsi(text);
        if (plain)
            bytes.assign(text.begin(), text.end());
        else if (wide)
            bytes.assign(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
        else
            bytes = AnsiFromText(text);
    }
    KeptText Kept() const { return {bytes, wide}; }
};

}  // namespace

bool KeptText::BeginsWith(char plain) const {
    return wide_ ? Text().starts_with(static_cast<wchar_t>(plain)) : bytes_.starts_with(plain);
}

std::wstring KeptText::Text() const {
    std::wstring text;
    CopyTo(text);
    return text;
}

void KeptText::CopyTo(std::wstring& text) const {
    if (wide_) {
        text.resize(bytes_.size() / sizeof(wchar_t));
        std::memcpy(text.data(), bytes_.data(), bytes_.size());
        return;
    }
    text.resize(bytes_.size());
    unsigned allBits = 0;
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes_[i]);
        allBits |= byte;
        text[i] = static_cast<wchar_t>(byte);
    }
    if (!IsPlain(allBits)) text = TextFromAnsi(bytes_);
}

NodeTexts::NodeTexts(KeptText text, KeptText tag) {
    const std::size_t textSize = text.Bytes().size(), tagSize = tag.Bytes().size();
    if (textSize > kLongest || tagSize > kLongest) throw std::length_error("text");
    if (textSize + tagSize > 0) block_ = std::make_unique_for_overwrite<char[]>(textSize + tagSize);
    std::copy_n(text.Bytes().data(), textSize, block_.get());
    std::copy_n(tag.Bytes().data(), tagSize, block_.get() + textSize);
    textSize_ = textSize & kLongest;
    tagSize_ = tagSize & kLongest;
    textIsWide_ = !text.IsAnsi();
    tagIsWide_ = !tag.IsAnsi();
}

NodeTexts::NodeTexts(std::wstring_view text, std::wstring_view tag)
    : NodeTexts(Packed(text).Kept(), Packed(tag).Kept()) {}

NodeTexts::NodeTexts(std::string_view text, std::string_view tag)
    : NodeTexts(KeptText(text, false), KeptText(tag, false)) {}

void NodeTexts::SetText(std::wstring_view text) {
    *this = NodeTexts(Packed(text).Kept(), Tag());
}

void NodeTexts::SetTag(std::wstring_view tag) {
    *this = NodeTexts(Text(), Packed(tag).Kept());
}
