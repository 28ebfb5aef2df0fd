#pragma once

#include <string>
#include <vector>

#include "engine/clipboard/CClipBoard.h"
#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "fake/FakePlatformTest.h"

// A fake machine with the hooked main window on it.
class ClipboardTest : public FakePlatformTest {
 protected:
    using Offer = FakeClipboard::Offer;
    using Offers = std::vector<Offer>;

    static constexpr const wchar_t* kClip = L"C:\\CLIPS\\C1.nxc";

    ClipboardTest() {
        fake.files.AddDirectory(L"C:\\CLIPS");
        HookMainWindow(fake);
    }
    ~ClipboardTest() override {
        DisconnectViewer();
        UnsubclassWindow();
    }

    // A machine's main window, hooked and in the viewer chain, with the marker registered.
    void HookMainWindow(FakePlatform& machine) {
        mainWindow = machine.windows.AddWindow(L"NXClip", [this](auto, std::uint32_t message, auto, auto) {
            passedToOriginal.push_back(message);
            return MessageParameter{77};
        });
        TheMainWindowHooks.procedure = machine.windows.AddProcedure(ClipboardWndProc);
        RegisterOwnFormat();
        ConnectViewer(mainWindow);
    }

    FormatNumber Registered(const char* name) { return fake.clipboard.RegisterName(name); }

    // Saves every format of the clipboard, as far as it can be, to kClip. Returns the number of records.
    std::int16_t SaveClipboard() {
        std::int16_t count = 0;
        fake.files.Remove(kClip);
        FileOwner file(OpenClipFile(kClip, true, false));
        OpenClipboardScope clipboard(mainWindow);
        for (CFormat& format : *clipBoard.GetClipboardFormats()) {
            if (format.LoadAndSaveFormat(file.Get())) ++count;
        }
        return count;
    }
    std::int16_t Capture(const Offers& offers) {
        fake.clipboard.OtherProgramCopies(offers);
        return SaveClipboard();
    }
    std::string ClipBytes() { return fake.files.Bytes(kClip).value_or("<no file>"); }

    // The headers of a file with these bytes.
    std::shared_ptr<CFormats> Headers(const std::string& bytes, std::int16_t count) {
        fake.files.SetBytes(kClip, bytes);
        FileOwner file(OpenClipFile(kClip, false, true));
        return clipBoard.LoadFormatsByHandle(file.Get(), count);
    }

    WindowHandle mainWindow = WindowHandle::None;
    CClipBoard clipBoard;
    // The messages that reached the main window's own procedure.
    std::vector<std::uint32_t> passedToOriginal;
};

// The record of a format as it stands in a clip data file.
inline std::string RecordBytes(std::int32_t id, const std::string& name, const std::string& data) {
    const auto number = [](std::uint32_t value, int size) {
        std::string bytes;
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(value >> (8 * i) & 0xFF);
        return bytes;
    };
    return number(static_cast<std::uint32_t>(id), 4) + number(static_cast<std::uint32_t>(name.size()), 2) +
           name + number(static_cast<std::uint32_t>(data.size()), 4) + data;
}
