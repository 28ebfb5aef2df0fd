#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "engine/clipboard/CClipBoard.h"
#include "engine/clipboard/CFormats.h"
#include "platform/Clipboard.h"
#include "platform/Handles.h"

// Names of formats, the marker that tags what this program puts on the clipboard, and the formats that are
// announced there but not rendered yet. The viewer chain: modViewerHook.h.

// Numbers with a meaning of their own here.
inline constexpr FormatNumber kTextFormat = 1;
inline constexpr FormatNumber kBitmapFormat = 2;
inline constexpr FormatNumber kMetafilePictureFormat = 3;
inline constexpr FormatNumber kDibFormat = 8;
inline constexpr FormatNumber kPaletteFormat = 9;
inline constexpr FormatNumber kEnhancedMetafileFormat = 14;
inline constexpr FormatNumber kDisplayEnhancedMetafileFormat = 142;

// The name of formats that have none.
inline constexpr const wchar_t* kUnknownFormatName = L"<unbekannt>";

// A standard format's name, the registered name of any other, or kUnknownFormatName. Never fails.
std::wstring FormatNameOf(FormatNumber id);
// The name that `id` is registered under now, at most 240 bytes of it; empty when it is not registered.
std::wstring RegisteredFormatName(FormatNumber id);

// True for the numbers that mean the same on every system: all below 17 (0 and negative ones included), 128
// to 131 and 142. Not 17, deliberate: a stored format 17 comes back as a format registered as "MAX".
bool IsStandardFormat(FormatNumber id);

// True for the formats that stand for a GDI object, not a memory block: they have no size and are never
// stored, so their data need not be asked for. Asking is dear: the owner or the system draws a whole bitmap.
bool IsGdiObjectFormat(FormatNumber id);

// The private format "NXClip" that tags what this program put on the clipboard; 0 before RegisterOwnFormat.
extern FormatNumber OwnMarkerFormat;
inline constexpr const char* kOwnMarkerName = "NXClip";

// At start-up: registers the marker format.
void RegisterOwnFormat();
// Puts the marker on the open clipboard: 4 bytes, the number 1. Does nothing when there is no memory for it.
void PutOwnMarker();
// True when the content of the clipboard was put there by this program.
bool HoldsOwnMarker();

// The clip that was announced on the clipboard last: the headers of its formats (or none) and the full path
// of its clip data file. They answer later requests until the next restore replaces them.
extern std::shared_ptr<CFormats> RenderFormats;
extern std::wstring RenderFileName;
// From now on no request is answered.
void ClearPendingRenderSet();

// The main window, which owns the clipboard after a restore: what was put into the viewer chain last. None
// before that.
extern WindowHandle ClipboardWindow;

// Renders every announced format, so that the clipboard's content outlives this program. Does nothing when
// the clipboard's owner is not the main window.
void RenderAllFormats();

// Puts a clip on the clipboard, which `owner` (the main window) owns from then on: empties it, announces each
// of the `count` formats of the file in its order, adds the marker and keeps the formats for later requests.
// False, after telling the user why, when nothing was announced. Before the file and the clipboard are open
// nothing is changed; from then on what the clipboard held is gone.
bool RestoreClip(CClipBoard& clipBoard, WindowHandle owner, const std::wstring& fileName, std::int16_t count);

// While set and RequestTrace (modMain.h) is on: receives a line for each step of answering a request.
extern std::function<void(const std::wstring& line)> RequestTraceSink;
void TraceRequest(const std::wstring& line);

// Opens the clipboard for a window. While another program holds it, tries again after growing pauses, half a
// second in total; then the status bar says so and the result is false.
bool OpenClipboardFor(WindowHandle owner);

// Keeps the opened clipboard open no longer than it lives.
class OpenClipboardScope {
 public:
    explicit OpenClipboardScope(WindowHandle owner) : open_(OpenClipboardFor(owner)) {}
    ~OpenClipboardScope() { Close(); }
    OpenClipboardScope(const OpenClipboardScope&) = delete;
    OpenClipboardScope& operator=(const OpenClipboardScope&) = delete;

    bool IsOpen() const { return open_; }
    // Closes it now; again is no harm.
    void Close();

 private:
    bool open_;
};
