#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The clipboard as plain bytes, for the programs that stand for the rest of the world: they share no code
// with the program under test.

// "13" is the standard format, any other text the name of a registered one.
UINT FormatNumber(const std::wstring& numberOrName);
// A registered format's name; a standard format's number.
std::wstring FormatName(UINT format);

// The clipboard, opened for as long as this lives. Throws std::runtime_error when another program keeps it
// open.
class OpenedClipboard {
 public:
    explicit OpenedClipboard(HWND window = nullptr);
    ~OpenedClipboard() { CloseClipboard(); }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
};

// The formats in their order; the clipboard must be open.
std::vector<UINT> FormatsOnClipboard();

// The format's bytes: of an enhanced metafile its bits; of a metafile picture four 32-bit numbers (mapping
// mode, width, height, 0) and its bits; of every other format its block. None for a format that is no memory
// (bitmaps, palettes) or that the owner did not deliver. The clipboard must be open.
std::optional<std::string> ReadFormat(UINT format);

// The same, with the clipboard opened for it.
std::optional<std::string> ReadFormatNow(UINT format);

// Empties the clipboard and puts formats on it in this order, owned by a window of this program.
struct ClipboardOffer {
    UINT format;
    std::string bytes;
};
void PutFormats(const std::vector<ClipboardOffer>& offers);

// The way back: what SetClipboardData takes. Null, with the last error, when the bytes are no such thing.
HANDLE MakeClipboardData(UINT format, std::string_view bytes);
