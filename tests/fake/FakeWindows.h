#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "fake/Failures.h"
#include "fake/FakeFiles.h"
#include "platform/Windows.h"

// Windows as a title and a procedure, in this and in other programs.
class FakeWindows : public WindowPort {
 public:
    using Procedure = std::function<MessageParameter(WindowHandle window, std::uint32_t message,
                                                     MessageParameter wParam, MessageParameter lParam)>;
    struct HotKey {
        WindowHandle window;
        std::int32_t identifier;
        std::uint32_t modifiers;
        std::uint32_t key;
    };
    struct Help {
        WindowHandle window;
        std::wstring file;
        std::uint32_t command;
        std::uintptr_t data;
    };

    FakeWindows(Failures& failures, const FakeFiles& files) : failures_(failures), files_(files) {}

    ProcedureAddress ExchangeProcedure(WindowHandle window, ProcedureAddress procedure) override;
    MessageParameter CallProcedure(ProcedureAddress procedure, WindowHandle window, std::uint32_t message,
                                   MessageParameter wParam, MessageParameter lParam) override;
    MessageParameter Deliver(WindowHandle window, std::uint32_t message, MessageParameter wParam,
                             MessageParameter lParam) override;
    bool Answers(WindowHandle window) override {
        return !(unanswered > 0 && unanswered--) && windows_.contains(window) && window != hung;
    }
    bool Hangs(WindowHandle window) override { return window == hung && window != WindowHandle::None; }
    WindowHandle Foreground() override { return foreground; }
    void BringToFront(WindowHandle window) override;
    std::wstring Title(WindowHandle window, int most) override;
    bool SetAlwaysOnTop(WindowHandle window, bool) override {
        return !failures_.Strikes() && windows_.contains(window);
    }
    std::uint16_t AddGlobalAtom(const std::string& text) override;
    void DeleteGlobalAtom(std::uint16_t atom) override;
    bool AddHotKey(WindowHandle window, std::int32_t identifier, std::uint32_t modifiers,
                   std::uint32_t key) override;
    void RemoveHotKey(WindowHandle window, std::int32_t identifier) override;
    std::wstring AltGrCharacter(wchar_t letter) override { return altGr[letter]; }
    bool OpenHelp(WindowHandle window, const std::wstring& file, std::uint32_t command,
                  std::uintptr_t data) override;

    // A new window; without a procedure it answers every message with 0.
    WindowHandle AddWindow(const std::wstring& title = {}, Procedure procedure = {});
    void RemoveWindow(WindowHandle window);
    // A procedure that a window can be given by ExchangeProcedure.
    ProcedureAddress AddProcedure(Procedure procedure);
    // The procedure that a window has now; None for a window that there is not.
    ProcedureAddress ProcedureOf(WindowHandle window) const;
    // Presses the keys of a hot key: its window gets the message. False when nobody has it.
    bool PressHotKey(std::uint32_t modifiers, std::uint32_t key);
    // Another program takes a combination.
    void TakeHotKey(std::uint32_t modifiers, std::uint32_t key);
    // How often the text was added as an atom and not deleted.
    int AtomUses(const std::string& text) const;
    const std::vector<HotKey>& HotKeys() const { return hotKeys_; }

    WindowHandle foreground = WindowHandle::None;
    // This window's program takes no messages.
    WindowHandle hung = WindowHandle::None;
    // How many questions will find no answer, long before a program is called hung.
    int unanswered = 0;
    std::vector<Help> helps;
    // The characters of the user's keyboard.
    std::map<wchar_t, std::wstring> altGr;

 private:
    struct Window {
        std::wstring title;
        ProcedureAddress procedure;
    };
    struct Atom {
        std::string text;  // as it was added first; atoms are compared without regard to case
        int uses;
    };

    Failures& failures_;
    const FakeFiles& files_;
    std::map<WindowHandle, Window> windows_;
    std::map<ProcedureAddress, Procedure> procedures_;
    std::map<std::uint16_t, Atom> atoms_;
    std::vector<HotKey> hotKeys_;
    std::uintptr_t lastWindow_ = 0x20000;
    std::uintptr_t lastProcedure_ = 0x400000;
    std::uint16_t lastAtom_ = 0xC000;
};
