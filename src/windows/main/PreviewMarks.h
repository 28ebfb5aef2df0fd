#pragma once

#include <windows.h>

#include <optional>

#include "engine/search/WordSearch.h"

// As a marker pen does; black is read on it whatever the system's colours are.
inline constexpr COLORREF kMarkColour = RGB(255, 224, 112);
inline constexpr COLORREF kMarkedTextColour = RGB(0, 0, 0);

// Marks the words of a search in the lines that a text box shows. Draws over what the box has drawn, after
// whatever makes it draw.
class PreviewMarks {
 public:
    void SetBox(HWND textBox) { box_ = textBox; }
    // None for no marks.
    void SetWords(std::optional<WordSearch> words);
    // A message on its way to the box; the result when it goes no further.
    std::optional<LRESULT> OnMessage(UINT message);

 private:
    void Draw();
    void DrawInLine(HDC dc, LRESULT line, const RECT& inside);

    HWND box_ = nullptr;
    std::optional<WordSearch> words_;
    bool isDue_ = false;
};

// Marks them in a rich-text box, in its text.
void MarkRichText(HWND richTextBox, const std::wstring& text, WordSearch& words);
// A line of a text box, of a long one the beginning.
std::wstring TextOfLine(HWND box, LRESULT line);
