#include "engine/flows/SnapFlow.h"

#include <utility>

#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/OwnerRequests.h"
#include "engine/clipboard/PrivateContent.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/flows/ContentName.h"
#include "engine/flows/SameContent.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/MayBegin.h"
#include "engine/process/modOption.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/DirectoryAnswers.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// The program that copied may go on meanwhile only as far as it needs no answer of ours.
constexpr std::chrono::milliseconds kPatienceWithADrive{1000};

// As many characters as the options dialog lets the user ask for.
constexpr std::size_t kLongestClipName = 999;

// What a program leaves that has cleared the clipboard: an empty text, or the language of none.
constexpr const wchar_t* kEmptyContent = L"Kein Format gesichert: Der Inhalt ist leer.";

bool IsControlCharacter(wchar_t character) {
    return character < 0x20 || (character >= 0x7F && character <= 0x9F);
}

std::wstring JoinedNames(const std::vector<std::wstring>& names) {
    std::wstring joined;
    for (const std::wstring& name : names)
        joined += (joined.empty() ? L"" : L", ") + name;
    return joined;
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

// What was read from the clipboard and stands in the clip's file.
struct SnapFlow::Content {
    std::wstring setName;
    std::wstring textName;
    bool namedAfterUnicode = false;
    std::int16_t count = 0;
    bool hadKeptFormat = false;
    bool hasContent = false;       // more than an empty text and its language
    std::wstring undelivered;      // the names of what the owner owes
    std::uint32_t writeError = 0;  // the system's code of the first record that could not be written

    // "Unicode" goes before the plain text, which may have lost letters.
    void NameAfter(const CFormat& format) {
        const bool unicode = format.FormatId == kUnicodeFormat;
        if (!unicode && (format.FormatId != kTextFormat || namedAfterUnicode)) return;
        namedAfterUnicode = unicode;
        textName = ClipNameOfText(format.PreviewText);
    }
    // The user wants to know by the name what is in it, also without text.
    void NameAfterContent(const std::wstring& path) {
        if (Options().NewtextMode != 1 || !Options().NameByContent) return;
        if (textName.empty() || IsMarkup(textName)) {
            const std::wstring name = ClipNameOfText(NameOfContent(path, count));
            if (!name.empty()) textName = name;
        }
        textName = ShortName(textName, Options().NewMaxLen);
    }
    const std::wstring& Name() const { return textName.empty() ? setName : textName; }

    // What the clip lacks because its owner did not give it; empty when it lacks nothing.
    std::wstring Shortfall() const {
        return undelivered.empty() ? L"" : kIncompleteClip + (L"nicht geliefert wurden " + undelivered);
    }
    // What the user is to know of it; empty when all is well.
    std::wstring LastWord(const std::wstring& path) const {
        const std::wstring error = writeError != 0 ? FileErrorOf(writeError, path).Description() : L"";
        if (count > 0) return error.empty() ? Shortfall() : kIncompleteClip + error;
        if (!error.empty()) return L"Kein Format gesichert: " + error;
        return hadKeptFormat
                   ? L"Kein Format gesichert: Die Daten wurden nicht geliefert oder sind zu groß."
                   : L"Kein Format gesichert: Der Inhalt hat keines der Formate, die behalten werden.";
    }
};

bool SnapFlow::HasLookedAtThis() const {
    const std::uint32_t sequence = ThePlatform().clipboard.SequenceNumber();
    return sequence != 0 && sequence == lookedAt_;
}

SnapFlow::Outcome SnapFlow::Take(Trigger trigger, Messages& messages) {
    const BusyScope taking(Busy::Capture);
    HeldMessages held;
    Outcome outcome = Outcome::Finished;
    Succeeds([&] { outcome = TakeSnap(trigger); });
    messages = held.Take();
    return outcome;
}

SnapFlow::Outcome SnapFlow::TakeSnap(Trigger trigger) {
    if (host_.LockPressed()) return Outcome::Finished;
    lastUpdate_ = ThePlatform().clock.Now();
    Node* const container = host_.ActiveContainer();
    if (container == nullptr) {
        ThePlatform().user.Inform(L"Aktivieren Sie bitte erst ein Profil oder einen Ordner.");
        return Outcome::Finished;
    }
    if (HoldsOwnMarker()) return Outcome::Finished;
    // Nobody else could open the clipboard while we wait for him with it open.
    if (trigger == Trigger::Change && !OwnerAnswers()) return Outcome::OwnerSilent;
    if (IsEditedByOther(container)) {
        ThePlatform().user.Status(kEditedByOther);
        return Outcome::Refused;
    }

    const std::wstring directory = GetProfileDirectory(GetTopNode(container));
    if (!DirectoryAnswers(directory, kPatienceWithADrive)) {
        ThePlatform().user.Status(L"Nicht erfasst: Das Verzeichnis " + directory + L" antwortet nicht.");
        return Outcome::Finished;
    }

    NewClipFile file(*container);
    if (!file.IsOpen()) return Outcome::Finished;
    std::optional<Content> content;
    const Outcome outcome = ReadClipboard(trigger, file, content);
    file.Close();
    if (!content || abandoned_) return outcome;

    const std::wstring lastWord = content->LastWord(file.Path());
    const bool holdsSomething = content->count > 0 && content->hasContent;
    if (!holdsSomething && trigger == Trigger::Change) {
        ThePlatform().user.Status(content->count > 0 ? kEmptyContent : lastWord);
        return outcome;
    }
    if (trigger == Trigger::Change && IsTakenAlready(file, *content)) return outcome;
    content->NameAfterContent(file.Path());
    Node* const node = MakeNode(file, *content);
    if (node == nullptr) return outcome;
    file.Keep();
    unshown_.Follow(node);
    lastWord_ = lastWord;
    host_.SetProfileChanged(*node);
    host_.SaveAllProfiles();
    return outcome;
}

// The clipboard is open in here and nowhere else.
SnapFlow::Outcome SnapFlow::ReadClipboard(Trigger trigger, const NewClipFile& file,
                                          std::optional<Content>& content) {
    const Patience patience = trigger == Trigger::Change ? Patience::Little : Patience::Usual;
    const OpenClipboardScope clipboard(host_.Window(), patience);
    if (!clipboard.IsOpen()) return Outcome::ClipboardBusy;
    const std::shared_ptr<CFormats> formats = clipBoard_.GetClipboardFormats();
    // The question was about what was there when it was asked.
    const bool asked =
        trigger == Trigger::ConfirmedCommand && lookedAt_ == ThePlatform().clipboard.SequenceNumber();
    const bool confidential = !asked && Options().SkipPrivate && IsPrivateContent(*formats);
    const bool takes = formats->Count() > 0 && !confidential;
    const std::optional<Choice> choice = takes ? ChooseFormats(*formats) : std::nullopt;
    if (choice) content = SaveFormats(*formats, *choice, file.Handle());
    if (trigger == Trigger::Change && content && content->count == 0 && !OwnerAnswers()) {
        content.reset();
        return Outcome::OwnerSilent;
    }
    // Only now: data that the owner rendered for us counts as a change.
    lookedAt_ = ThePlatform().clipboard.SequenceNumber();
    return confidential ? Outcome::Confidential : Outcome::Finished;
}

std::optional<SnapFlow::Choice> SnapFlow::ChooseFormats(const CFormats& formats) {
    const int formatSet = FindFormatSet(FormatSets(), &formats);
    if (formatSet > 0) return Choice{formatSet, FormatSets().Item(formatSet).Name};
    if (Options().ActionUnknownSet != 1) return std::nullopt;
    return Choice{0, Options().UnknownSet};
}

SnapFlow::Content SnapFlow::SaveFormats(CFormats& formats, const Choice& choice, FileHandle file) {
    Content content;
    content.setName = choice.name;
    std::vector<CFormat*> kept;
    for (CFormat& format : formats)
        if (choice.Keeps(format.FormatName)) kept.push_back(&format);
    content.hadKeptFormat = !kept.empty();
    content.undelivered = JoinedNames(RequestData(kept));
    for (CFormat* const format : kept) {
        ThePlatform().user.Status(L"Sichern Format '" + format->FormatName + L"'");
        const auto start = TellClipFile(file);
        if (format->LoadAndSaveFormat(file)) {
            ++content.count;
            content.hasContent = content.hasContent || format->HasContent;
            if (Options().NewtextMode == 1) content.NameAfter(*format);
            continue;
        }
        if (content.writeError == 0) content.writeError = format->WriteError;
        // What was written of the failed record must not stand in front of the next one.
        if (!start || !SeekClipFile(file, *start)) break;
    }
    return content;
}

// The newest clip of the container holds the same, and the user wants it once.
bool SnapFlow::IsTakenAlready(const NewClipFile& file, const Content& content) {
    const Node* const container = host_.ActiveContainer();
    if (!Options().SkipSame || content.count == 0 || container == nullptr) return false;
    const Node* const same = NewestClipIfSame(*container, file.Path());
    if (same == nullptr) return false;
    ThePlatform().user.Status(L"Der Inhalt steht schon im neuesten Clip, '" + same->Text() + L"'.");
    return true;
}

// Null, and the user knows why, when the container was taken from us while an owner was asked for its data.
Node* SnapFlow::MakeNode(const NewClipFile& file, const Content& content) {
    Node* const container = host_.ActiveContainer();
    const Node* const profile = container != nullptr ? GetProfileNode(container, false) : nullptr;
    if (profile == nullptr || ClipFilePath(GetProfileDirectory(profile), file.Number()) != file.Path()) {
        ThePlatform().user.Status(
            L"Eine Kopie wurde nicht erfasst: Der Ordner für neue Clips hat inzwischen gewechselt.");
        return nullptr;
    }
    return &AddClip(host_.Nodes(), *container, file, content.Name(), content.count, content.Shortfall());
}

// Nobody asked for the preview: that it shows nothing is no reason for a box.
void SnapFlow::SelectQuietly(Node& clip) {
    HeldMessages held;
    host_.SelectAndShow(clip);
    for (const HeldMessages::Message& message : held.Take())
        ThePlatform().user.Status(message.text);
}

void SnapFlow::Show(Trigger trigger) {
    const NodeRef clip(unshown_.Get());
    const std::wstring lastWord = lastWord_;
    unshown_.Follow(nullptr);
    if (clip.Get() == nullptr) return;
    if (trigger == Trigger::Change)
        SelectQuietly(*clip.Get());
    else
        host_.SelectAndShow(*clip.Get());
    if (!lastWord.empty()) ThePlatform().user.Status(lastWord);
    PlaySnapSound();
    const bool unasked = trigger == Trigger::Change;
    const bool mayShow = MayBegin(unasked ? Who::PutOffAction : Who::CaptureCommand) == Answer::Now;
    if (Options().EditPropAfterSnap && clip.Get() != nullptr && mayShow) {
        if (!unasked) host_.BringToFront();
        host_.EditClipProperties(*clip.Get(), unasked);
        if (!lastWord.empty()) ThePlatform().user.Status(lastWord);
    }
    if (Options().IconAfterSnap) {
        // The user may have left meanwhile for a program that has nothing to do with it.
        const bool inFront = ThePlatform().windows.Foreground() == host_.Window();
        host_.Minimise();
        if (inFront) RestoreForeground();
    }
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
