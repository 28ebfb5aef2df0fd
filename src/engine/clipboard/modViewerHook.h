#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "engine/process/Later.h"
#include "platform/Handles.h"
#include "platform/Windows.h"

// How the program learns of clipboard changes and of requests for what it announced: its main window is
// subclassed and stands in the clipboard viewer chain. The chain breaks when any program in it fails, and
// nobody is told; so the window listens for changes by the system's newer way as well, takes what the chain
// did not bring, and joins the chain anew.

// All zero while there is no hook.
extern ProcedureAddress OriginalWndProc;  // of HookedWindow, before it was subclassed
extern WindowHandle HookedWindow;
extern WindowHandle OwnViewer;   // what this program put into the chain
extern WindowHandle NextViewer;  // behind it; None at the chain's end
// The window in front when the clipboard changed or the hot key was pressed; gets the focus back after the
// main window was minimised.
extern WindowHandle PreviousForeground;

// What the main window lends to the hook. Set before SubclassWindow, cleared after UnsubclassWindow.
struct MainWindowHooks {
    // The window procedure that hands everything to ClipboardWndProc.
    ProcedureAddress procedure = ProcedureAddress::None;
    // Another program changed the clipboard while automatic capture (the option AutoSnap) was on.
    std::function<void()> updateClipBoard;
    // The same, as the listener was told: once for each change, and maybe some time before or after.
    std::function<void()> copyTold;
    // Not owned; null while there is none.
    Scheduler* scheduler = nullptr;
    // The hot key was pressed.
    std::function<void(WindowHandle mainWindow)> hotKeyAction;
};
extern MainWindowHooks TheMainWindowHooks;

// A message of the chain. Where it tells of a change, the clipboard's sequence number alone says which.
struct ChainMessage {
    std::uint32_t message = 0;
    MessageParameter w = 0;
    MessageParameter l = 0;
    std::uint32_t change = 0;
    friend bool operator==(const ChainMessage&, const ChainMessage&) = default;
};

// What is known of the chain. Changes are told apart by the clipboard's sequence number: messages cannot be
// counted, since the chain's and the listener's come in either order, and joining sends one of its own.
struct ViewerChain {
    std::uint32_t brought = 0;    // the newest change that a message of the chain told of
    std::uint32_t updatedTo = 0;  // the newest change that the listener was told of
    std::uint32_t joinedAt = 0;   // the change that stood there when we joined last
    // The listener was told of a change that no message of the chain has brought yet.
    bool owes = false;
    // Due when the listener was told of a change that the chain has not brought; of which one.
    std::unique_ptr<Once> rejoining;
    std::uint32_t awaited = 0;
    // What was behind us before we joined anew.
    WindowHandle formerNext = WindowHandle::None;
    // The newest of the messages that are being passed on; null for none.
    const class PassingMessage* passing = nullptr;
    // What was passed on last, and how often one after the other.
    struct Repeated {
        ChainMessage message;
        int times = 0;
    };
    Repeated newestChange, newestLeaving;
};
extern ViewerChain TheChain;

void SubclassWindow(WindowHandle window);
void UnsubclassWindow();

// Subclasses the window and puts it into the viewer chain, undoing both first where they stand. Returns
// NextViewer.
WindowHandle ConnectViewer(WindowHandle window);
void DisconnectViewer();

// Gives the focus back to PreviousForeground and forgets it.
void RestoreForeground();

// The main window's procedure while it is hooked. 0 where nothing else is said.
MessageParameter ClipboardWndProc(WindowHandle window, std::uint32_t message, MessageParameter wParam,
                                  MessageParameter lParam);
