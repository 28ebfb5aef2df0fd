#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/search/SearchQuery.h"
#include "platform/Clipboard.h"

// The text that a user sees in a format's data.

enum class TextForm : std::uint8_t { None, Utf16, Ansi, Oem, Guessed, Html, RichText, Files };

// What a format holds, by its number and its name in the code page.
struct FormatContent {
    TextForm form = TextForm::None;
    ContentKinds kinds = 0;
};
FormatContent ContentOfFormat(FormatNumber id, std::string_view name);

// Reads the data piece by piece, cut anywhere, in memory that is bounded whatever it holds.
class VisibleText {
 public:
    virtual ~VisibleText() = default;
    // For any form but None.
    static std::unique_ptr<VisibleText> Of(TextForm form);

    // Appends what is shown of the bytes.
    virtual void Take(std::string_view bytes, std::u16string& text) = 0;
    // No more bytes come.
    virtual void End(std::u16string& text) = 0;
    // Nothing of what follows is shown.
    virtual bool Ended() const = 0;
};
