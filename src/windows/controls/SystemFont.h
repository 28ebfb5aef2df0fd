#pragma once

#include <windows.h>

#include <memory>

// The font that the user chose for messages and dialogs, at a window's resolution (dots per inch).
LOGFONTW MessageFont(UINT dpi);

struct FontDeleter {
    using pointer = HFONT;
    void operator()(HFONT font) const { DeleteObject(font); }
};
using UniqueFont = std::unique_ptr<HFONT, FontDeleter>;

UniqueFont CreateMessageFont(UINT dpi, LONG weight = FW_NORMAL);
