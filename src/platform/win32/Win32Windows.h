#pragma once

#include <cstdint>

#include "platform/Windows.h"

class Win32Windows : public WindowPort {
 public:
    ProcedureAddress ExchangeProcedure(WindowHandle window, ProcedureAddress procedure) override;
    MessageParameter CallProcedure(ProcedureAddress procedure, WindowHandle window, std::uint32_t message,
                                   MessageParameter wParam, MessageParameter lParam) override;
    MessageParameter Deliver(WindowHandle window, std::uint32_t message, MessageParameter wParam,
                             MessageParameter lParam) override;
    bool Answers(WindowHandle window) override;
    bool Hangs(WindowHandle window) override;
    WindowHandle Foreground() override;
    void BringToFront(WindowHandle window) override;
    std::wstring Title(WindowHandle window, int most) override;
    bool SetAlwaysOnTop(WindowHandle window, bool onTop) override;
    std::uint16_t AddGlobalAtom(const std::string& text) override;
    void DeleteGlobalAtom(std::uint16_t atom) override;
    bool AddHotKey(WindowHandle window, std::int32_t identifier, std::uint32_t modifiers,
                   std::uint32_t key) override;
    std::wstring AltGrCharacter(wchar_t letter) override;
    void RemoveHotKey(WindowHandle window, std::int32_t identifier) override;
    bool OpenHelp(WindowHandle window, const std::wstring& file, std::uint32_t command,
                  std::uintptr_t data) override;

 private:
    // The window that let a message pass unanswered, and when that was, in milliseconds of the system's run.
    WindowHandle silent_ = WindowHandle::None;
    std::uint64_t silentSince_ = 0;
};
