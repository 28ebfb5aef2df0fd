#include "engine/clipboard/modClipboard.h"

#include <array>
#include <chrono>
#include <cstring>
#include <span>

#include "engine/clipboard/GlobalBlock.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/process/modProt.h"
#include "platform/FileBytes.h"
#include "platform/HeldMessages.h"
#include "platform/Platform.h"
#include "platform/Text.h"

FormatNumber OwnMarkerFormat = 0;
std::shared_ptr<CFormats> RenderFormats;
std::wstring RenderFileName;
WindowHandle ClipboardWindow = WindowHandle::None;

namespace {

constexpr std::size_t kMarkerSize = 4;
constexpr std::int32_t kMarkerValue = 1;

// Half a second is longer than any program needs to read or fill a clipboard of usual size, and short enough
// not to look like a program that hangs.
constexpr std::array kPauses = {
    std::chrono::milliseconds(5),   std::chrono::milliseconds(15),   std::chrono::milliseconds(45),
    std::chrono::milliseconds(135), std::chrono::milliseconds(300),  std::chrono::milliseconds(500),
    std::chrono::milliseconds(800), std::chrono::milliseconds(1200),
};

std::span<const std::chrono::milliseconds> PausesOf(Patience patience) {
    const std::size_t count = patience == Patience::Little ? 2 : patience == Patience::Usual ? 5 : 8;
    return std::span(kPauses).first(count);
}

// Another program waits, or the program ends: nobody is to answer a box, so the first text stands in the
// status bar.
class StatusInsteadOfBoxes {
 public:
    StatusInsteadOfBoxes() = default;
    ~StatusInsteadOfBoxes() {
        const auto messages = held_.Take();
        if (!messages.empty()) ThePlatform().user.Status(messages.front().text);
    }
    StatusInsteadOfBoxes(const StatusInsteadOfBoxes&) = delete;
    StatusInsteadOfBoxes& operator=(const StatusInsteadOfBoxes&) = delete;

 private:
    HeldMessages held_;
};

// Announces the formats and returns the names of those that are missing then, for the user: the clipboard
// refused them, or they could not be read, `count` of them stand in the file.
std::wstring AnnounceAll(const CFormats& formats, std::int16_t count) {
    std::wstring missing;
    const auto add = [&missing](const std::wstring& name) {
        missing += (missing.empty() ? L"" : L", ") + name;
    };
    for (CFormat& format : formats) {
        format.PrepareClipboard();
        format.ReleaseGlobalData(false);
        if (format.AnnouncedAs == 0) add(format.FormatName);
    }
    if (formats.Count() < count) add(NumberText(count - formats.Count()) + L" nicht lesbar");
    return missing;
}

void KeepOnly(CFormats& formats, const FormatFilter& wanted) {
    for (std::int32_t place = formats.Count(); place >= 1; --place)
        if (!wanted(formats.Item(place))) formats.Remove(place);
}

CFormat* AnnouncedUnder(const CFormats& formats, FormatNumber id) {
    for (CFormat& format : formats)
        if (id != 0 && format.AnnouncedAs == id) return &format;
    return nullptr;
}

bool OwnsClipboard() {
    return ClipboardWindow != WindowHandle::None && ThePlatform().clipboard.Owner() == ClipboardWindow;
}

// While everything is rendered: the pending clip's file. A file that somebody holds is waited for once, not
// again for each of its formats.
const FileOwner* openRenderFile = nullptr;

class OpenRenderFileScope {
 public:
    OpenRenderFileScope() : file_(OpenClipFile(RenderFileName, false, true)) { openRenderFile = &file_; }
    ~OpenRenderFileScope() { openRenderFile = nullptr; }
    OpenRenderFileScope(const OpenRenderFileScope&) = delete;
    OpenRenderFileScope& operator=(const OpenRenderFileScope&) = delete;

