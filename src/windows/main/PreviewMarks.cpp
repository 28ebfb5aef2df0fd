#include "windows/main/PreviewMarks.h"

// The rich-text box needs <windows.h> in front of it.
#include <richedit.h>

#include <algorithm>
#include <string>
#include <utility>

#include "platform/Text.h"
#include "windows/controls/WindowFont.h"

namespace {

constexpr UINT kDrawMarks = WM_APP;
// More than anybody looks at, in one line or in one text.
constexpr int kMostMarks = 500;

bool MakesItDraw(UINT message) {
    switch (message) {
        case WM_PAINT:
        case WM_HSCROLL:
        case WM_VSCROLL:
        case WM_KEYDOWN:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case EM_SETSEL:
        case EM_LINESCROLL:
        case EM_SCROLLCARET:
            return true;
        default:
            return message == WM_MOUSEMOVE && GetCapture() != nullptr;
    }
}

// Calls `mark` for each place of a word.
template <typename Mark>
void ForEachPlace(std::u16string_view text, WordSearch& words, Mark&& mark) {
    std::size_t from = 0;
    for (int count = 0; count < kMostMarks; ++count) {
        const auto place = words.Next(text, from);
        if (!place) return;
        mark(*place);
        from = place->End();
    }
}

}  // namespace

std::wstring TextOfLine(HWND box, LRESULT line) {
    constexpr LRESULT kMostCharacters = 1000;  // more than any window is wide
    const LRESULT begin = SendMessageW(box, EM_LINEINDEX, static_cast<WPARAM>(line), 0);
    const LRESULT length = SendMessageW(box, EM_LINELENGTH, static_cast<WPARAM>(begin), 0);
    std::wstring text(static_cast<std::size_t>(std::clamp<LRESULT>(length, 2, kMostCharacters)), 0);
    text[0] = static_cast<wchar_t>(text.size());
    text.resize(static_cast<std::size_t>(
        SendMessageW(box, EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

void PreviewMarks::SetWords(std::optional<WordSearch> words) {
    const bool changes = words_.has_value() || words.has_value();
    words_ = std::move(words);
    if (changes) InvalidateRect(box_, nullptr, TRUE);
}

std::optional<LRESULT> PreviewMarks::OnMessage(UINT message) {
    if (message == kDrawMarks) {
        isDue_ = false;
        Draw();
        return 0;
    }
    if (words_ && MakesItDraw(message) && !std::exchange(isDue_, true)) PostMessageW(box_, kDrawMarks, 0, 0);
    return std::nullopt;
}

void PreviewMarks::Draw() {
    if (!words_ || !IsWindowVisible(box_)) return;
    RECT inside{};
    SendMessageW(box_, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inside));
    const WindowFont font(box_);
    IntersectClipRect(font.Dc(), inside.left, inside.top, inside.right, inside.bottom);
    const LRESULT first = SendMessageW(box_, EM_GETFIRSTVISIBLELINE, 0, 0);
    const LRESULT shown = (inside.bottom - inside.top) / std::max(font.Metrics().tmHeight, 1L) + 1;
    const LRESULT end = std::min(first + shown, SendMessageW(box_, EM_GETLINECOUNT, 0, 0));
    for (LRESULT line = first; line < end; ++line)
        DrawInLine(font.Dc(), line, inside);
}

// What is selected keeps its own colours.
void PreviewMarks::DrawInLine(HDC dc, LRESULT line, const RECT& inside) {
    const std::wstring text = TextOfLine(box_, line);
    const auto begin =
        static_cast<std::size_t>(SendMessageW(box_, EM_LINEINDEX, static_cast<WPARAM>(line), 0));
    DWORD from = 0, to = 0;
    SendMessageW(box_, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    SetBkColor(dc, kMarkColour);
    SetTextColor(dc, kMarkedTextColour);
    ForEachPlace(Utf16FromText(text), *words_, [&](TextPlace place) {
        if (begin + place.begin < to && begin + place.End() > from) return;
        const LRESULT at = SendMessageW(box_, EM_POSFROMCHAR, begin + place.begin, 0);
        const POINT point{static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
        if (at == -1 || point.x > inside.right) return;
        TabbedTextOutW(dc, point.x, point.y, text.c_str() + place.begin, static_cast<int>(place.size), 0,
                       nullptr, inside.left);
    });
}

void MarkRichText(HWND richTextBox, const std::wstring& text, WordSearch& words) {
    CHARFORMAT2W marked{};
    marked.cbSize = sizeof marked;
    marked.dwMask = CFM_BACKCOLOR | CFM_COLOR;
    marked.crBackColor = kMarkColour;
    marked.crTextColor = kMarkedTextColour;
    ForEachPlace(Utf16FromText(text), words, [&](TextPlace place) {
        CHARRANGE range{static_cast<LONG>(place.begin), static_cast<LONG>(place.End())};
        SendMessageW(richTextBox, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        SendMessageW(richTextBox, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&marked));
    });
}
