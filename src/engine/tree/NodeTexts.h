#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// A text as it is kept: as bytes of the system's ANSI code page, as it stands in files, or, where these
// cannot hold it, as characters. Good until the text is changed.
class KeptText {
 public:
    KeptText(std::string_view bytes, bool wide) : bytes_(bytes), wide_(wide) {}

    bool IsAnsi() const { return !wide_; }
    // The bytes in the code page, or those of the characters.
    std::string_view Bytes() const { return bytes_; }
    // True when the first character is this one of plain English.
    bool BeginsWith(char plain) const;
    std::wstring Text() const;
    // Into memory that is used again.
    void CopyTo(std::wstring& text) const;

 private:
    std::string_view bytes_;
    bool wide_;
};

// The text and the tag of a node, of which there are many, in one block of memory.
class NodeTexts {
 public:
    NodeTexts() = default;
    NodeTexts(std::wstring_view text, std::wstring_view tag);
    // As they stand in files.
    NodeTexts(std::string_view text, std::string_view tag);

    KeptText Text() const { return {{block_.get(), textSize_}, textIsWide_ != 0}; }
    KeptText Tag() const { return {{block_.get() + textSize_, tagSize_}, tagIsWide_ != 0}; }
    void SetText(std::wstring_view text);
    void SetTag(std::wstring_view tag);

 private:
    NodeTexts(KeptText text, KeptText tag);

    std::unique_ptr<char[]> block_;
    std::uint32_t textSize_ : 31 = 0;
    std::uint32_t textIsWide_ : 1 = 0;
    std::uint32_t tagSize_ : 31 = 0;
    std::uint32_t tagIsWide_ : 1 = 0;
};