 private:
    FileOwner file_;
};

bool SetFromFile(CFormat& format, const std::wstring& fileName) {
    if (openRenderFile == nullptr) return format.SetClipboardFromFile(fileName);
    return openRenderFile->IsSet() && format.SetClipboardFromFile(openRenderFile->Get());
}

// Asking for an announced format makes the system ask us for it. Where no such question comes, because the
// window is on its way out, the data is handed over as it is.
bool RenderNow(CFormat& format) {
    if (ThePlatform().clipboard.Data(format.AnnouncedAs) != DataHandle::None) return true;
    return SetFromFile(format, RenderFileName);
}

// What keeps the promised formats from being rendered, for the user; empty when all of them are, or when the
// clipboard is not the main window's.
std::wstring RenderAll() {
    if (!OwnsClipboard()) return {};
    // A command that comes in meanwhile may replace the pending clip: this keeps the one at hand alive.
    const std::shared_ptr<CFormats> formats = RenderFormats;
    if (formats == nullptr) return {};
    const StatusInsteadOfBoxes quiet;
    const OpenRenderFileScope file;
    const OpenClipboardScope opened(ClipboardWindow, Patience::Long);
    if (!opened.IsOpen()) return L"Ein anderes Programm gibt die Zwischenablage nicht frei.";
    // Whoever had it open meanwhile may have put something else there.
    if (!OwnsClipboard()) return {};
    std::wstring missing;
    for (CFormat& format : *formats)
        if (format.AnnouncedAs != 0 && !RenderNow(format))
            missing += (missing.empty() ? L"" : L", ") + format.FormatName;
    if (missing.empty()) return {};
    return L"Aus der Datei\r\n" + RenderFileName + L"\r\nkönnen diese Formate nicht gelesen werden: " +
           missing;
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

bool RenderAllFormats() {
    return RenderAll().empty();
}

void RenderBeforeTheEnd() {
    for (std::wstring obstacle = RenderAll(); !obstacle.empty(); obstacle = RenderAll()) {
        if (ThePlatform().user.Ask(
                L"Der Clip auf der Zwischenablage konnte nicht ganz übertragen werden; mit dem "
                L"Ende von NXClip geht das Fehlende dort verloren.\r\n\r\n" +
                    obstacle + L"\r\n\r\nSoll es noch einmal versucht werden ?",
                L"Zwischenablage", false))
            continue;
        ClearPendingRenderSet();
        return;
    }
}

void RenderPendingFormat(FormatNumber id) {
    const std::shared_ptr<CFormats> formats = RenderFormats;
    const std::wstring fileName = RenderFileName;
    if (fileName.empty() || formats == nullptr) return;
    const StatusInsteadOfBoxes quiet;
    CFormat* format = formats->SearchFormatIdByName(id);
    // Private numbers have no name, and a name that somebody registered first may be written another way.
    if (format == nullptr) format = AnnouncedUnder(*formats, id);
    if (format != nullptr) SetFromFile(*format, fileName);
}

bool IsPlainText(const CFormat& format) {
    return format.FormatName == L"Text" || format.FormatName == L"Unicode" || format.FormatName == L"OemText";
}

bool RestoreClip(CClipBoard& clipBoard, WindowHandle owner, const std::wstring& fileName,
                 std::int16_t count) {
    return RestoreClip(clipBoard, owner, fileName, count, {});
}

bool RestoreClip(CClipBoard& clipBoard, WindowHandle owner, const std::wstring& fileName, std::int16_t count,
                 const FormatFilter& wanted) {
    UserPort& user = ThePlatform().user;
    const HeldMessages held;
    std::shared_ptr<CFormats> formats;
    {
        const FileOwner file(OpenClipFile(fileName, false, true));
        if (!file.IsSet()) {
            user.Status(L"Datei " + fileName + L" nicht verfügbar !!!");
            return false;
        }
        formats = clipBoard.LoadFormatsByHandle(file.Get(), count);
    }
    if (formats != nullptr && formats->Count() == 0 && clipBoard.FileIsDamaged()) {
        user.Status(L"Die Datei " + fileName + L" ist beschädigt. Die Zwischenablage bleibt, wie sie ist.");
        return false;
    }
    if (wanted && formats != nullptr) {
        KeepOnly(*formats, wanted);
        count = static_cast<std::int16_t>(formats->Count());
        if (count == 0) {
            user.Status(L"Die Zwischenablage bleibt, wie sie ist: Der Clip enthält nichts davon.");
            return false;
        }
    }
    const OpenClipboardScope opened(owner);
    if (!opened.IsOpen()) return false;
    if (!ThePlatform().clipboard.Empty()) {
        user.Status(L"Die Zwischenablage konnte nicht geleert werden.");
        return false;
    }
    RenderFormats = formats;
    RenderFileName = fileName;
    if (formats == nullptr || formats->Count() == 0) {
        RenderFormats.reset();
        ThePlatform().user.Tell(L"Keine Formate ermittelt");
        return false;
    }
    const std::wstring missing = AnnounceAll(*formats, count);
    PutOwnMarker();
    user.Status(missing.empty() ? L"Clipboard erfolgreich gesetzt ..."
                                : L"Clipboard unvollständig gesetzt, es fehlt: " + missing);
    return true;
}

bool OpenClipboardFor(WindowHandle owner, Patience patience) {
    ClipboardPort& clipboard = ThePlatform().clipboard;
    if (clipboard.Open(owner)) return true;
    for (const auto pause : PausesOf(patience)) {
        ThePlatform().clock.Pause(pause);
        if (clipboard.Open(owner)) return true;
    }
    if (patience != Patience::Little)
        ThePlatform().user.Status(L"Die Zwischenablage wird gerade von einem anderen Programm benutzt.");
    return false;
}

void OpenClipboardScope::Close() {
    if (open_) ThePlatform().clipboard.Close();
    open_ = false;
}
