#include "engine/flows/SnapFlow.h"

#include <new>

#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/TreeOperation.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// As many characters as the options dialog lets the user ask for.
constexpr std::size_t kLongestClipName = 999;

// So many numbers of existing files are passed by in one snap; the next one goes on from there.
constexpr int kMostTakenNumbers = 10000;

class RunningScope {
 public:
    explicit RunningScope(bool& running) : running_(running) { running_ = true; }
    ~RunningScope() { running_ = false; }
    RunningScope(const RunningScope&) = delete;
    RunningScope& operator=(const RunningScope&) = delete;

 private:
    bool& running_;
};

bool IsControlCharacter(wchar_t character) {
    return character < 0x20 || (character >= 0x7F && character <= 0x9F);
}

void PlaySnapSound() {
    UserPort& user = ThePlatform().user;
    if (!Options().SnapSound) return;
    if (Options().SoundFile.empty() || !user.PlaySoundFile(Options().SoundFile)) user.Beep();
}

}  // namespace

// Which formats are kept, and what the clip is called.
struct SnapFlow::Choice {
    int formatSet = 0;  // 0 when none matches
    std::wstring name;

    bool Keeps(const std::wstring& formatName) const {
        return formatSet > 0 ? GetFormatSaveFlag(formatSet, formatName) : IsKeptUnknownFormat(formatName);
    }
};

// What became of the kept formats.
struct SnapFlow::Saved {
    std::int16_t count = 0;
    std::uint32_t writeError = 0;  // the system's code of the first record that could not be written
};

void SnapFlow::UpdateClipBoard() {
    if (!ModalDialogOpen) Snap();
}

void SnapFlow::Snap() {
    if (running_ || TreeOperationUnderWay()) return;
    const RunningScope running(running_);
    Succeeds([this] { TakeSnap(); });
}

void SnapFlow::TakeSnap() {
    UserPort& user = ThePlatform().user;
    if (host_.LockPressed()) return;
    lastUpdate_ = ThePlatform().clock.Now();
    Node* const container = host_.ActiveContainer();
    if (container == nullptr) {
        user.Tell(L"Aktivieren Sie bitte erst ein Profil oder einen Ordner.");
        return;
    }
    if (HoldsOwnMarker()) return;
    if (IsEditedByOther(container)) {
        user.Status(kEditedByOther);
        return;
    }
    const ClipFile clip = NewClipFile(*container);
    if (clip.path.empty()) return;

    const HourglassScope hourglass(user);
    OpenClipboardScope clipboard(host_.Window());
    if (!clipboard.IsOpen()) return;
    const std::shared_ptr<CFormats> formats = clipBoard_.GetClipboardFormats();
    if (formats->Count() == 0) return;
    const std::optional<Choice> choice = ChooseFormats(*formats);
    if (!choice) return;
    ClipFileScope file(OpenClipFile(clip.path, true, false));
    if (!file.IsOpen()) {
        user.Status(L"Öffnen der Clipdatei " + clip.path + L" fehlgeschlagen!!!");
        return;
    }

    Node& node = host_.Nodes().Add(container, NodeRelation::Child, choice->name, std::wstring(L"Clip"));
    host_.ScrollIntoView(node);
    const Saved saved = SaveFormats(*formats, *choice, file.Handle(), node);
    clipboard.Close();
    file.Close();

    TagNode(node, clip, saved.count);
    host_.SetProfileChanged(node);
    host_.SaveAllProfiles();
    host_.SelectAndShow(node);
    SayWhatIsMissing(saved, clip.path);
    PlaySnapSound();
    if (Options().EditPropAfterSnap) {
        host_.BringToFront();
        host_.EditClipProperties(node);
    }
    if (Options().IconAfterSnap) {
        host_.Minimise();
        RestoreForeground();
    }
}

// A file that is there already belongs to some other clip, whatever the profile's counter says: after a
// profile could not be saved its counter is behind the files. Such numbers are passed by, since creating the
// file would empty it.
SnapFlow::ClipFile SnapFlow::NewClipFile(Node& container) {
    ClipFile clip;
    for (int tries = 0; tries < kMostTakenNumbers; ++tries) {
        clip.path = NewClipFileName(&container, true, clip.number);
        if (clip.path.empty() || !ThePlatform().files.Exists(clip.path)) return clip;
    }
    ThePlatform().user.Status(L"Öffnen der Clipdatei " + clip.path + L" fehlgeschlagen!!!");
    return {};
}

std::optional<SnapFlow::Choice> SnapFlow::ChooseFormats(const CFormats& formats) {
    const int formatSet = FindFormatSet(FormatSets(), &formats);
    if (formatSet > 0) return Choice{formatSet, FormatSets().Item(formatSet).Name};
    if (Options().ActionUnknownSet != 1) return std::nullopt;
    return Choice{0, Options().UnknownSet};
}

SnapFlow::Saved SnapFlow::SaveFormats(CFormats& formats, const Choice& choice, FileHandle file, Node& node) {
    Saved saved;
    for (CFormat& format : formats) {
        if (!choice.Keeps(format.FormatName)) continue;
        ThePlatform().user.Status(L"Sichern Format '" + format.FormatName + L"'");
        const auto start = TellClipFile(file);
        if (format.LoadAndSaveFormat(file)) {
            ++saved.count;
            if (format.FormatId == kTextFormat && Options().NewtextMode == 1) {
                const std::wstring name = ClipNameOfText(format.PreviewText);
                if (!name.empty()) node.SetText(name);
            }
            continue;
        }
        if (saved.writeError == 0) saved.writeError = format.WriteError;
        // What was written of the failed record must not stand in front of the next one.
        if (!start || !SeekClipFile(file, *start)) break;
    }
    return saved;
}

void SnapFlow::TagNode(Node& node, const ClipFile& clip, std::int16_t formatCount) {
    ClockPort& clock = ThePlatform().clock;
    const FileTime captured = ThePlatform().files.ChangeTime(clip.path).value_or(clock.Now());
    node.SetTag(MakeClipTag(clip.number, formatCount, clock.DateText(captured), {}));
}

void SnapFlow::SayWhatIsMissing(const Saved& saved, const std::wstring& path) {
    if (saved.writeError == 0) return;
    ThePlatform().user.Status(L"Der Clip ist unvollständig: " +
                              FileErrorOf(saved.writeError, path).Description());
}

std::wstring ClipNameOfText(const std::wstring& text) {
    std::wstring name;
    bool inRun = false;
    for (const wchar_t character : text.substr(0, text.find(L'\0'))) {
        const bool control = IsControlCharacter(character);
        if (!control) name += character;
        if (control && !inRun) name += L' ';
        inRun = control;
    }
    return Trim(Trim(name).substr(0, kLongestClipName));
}
