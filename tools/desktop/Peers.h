#pragma once

#include <string>

#include "desktop/Process.h"

// Another program that NXClip shares the clipboard with, and that behaves badly: peer.exe. Its kinds:
//
//   viewer           stands in the chain as it should
//   viewer blind     passes everything on and never takes note of who leaves
//   viewer mute      passes nothing on
//   viewer boxing    shows a box in the middle of each change's message, and passes it on when that is closed
//   viewer reading   asks for every format in the middle of the message
//   owner            owns content that it gives at once when it is asked for it
//   owner slow       takes its time for each format
//   owner hung       takes no message for a while, or for ever, once it has promised its content
//   owner empty      gives nothing
//   owner dying      ends when it is asked
//   owner changing   replaces its content as soon as it has been read
//
// An owner owns nothing before it is told to copy. What it copies then is a text "Kopie <number>" and as many
// private formats as wanted, all of them promised only.
class Peer {
 public:
    explicit Peer(const std::wstring& kind);
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    Window Handle() const { return window_; }
    // How many messages of a change have come.
    int Told() const;
    // How many messages of a viewer that leaves have come.
    int ToldOfLeavings() const;
    // `delay` in milliseconds: for each format of a slow owner; how long a hung one hangs, for ever when 0.
    // Returns when it owns the clipboard.
    void Copy(int number, int privateFormats = 0, int delay = 0) const;
    // From now on it takes no message, for so many milliseconds; for ever when that is 0.
    void Hang(int milliseconds = 0) const;
    // Leaves the chain as the system offers it.
    void Leave() const;
    // Ends at once, wherever it stands.
    void Die() { process_.Terminate(); }

 private:
    Process process_;
    Window window_;
};

// What the peer's window understands.
inline constexpr UINT kPeerTold = WM_APP + 1;
inline constexpr UINT kPeerCopy = WM_APP + 2;  // wParam: the number; lParam: how many formats, and the delay
inline constexpr UINT kPeerHang = WM_APP + 3;  // wParam: milliseconds
inline constexpr UINT kPeerLeave = WM_APP + 4;
inline constexpr UINT kPeerToldOfLeavings = WM_APP + 5;
inline constexpr wchar_t kPeerClass[] = L"NXClip.Peer";
