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

}  // namespace

std::vector<std::byte> DialogTemplateInSystemFont(int dialogTemplate) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(dialogTemplate), RT_DIALOG);
    if (resource == nullptr) return {};
    const auto* const start = static_cast<const std::byte*>(LockResource(LoadResource(module, resource)));
    const std::byte* const end = start + SizeofResource(module, resource);

    const std::byte* font = SkipNameOrNumber(start + kHeadBytes);  // menu
    font = SkipNameOrNumber(font);                                 // window class
    font = SkipNameOrNumber(font);                                 // title

    std::uint32_t style;
    std::memcpy(&style, start + kStyleOffset, sizeof style);
    const std::byte* items = font;
    if (style & DS_SETFONT) items = SkipNameOrNumber(font + 6);  // behind size, weight, italic, character set
    while ((items - start) % 4 != 0)
        ++items;

    const UINT dpi = DpiOfSystem();
    const LOGFONTW wanted = MessageFont(dpi);
    const int points =
        MulDiv(wanted.lfHeight < 0 ? -wanted.lfHeight : wanted.lfHeight, 72, static_cast<int>(dpi));

    std::vector<std::byte> result(start, font);
    style |= DS_SETFONT;
    std::memcpy(result.data() + kStyleOffset, &style, sizeof style);
    Append(result, static_cast<std::uint16_t>(points > 0 ? points : 8));
    Append(result, static_cast<std::uint16_t>(wanted.lfWeight));
    Append(result, wanted.lfItalic);
    Append(result, wanted.lfCharSet);
    for (const wchar_t* c = wanted.lfFaceName; *c != 0; ++c)
        Append(result, *c);
    Append(result, L'\0');
    AlignToFour(result);
    result.insert(result.end(), items, end);
    return result;
}
