#include <cstddef>
#include <cstdint>
#include <string>

#include "Require.h"
#include "engine/clipboard/CClipBoard.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/clipboard/modViewerHook.h"
#include "fake/FakePlatform.h"

// A clip data file that nobody vouches for: its headers are read, its data is loaded, and it is put on the
// clipboard for another program to read. Input: the count of records (2 bytes, little-endian), then the file.

namespace {

constexpr const wchar_t* kClip = L"C:\\C1.nxc";

void LoadEverything(CClipBoard& clipBoard, std::int16_t count, std::size_t fileSize) {
    FileOwner file(OpenClipFile(kClip, false, true));
    const auto formats = clipBoard.LoadFormatsByHandle(file.Get(), count);
    if (formats == nullptr) return;
    for (CFormat& format : *formats) {
        Require(format.DataSize >= 0 && format.DataOffset >= 0);
        const auto end =
            static_cast<std::size_t>(format.DataOffset) + static_cast<std::size_t>(format.DataSize);
        Require(end <= fileSize);
        if (!format.LoadDataFromFile(file.Get(), false)) continue;
        Require(format.DataLength >= 1 && format.DataLength <= format.DataSize);
        format.GetText(20);
    }
    SeekClipFile(file.Get(), 0);
    CFormat first;
    first.LoadFromFile(file.Get(), true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const auto count = static_cast<std::int16_t>(data[0] | data[1] << 8);
    const std::string bytes(reinterpret_cast<const char*>(data) + 2, size - 2);

    FakePlatform machine;
    machine.files.SetBytes(kClip, bytes);
    TheMainWindowHooks.procedure = machine.windows.AddProcedure(ClipboardWndProc);
    const WindowHandle mainWindow = machine.windows.AddWindow(L"NXClip");
    RegisterOwnFormat();
    ConnectViewer(mainWindow);

    CClipBoard clipBoard;
    LoadEverything(clipBoard, count, bytes.size());
    if (RestoreClip(clipBoard, mainWindow, kClip, count)) {
        for (const FormatNumber format : machine.clipboard.Formats())
            machine.clipboard.OtherProgramReads(format);
        RenderAllFormats();
    }

    ClearPendingRenderSet();
    DisconnectViewer();
    UnsubclassWindow();
    return 0;
}
