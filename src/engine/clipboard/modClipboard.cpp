#include "engine/clipboard/modClipboard.h"

#include <array>
#include <chrono>
#include <cstring>
#include <vector>

#include "engine/clipboard/GlobalBlock.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/process/modProt.h"
#include "platform/Platform.h"

FormatNumber OwnMarkerFormat = 0;
std::shared_ptr<CFormats> RenderFormats;
std::wstring RenderFileName;
WindowHandle ClipboardWindow = WindowHandle::None;

namespace {

constexpr std::size_t kMarkerSize = 4;
constexpr std::int32_t kMarkerValue = 1;

// Together half a second: longer than any program needs to read or fill a clipboard of usual size, and short
// enough not to look like a program that hangs.
constexpr std::array kPausesBetweenTries = {
    std::chrono::milliseconds(5),   std::chrono::milliseconds(15),  std::chrono::milliseconds(45),
    std::chrono::milliseconds(135), std::chrono::milliseconds(300),
};

void AnnounceAll(const CFormats& formats) {
    for (CFormat& format : formats) {
        format.PrepareClipboard();
        format.ReleaseGlobalData(false);
    }
}

}  // namespace

void RegisterOwnFormat() {
    LogDebug(L"RegisterClipboard ...");
    OwnMarkerFormat = ThePlatform().clipboard.RegisterName(kOwnMarkerName);
}

void PutOwnMarker() {
    if (OwnMarkerFormat == 0) return;
    GlobalBlock block(kMarkerSize);
    if (block.Address() == nullptr) return;
    std::memcpy(block.Address(), &kMarkerValue, kMarkerSize);
    block.PutOnClipboard(OwnMarkerFormat);
}

bool HoldsOwnMarker() {
    return OwnMarkerFormat != 0 && ThePlatform().clipboard.Holds(OwnMarkerFormat);
}

void ClearPendingRenderSet() {
    RenderFormats.reset();
    RenderFileName.clear();
}

void RenderAllFormats() {
    ClipboardPort& clipboard = ThePlatform().clipboard;
    if (ClipboardWindow == WindowHandle::None || clipboard.Owner() != ClipboardWindow) return;
    OpenClipboardScope opened(ClipboardWindow);
    if (!opened.IsOpen()) return;
    // Listed before the first is rendered: rendering changes what is being enumerated.
    std::vector<FormatNumber> ids;
    for (FormatNumber id = clipboard.NextFormat(0); id != 0; id = clipboard.NextFormat(id)) {
        ids.push_back(id);
    }
    for (const FormatNumber id : ids) {
        clipboard.Data(id);
    }
}

bool RestoreClip(CClipBoard& clipBoard, WindowHandle owner, const std::wstring& fileName,
                 std::int16_t count) {
    UserPort& user = ThePlatform().user;
    ClipFileScope file(OpenClipFile(fileName, false, true));
    if (!file.IsOpen()) {
        user.Status(L"Datei " + fileName + L" nicht verfügbar !!!");
        return false;
    }
    OpenClipboardScope opened(owner);
    if (!opened.IsOpen()) return false;
    if (!ThePlatform().clipboard.Empty()) {
        user.Status(L"Die Zwischenablage konnte nicht geleert werden.");
        return false;
    }
    RenderFormats.reset();
    RenderFileName = fileName;
    const auto formats = clipBoard.LoadFormatsByHandle(file.Handle(), count);
    if (formats == nullptr || formats->Count() == 0) {
        user.Tell(L"Keine Formate ermittelt");
        return false;
    }
    RenderFormats = formats;
    AnnounceAll(*formats);
    PutOwnMarker();
    user.Status(L"Clipboard erfolgreich gesetzt ...");
    return true;
}

bool OpenClipboardFor(WindowHandle owner) {
    ClipboardPort& clipboard = ThePlatform().clipboard;
    if (clipboard.Open(owner)) return true;
    for (const auto pause : kPausesBetweenTries) {
        ThePlatform().clock.Pause(pause);
        if (clipboard.Open(owner)) return true;
    }
    ThePlatform().user.Status(L"Die Zwischenablage wird gerade von einem anderen Programm benutzt.");
    return false;
}

void OpenClipboardScope::Close() {
    if (open_) ThePlatform().clipboard.Close();
    open_ = false;
}
