#pragma once

#include <cstdint>
#include <string>

// What a clip is called that has no plain text to be named after: what it holds, said in a few words.

// The name that the first `count` formats of a clip data file give: "Zeichnung (SVG)", "Angebot.pdf", "3
// Dateien: Angebot.pdf ...", the text of HTML or RTF, "Bild 800 x 600". Empty when they say nothing, or the
// file cannot be read.
std::wstring NameOfContent(const std::wstring& clipFile, int count);

// True for the text of a drawing: not its letters tell what it is, but NameOfContent.
bool IsMarkup(const std::wstring& text);

// `name` with one blank for each run of them, and at most `most` characters; all of them when that is
// below 1.
std::wstring ShortName(const std::wstring& name, std::int32_t most);
