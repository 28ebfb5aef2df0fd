#include "windows/main/HitLineDrawing.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "windows/controls/Dpi.h"
#include "windows/main/PreviewMarks.h"

namespace {

struct Part {
    std::wstring_view text;
    bool marked;
};

int WidthOf(HDC dc, std::wstring_view text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

// The end of what stands in front of the mark, from a word on: in a narrow column the mark is what is to be
// seen.
std::wstring FrontWithin(HDC dc, std::wstring_view front, int room) {
    std::wstring shown(front);
    while (!front.empty() && WidthOf(dc, shown) > room) {
        front.remove_prefix(std::min(front.find(L' '), front.size() - 1) + 1);
        shown = L"\x2026" + std::wstring(front);
    }
    return shown;
}

// The place on the screen where the part ends.
int DrawPart(HDC dc, const RECT& cell, int left, const Part& part) {
    RECT place{left, cell.top, cell.right, cell.bottom};
    const int width = WidthOf(dc, part.text);
    if (part.marked) {
        const RECT mark{left, cell.top + 1, std::min<LONG>(left + width, cell.right), cell.bottom - 1};
        SetDCBrushColor(dc, kMarkColour);
        FillRect(dc, &mark, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    const COLORREF before = GetTextColor(dc);
    if (part.marked) SetTextColor(dc, kMarkedTextColour);
    DrawTextW(dc, part.text.data(), static_cast<int>(part.text.size()), &place,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | (part.marked ? 0u : DT_END_ELLIPSIS));
    SetTextColor(dc, before);
    return left + width;
}

}  // namespace

bool DrawHitLine(HWND list, const NMLVCUSTOMDRAW& draw, const HitList& hits) {
    const auto row = static_cast<int>(draw.nmcd.dwItemSpec);
    const HitLine* const line = hits.LineOf(row);
    if (line == nullptr || line->size == 0) return false;
    RECT cell{};
    if (!ListView_GetSubItemRect(list, row, draw.iSubItem, LVIR_LABEL, &cell)) return false;
    const HDC dc = draw.nmcd.hdc;
    const int saved = SaveDC(dc);
    const bool selected = ListView_GetItemState(list, row, LVIS_SELECTED) != 0;
    const bool focused = selected && GetFocus() == list;
    const int back = !selected ? COLOR_WINDOW : focused ? COLOR_HIGHLIGHT : COLOR_BTNFACE;
    FillRect(dc, &cell, GetSysColorBrush(back));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(focused ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(list, WM_GETFONT, 0, 0)));
    int left = cell.left + Scaled(4, DpiOfWindow(list));
    const std::wstring_view text = line->text;
    const std::wstring_view marked = text.substr(line->begin, line->size);
    const int room = cell.right - left - WidthOf(dc, marked);
    const std::wstring front = FrontWithin(dc, text.substr(0, line->begin), room);
    const std::array<Part, 3> parts{
        {{front, false}, {marked, true}, {text.substr(line->begin + line->size), false}}};
    for (const Part& part : parts)
        if (!part.text.empty() && left < cell.right) left = DrawPart(dc, cell, left, part);
    RestoreDC(dc, saved);
    return true;
}
