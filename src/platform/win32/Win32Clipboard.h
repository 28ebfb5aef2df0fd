#pragma once

#include "platform/Clipboard.h"

class Win32Clipboard : public ClipboardPort {
 public:
    bool Open(WindowHandle owner) override;
    void Close() override;
    bool Empty() override;
    FormatNumber NextFormat(FormatNumber previous) override;
    DataHandle Data(FormatNumber format) override;
    bool Announce(FormatNumber format) override;
    bool Put(FormatNumber format, DataHandle data) override;
    bool Holds(FormatNumber format) override;
    FormatNumber RegisterName(const std::string& name) override;
    std::optional<std::string> RegisteredName(FormatNumber format, int most) override;
    WindowHandle Owner() override;
    std::uint32_t SequenceNumber() override;
    WindowHandle FirstViewer() override;
    WindowHandle JoinChain(WindowHandle window) override;
    void LeaveChain(WindowHandle window, WindowHandle next) override;
    void Listen(WindowHandle window) override;
    void StopListening(WindowHandle window) override;
    std::uint32_t LastError() override { return lastError_; }

 private:
    bool Noted(bool succeeded);

    std::uint32_t lastError_ = 0;
};
