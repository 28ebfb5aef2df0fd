#pragma once

#include <string>
#include <string_view>

// How the bytes of a text stand for its characters.
enum class TextCoding {
    Utf16,
    Utf8,     // what is none stands for itself in the ANSI code page
    Ansi,     // the system's code page
    Oem,      // that of its old programs
    Guessed,  // UTF-16 where every second byte is a zero at first, UTF-8 otherwise
};

// Makes UTF-16 of the bytes of a text, which come piece by piece, cut anywhere.
class TextDecoder {
 public:
    explicit TextDecoder(TextCoding coding) : coding_(coding) {}

    // Appends what the bytes mean, together with those that waited for them.
    void Take(std::string_view bytes, std::u16string& text);
    // No more bytes come: appends what those mean that waited for others.
    void End(std::u16string& text);

 private:
    void Guess();
    std::size_t Decode(std::string_view bytes, std::u16string& text, bool last) const;

    TextCoding coding_;
    std::string waiting_;
};

// The place of the first zero at or behind `from`; the text's size when there is none.
std::size_t FirstZero(std::u16string_view text, std::size_t from);
