#include "windows/controls/DialogTemplate.h"

#include <cstdint>
#include <cstring>

#include "windows/controls/Dpi.h"
#include "windows/controls/SystemFont.h"

namespace {

// The fixed head of an extended template: version, signature, help id, both styles, item count and the
// rectangle.
constexpr std::size_t kHeadBytes = 26;
constexpr std::size_t kStyleOffset = 12;
constexpr std::size_t kSizeOffset = 22;

std::uint16_t WordAt(const std::byte* at) {
    std::uint16_t word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Behind a field that is a number (0xFFFF and the number), empty, or a zero-terminated text.
const std::byte* SkipNameOrNumber(const std::byte* at) {
    if (WordAt(at) == 0xFFFF) return at + 4;
    while (WordAt(at) != 0)
        at += 2;
    return at + 2;
}

template <typename Value>
void Append(std::vector<std::byte>& bytes, Value value) {
    const auto* from = reinterpret_cast<const std::byte*>(&value);
    bytes.insert(bytes.end(), from, from + sizeof value);
}

void AlignToFour(std::vector<std::byte>& bytes) {
    while (bytes.size() % 4 != 0)
        bytes.push_back(std::byte{0});
}

// What a template's head says about its window; lengths in dialog units.
struct Shape {
    std::uint32_t style;
    std::int16_t width;
    std::int16_t height;
};

Shape ShapeOf(const std::byte* head) {
    Shape shape{};
    std::memcpy(&shape.style, head + kStyleOffset, sizeof shape.style);
    std::memcpy(&shape.width, head + kSizeOffset, sizeof shape.width);
    std::memcpy(&shape.height, head + kSizeOffset + sizeof shape.width, sizeof shape.height);
    return shape;
}

int PointsOf(const LOGFONTW& font, UINT dpi) {
    const LONG height = font.lfHeight < 0 ? -font.lfHeight : font.lfHeight;
    return MulDiv(height, 72, static_cast<int>(dpi));
}

// What a template says of its font.
void AppendFont(std::vector<std::byte>& bytes, const LOGFONTW& font, UINT dpi) {
    const int points = PointsOf(font, dpi);
    Append(bytes, static_cast<std::uint16_t>(points > 0 ? points : 8));
    Append(bytes, static_cast<std::uint16_t>(font.lfWeight));
    Append(bytes, font.lfItalic);
    Append(bytes, font.lfCharSet);
    for (const wchar_t* c = font.lfFaceName; *c != 0; ++c)
        Append(bytes, *c);
    Append(bytes, L'\0');
}

INT_PTR CALLBACK NothingToDo(HWND, UINT, WPARAM, LPARAM) noexcept {
    return FALSE;
}

// The pixels of four by eight dialog units in the font, on the monitor of `owner`. A dialog without controls
// is asked, which is never shown: the system does not say how it measures.
SIZE CharacterOf(const LOGFONTW& font, UINT dpi, HWND owner) {
    constexpr std::uint16_t kExtended[] = {1, 0xFFFF};
    constexpr std::uint32_t kStyle = DS_SETFONT | WS_POPUP;
    std::vector<std::byte> bytes(kHeadBytes + 3 * sizeof(std::uint16_t));  // no menu, no class, no title
    std::memcpy(bytes.data(), kExtended, sizeof kExtended);
    std::memcpy(bytes.data() + kStyleOffset, &kStyle, sizeof kStyle);
    AppendFont(bytes, font, dpi);
    AlignToFour(bytes);
    RECT character{0, 0, 4, 8};
    const HWND dialog = CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                                   reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), owner,
                                                   &NothingToDo, 0);
    MapDialogRect(dialog, &character);
    DestroyWindow(dialog);
    return {character.right, character.bottom};
}

bool Fits(const Shape& shape, const SIZE& character, UINT dpi, const RECT& work) {
    const int frame = 2 * SystemMetricForDpi(SM_CXFIXEDFRAME, dpi);
    const int width = MulDiv(shape.width, character.cx, 4) + frame;
    const int height = MulDiv(shape.height, character.cy, 8) + frame + SystemMetricForDpi(SM_CYCAPTION, dpi);
    return width <= work.right - work.left && height <= work.bottom - work.top;
}

// The message font, smaller by as many points as the dialog needs to be seen whole, but still to be read.
LOGFONTW FontFor(const Shape& shape, HWND owner, UINT dpi) {
    constexpr int kSmallestPixels = 10;
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
    LOGFONTW font = MessageFont(dpi);
    while (!Fits(shape, CharacterOf(font, dpi, owner), dpi, monitor.rcWork)) {
        const int pixels = MulDiv(PointsOf(font, dpi) - 1, static_cast<int>(dpi), 72);
        if (pixels < kSmallestPixels) break;
        font.lfHeight = -pixels;
    }
    return font;
}

LOGFONTW FontOf(HWND window) {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font;
}

}  // namespace

std::vector<std::byte> DialogTemplateInSystemFont(int dialogTemplate, HWND owner) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(dialogTemplate), RT_DIALOG);
    if (resource == nullptr) return {};
    const auto* const start = static_cast<const std::byte*>(LockResource(LoadResource(module, resource)));
    const std::byte* const end = start + SizeofResource(module, resource);

    const std::byte* font = SkipNameOrNumber(start + kHeadBytes);  // menu
    font = SkipNameOrNumber(font);                                 // window class
    font = SkipNameOrNumber(font);                                 // title

    const Shape shape = ShapeOf(start);
    std::uint32_t style = shape.style;
    const std::byte* items = font;
    if (style & DS_SETFONT) items = SkipNameOrNumber(font + 6);  // behind size, weight, italic, character set
    while ((items - start) % 4 != 0)
        ++items;

    const UINT dpi = owner != nullptr ? DpiOfWindow(owner) : DpiOfSystem();
    const LOGFONTW wanted = (style & WS_CHILD) ? FontOf(owner) : FontFor(shape, owner, dpi);

    std::vector<std::byte> result(start, font);
    style |= DS_SETFONT;
    std::memcpy(result.data() + kStyleOffset, &style, sizeof style);
    AppendFont(result, wanted, dpi);
    AlignToFour(result);
    result.insert(result.end(), items, end);
    return result;
}
