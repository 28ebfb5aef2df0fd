#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "engine/clipboard/CClipBoard.h"
#include "engine/clipboard/CFormats.h"
#include "platform/Clipboard.h"
#include "platform/Handles.h"

// The marker that tags what this program puts on the clipboard, and the formats that are announced there but
// not rendered yet. The viewer chain: modViewerHook.h.

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

// Renders every announced format, so that the clipboard's content outlives this program and the clip's file.
// True when nothing is promised any more, also because the clipboard's owner is not the main window; false
// when another program kept the clipboard for three seconds or a format could not be rendered.
bool RenderAllFormats();
// The same when the user ends the program: he is told what would be lost, and asked whether it is to be tried
// again, until all is rendered or he gives it up. What he gives up is not promised any more.
void RenderBeforeTheEnd();
// Answers a request for a format from the pending clip. Another program waits for it: what goes wrong is said
// in the status bar alone.
void RenderPendingFormat(FormatNumber id);

// Puts a clip on the clipboard, which `owner` (the main window) owns from then on: empties it, announces each
// of the `count` formats of the file in its order, adds the marker and keeps the formats for later requests.
// False, after telling the user why, when nothing was announced. Before the file and the clipboard are open,
// and for a file that is damaged from its start on, nothing is changed; from then on what the clipboard held
// is gone.
bool RestoreClip(CClipBoard& clipBoard, WindowHandle owner, const std::wstring& fileName, std::int16_t count);

// The same with those formats of the clip alone that `wanted` accepts. A clip that has none of them leaves
// the clipboard as it is, and the status bar says so.
using FormatFilter = std::function<bool(const CFormat& format)>;
bool RestoreClip(CClipBoard& clipBoard, WindowHandle owner, const std::wstring& fileName, std::int16_t count,
                 const FormatFilter& wanted);
// Accepts what is plain text: it takes on the looks of the place where it is pasted.
bool IsPlainText(const CFormat& format);

// How long to wait for a clipboard that another program holds.
enum class Patience {
    Little,  // a few milliseconds, and no word: the caller comes back
    Usual,   // half a second
    Long,    // three seconds, where there is no second chance
};

// Opens the clipboard for a window. While another program holds it, tries again after growing pauses; then
// the status bar says so and the result is false.
bool OpenClipboardFor(WindowHandle owner, Patience patience = Patience::Usual);

// Keeps the opened clipboard open no longer than it lives.
class OpenClipboardScope {
 public:
    explicit OpenClipboardScope(WindowHandle owner, Patience patience = Patience::Usual)
        : open_(OpenClipboardFor(owner, patience)) {}
    ~OpenClipboardScope() { Close(); }
    OpenClipboardScope(const OpenClipboardScope&) = delete;
    OpenClipboardScope& operator=(const OpenClipboardScope&) = delete;

    bool IsOpen() const { return open_; }
    // Closes it now; again is no harm.
    void Close();

 private:
    bool open_;
};
