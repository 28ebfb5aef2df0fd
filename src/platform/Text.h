#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Text inside the program is std::wstring; std::string is bytes in the system's ANSI code page. This header
// is the only crossing.

// Characters that the code page does not know become its default character.
std::string AnsiFromText(std::wstring_view text);
std::wstring TextFromAnsi(std::string_view bytes);
// Puts the bytes of AnsiFromText behind `bytes`, of plain English texts without asking the system.
void AppendAnsi(std::vector<std::uint8_t>& bytes, std::wstring_view text);
// True when nothing of `text` is lost on the way to the code page and back.
bool FitsAnsi(std::wstring_view text);

// The first letter of `text` that the code page cannot hold, whole; empty when it holds them all.
std::wstring FirstLetterBeyondAnsi(std::wstring_view text);
// Without the letters that the code page cannot hold, and with one blank where they stood between two.
std::wstring WithoutLettersBeyondAnsi(std::wstring_view text);

// UTF-16 as the clipboard has it, the lower byte first; a single byte at the end is not read.
std::wstring TextFromUtf16(std::string_view bytes);
// The same by units of 16 bits, whatever size the machine's own characters have.
std::u16string Utf16FromText(std::wstring_view text);
std::wstring TextFromUtf16(std::u16string_view units);

// Bytes in a numbered code page; in the system's where it does not know that one.
std::wstring TextFromCodePage(unsigned codePage, std::string_view bytes);
// The number of the system's ANSI code page.
unsigned AnsiCodePage();
// The code page of old programs' texts.
unsigned OemCodePage();

// UTF-8. What is no letter in it, on either side, becomes U+FFFD.
std::string Utf8FromText(std::wstring_view text);
std::wstring TextFromUtf8(std::string_view bytes);
bool IsUtf8(std::string_view bytes);

// By the rules of the user's language.
std::wstring UpperCase(std::wstring_view text);
std::wstring LowerCase(std::wstring_view text);
// Without regard to case: below 0 when `a` sorts before `b` in the user's language, 0 only when they differ
// in nothing but case.
int CompareNoCase(std::wstring_view a, std::wstring_view b);
// True when UpperCase(text) begins with UpperCase(front). Makes no copies.
bool BeginsWithNoCase(std::wstring_view text, std::wstring_view front);

// Without accents and other marks, and ligatures as the letters that they stand for: "Straße" is "Strasse",
// "über" is "uber". Letters that are no others with something added stay. Zeros stay where they are.
std::wstring PlainLetters(std::wstring_view text);

// Text without blanks at both ends.
std::wstring Trim(std::wstring_view text);

// Whole decimal numbers, with a sign and blanks around them; none when the text is no such number or does not
// fit.
std::optional<std::int32_t> ParseInt32(std::wstring_view text);
std::optional<std::int16_t> ParseInt16(std::wstring_view text);
std::wstring NumberText(std::int64_t number);
