#pragma once

#include <cstdint>
#include <string>

#include "platform/Handles.h"

using MessageParameter = std::intptr_t;

// The few things that the engine does with windows: its own one's procedure, messages to the next viewer, and
// which window stands in front.
class WindowPort {
 public:
    virtual ~WindowPort() = default;

    // Replaces a window's procedure; the result is the one it had, None when that failed.
    virtual ProcedureAddress ExchangeProcedure(WindowHandle window, ProcedureAddress procedure) = 0;
    virtual MessageParameter CallProcedure(ProcedureAddress procedure, WindowHandle window,
                                           std::uint32_t message, MessageParameter wParam,
                                           MessageParameter lParam) = 0;
    // Sends a message to a window of any program and returns what it answers: 0 when it does not answer
    // within two seconds. One that has let that time pass is not waited for again in the next few seconds.
    virtual MessageParameter Deliver(WindowHandle window, std::uint32_t message, MessageParameter wParam,
                                     MessageParameter lParam) = 0;
    // True when the window's program takes messages, as seen within a fraction of a second.
    virtual bool Answers(WindowHandle window) = 0;
    // The system has found that the window's program takes no messages any more; that takes it some seconds.
    virtual bool Hangs(WindowHandle window) = 0;

    virtual WindowHandle Foreground() = 0;
    virtual void BringToFront(WindowHandle window) = 0;
    // The first `most` characters of the window's title, cut at its first zero.
    virtual std::wstring Title(WindowHandle window, int most) = 0;
    // Puts the window above all others, or back among them, without moving, sizing or activating it.
    virtual bool SetAlwaysOnTop(WindowHandle window, bool onTop) = 0;

    // Global atoms and hot keys. An atom is 0 when it cannot be added.
    virtual std::uint16_t AddGlobalAtom(const std::string& text) = 0;
    virtual void DeleteGlobalAtom(std::uint16_t atom) = 0;
    // `modifiers`: 1 ALT, 2 CTRL, 4 SHIFT, 8 WIN; `key` a virtual-key code. False when the combination is
    // taken or the identifier refused.
    virtual bool AddHotKey(WindowHandle window, std::int32_t identifier, std::uint32_t modifiers,
                           std::uint32_t key) = 0;
    // What ALT + CTRL and the key of a letter from A to Z write on the user's keyboard; empty for nothing.
    virtual std::wstring AltGrCharacter(wchar_t letter) = 0;
    virtual void RemoveHotKey(WindowHandle window, std::int32_t identifier) = 0;

    // Opens a help file with the system's help viewer.
    virtual bool OpenHelp(WindowHandle window, const std::wstring& file, std::uint32_t command,
                          std::uintptr_t data) = 0;
};
