#include "engine/views/PreviewText.h"

#include <algorithm>
#include <string_view>

#include "platform/Text.h"

std::wstring PreviewTextOf(std::span<const std::uint8_t> bytes) {
    const auto whole = RichTextOf(bytes);
    const auto shown = whole.first(std::min(whole.size(), kMostPreviewBytes));
    const std::wstring text =
        TextFromAnsi(std::string_view(reinterpret_cast<const char*>(shown.data()), shown.size()));
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool lineFeed = text[i] == L'\n';
        const bool loneReturn = text[i] == L'\r' && (i + 1 == text.size() || text[i + 1] != L'\n');
        if (lineFeed || loneReturn)
            result += L"\r\n";
        else if (text[i] != L'\r')
            result += text[i];
    }
    if (shown.size() < whole.size()) result += L"\r\n[...]";
    return result;
}

std::span<const std::uint8_t> RichTextOf(std::span<const std::uint8_t> bytes) {
    return bytes.first(static_cast<std::size_t>(std::find(bytes.begin(), bytes.end(), 0) - bytes.begin()));
}
