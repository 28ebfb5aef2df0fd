#pragma once

#include <functional>
#include <string>

#include "platform/Clipboard.h"

// What a format's number alone tells: its name, its kind, and the line of the trace that names it.

// Numbers with a meaning of their own here.
inline constexpr FormatNumber kTextFormat = 1;
inline constexpr FormatNumber kBitmapFormat = 2;
inline constexpr FormatNumber kMetafilePictureFormat = 3;
inline constexpr FormatNumber kTiffFormat = 6;
inline constexpr FormatNumber kOemTextFormat = 7;
inline constexpr FormatNumber kDibFormat = 8;
inline constexpr FormatNumber kPaletteFormat = 9;
inline constexpr FormatNumber kUnicodeFormat = 13;
inline constexpr FormatNumber kEnhancedMetafileFormat = 14;
inline constexpr FormatNumber kFilesFormat = 15;
inline constexpr FormatNumber kLocaleFormat = 16;
inline constexpr FormatNumber kDibV5Format = 17;
inline constexpr FormatNumber kDisplayBitmapFormat = 130;
inline constexpr FormatNumber kDisplayMetafilePictureFormat = 131;
inline constexpr FormatNumber kDisplayEnhancedMetafileFormat = 142;
// Private formats that stand for GDI objects, to be deleted by the system.
inline constexpr FormatNumber kFirstGdiFormat = 0x300;
inline constexpr FormatNumber kLastGdiFormat = 0x3FF;

// The name of formats that have none.
inline constexpr const wchar_t* kUnknownFormatName = L"<unbekannt>";

// A standard format's name, the registered name of any other, or kUnknownFormatName. Never fails.
std::wstring FormatNameOf(FormatNumber id);
// The name that `id` is registered under now, at most 240 bytes of it; empty when it is not registered.
std::wstring RegisteredFormatName(FormatNumber id);

// True for the numbers that mean the same on every system: all below 17 (0 and negative ones included), 128
// to 131 and 142. Not 17, deliberate: a stored format 17 comes back as a format registered as "MAX".
bool IsStandardFormat(FormatNumber id);

// True for the formats that stand for a GDI object, or for a block with the handle of one, and not for data:
// they are never stored, so their data is not asked for. Asking is costly: the owner or the system draws a
// whole bitmap. A record of one, in a damaged file, is never put on the clipboard.
bool IsGdiObjectFormat(FormatNumber id);

// While set and RequestTrace (modMain.h) is on: receives a line for each step of answering a request.
extern std::function<void(const std::wstring& line)> RequestTraceSink;
void TraceRequest(const std::wstring& line);
