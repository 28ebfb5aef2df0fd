#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Handles.h"

// A clipboard format's number: the standard ones keep theirs, the others are registered by name and hold it
// only as long as the system runs.
using FormatNumber = std::int32_t;

// The system clipboard and its chain of viewers.
class ClipboardPort {
 public:
    virtual ~ClipboardPort() = default;

    // Opens the clipboard once, without waiting, on behalf of `owner`. False when another program holds it.
    virtual bool Open(WindowHandle owner) = 0;
    virtual void Close() = 0;
    // Frees what the open clipboard holds and makes the window it was opened for its owner.
    virtual bool Empty() = 0;

    // The format after `previous` in the enumeration of the open clipboard (0 starts it); 0 at its end.
    virtual FormatNumber NextFormat(FormatNumber previous) = 0;
    // The data of a format of the open clipboard, rendered by its owner if it was only announced. The
    // clipboard keeps the ownership. None, with LastError set, when there is none.
    virtual DataHandle Data(FormatNumber format) = 0;
    // Promises a format: its data is asked for by a render message when another program wants it.
    virtual bool Announce(FormatNumber format) = 0;
    // Hands `data` over to the clipboard, which owns it from then on if the result is true.
    virtual bool Put(FormatNumber format, DataHandle data) = 0;
    virtual bool Holds(FormatNumber format) = 0;

    // Registers a name of ANSI bytes; 0 when it cannot be registered.
    virtual FormatNumber RegisterName(const std::string& name) = 0;
    // The name a registered format has now, cut at `most` bytes and at its first zero; none for all other
    // numbers.
    virtual std::optional<std::string> RegisteredName(FormatNumber format, int most) = 0;

    virtual WindowHandle Owner() = 0;
    // Counts the changes of the content; data rendered by its owner may count as one. 0 when the system does
    // not say.
    virtual std::uint32_t SequenceNumber() = 0;

    virtual WindowHandle FirstViewer() = 0;
    // Puts `window` in front of the viewer chain; the result is the window behind it, None for the end.
    // The window is sent a change message at once, whatever the content.
    virtual WindowHandle JoinChain(WindowHandle window) = 0;
    // Takes the first viewer out. Any other one is waited for without end: it is sent the message 0x030D.
    virtual void LeaveChain(WindowHandle window, WindowHandle next) = 0;
    // From now on a change posts the message 0x031D to the window, whatever becomes of the chain.
    virtual void Listen(WindowHandle window) = 0;
    virtual void StopListening(WindowHandle window) = 0;

    // The system's error code of the last call that failed.
    virtual std::uint32_t LastError() = 0;
};
