#pragma once

#include "platform/Busy.h"

// Who wants to begin something. Everything arrives as a message, also while something else goes on.
enum class Who {
    AutomaticCapture,  // the clipboard has changed
    CaptureCommand,    // the user wants a clip of what the clipboard holds
    ClipCommand,       // the user wants a clip on the clipboard
    TreeCommand,       // the user wants something of the tree, or of a window that shows it
    TypedName,         // an edit has ended, and a node is to be called what was typed
    BoxToldLater,      // a text that nobody asked for
    PutOffAction,      // what was to be done later is due
    Closing,           // the user closes the window
    SessionEnd,        // the system ends the process as soon as it is answered
    SecondStart,       // the program was started once more
    HotKey,            // the user wants the window in front
};
inline constexpr int kWhoCount = static_cast<int>(Who::HotKey) + 1;

// In the order of their force: of several things under way the strongest decides.
enum class Answer {
    Now,
    EndsIt,   // what is under way is ended first
    Later,    // not lost: it begins when that is over
    Missed,   // does not begin; the user is told when that is over
    Refused,  // does not begin; the user sees what is in its way
};

// The one answer to the question whether something may begin now. ARCHITECTURE.md shows the table.
Answer MayBegin(Who who) noexcept;
