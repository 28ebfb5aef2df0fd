#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"

// The machine that the contract suite runs on: the fakes in the native build, Windows in the Windows builds.
// The ports themselves are what is tested; this is what a test needs beside them.
class Home {
 public:
    // Gets the clipboard's, the hot keys' and the program's own messages.
    using Procedure = std::function<MessageParameter(WindowHandle window, std::uint32_t message,
                                                     MessageParameter wParam, MessageParameter lParam)>;
    struct FormatBytes {
        FormatNumber format;
        std::string bytes;  // a metafile's bits for 3 and 14
        bool late = false;  // announced only, given when somebody asks, as are those copied with it
    };

    virtual ~Home() = default;
    // In force as the platform while it lives.
    static std::unique_ptr<Home> Make();

    virtual Platform& Ports() = 0;

    // Windows live until their end or until the home's.
    virtual WindowHandle MakeWindow(const std::wstring& title, Procedure procedure) = 0;
    virtual void EndWindow(WindowHandle window) = 0;
    // A procedure for ExchangeProcedure, one in a test.
    virtual ProcedureAddress MakeProcedure(Procedure procedure) = 0;
    // Lets messages arrive until the condition holds; false when it does not within some seconds.
    virtual bool PumpUntil(const std::function<bool()>& condition) = 0;

    // An empty directory with "\" at its end. It goes away with the home.
    virtual std::wstring Directory() = 0;
    virtual void SetReadOnly(const std::wstring& path, bool readOnly) = 0;

    // Another program, with a window of its own.
    virtual WindowHandle OtherWindow() = 0;
    virtual void OtherCopies(const std::vector<FormatBytes>& formats) = 0;
    virtual std::optional<std::string> OtherReads(FormatNumber format) = 0;
    // Opens the clipboard and keeps it open until OtherReleases.
    virtual void OtherHolds() = 0;
    virtual void OtherReleases() = 0;

    // The code page of ANSI texts.
    virtual unsigned CodePage() = 0;
};
