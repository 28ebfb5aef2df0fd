#include "engine/profiles/DirectoryCheck.h"

#include <algorithm>
#include <optional>

#include "engine/clipboard/CFormat.h"
#include "engine/clipboard/ClipFileLayout.h"
#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/profiles/ClipFileNames.h"
#include "engine/profiles/ProfileLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FileBytes.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

struct CheckedClip {
    std::int32_t number = 0;
    std::int16_t formatCount = 0;
    std::wstring place;
};

// What can never be put back: a metafile needs bits behind its header.
bool HasTooLittleData(const ClipRecord& record) {
    const auto header = record.id == kMetafilePictureFormat ? kPictureHeaderSize : 0;
    return static_cast<std::size_t>(record.size) <= header;
}

std::optional<Damage> DamageOfRecords(FileHandle file, std::int16_t count) {
    CFormat format;
    for (int i = 0; i < count; ++i) {
        if (RemainingInClipFile(file) == 0) return Damage::RecordsMissing;
        if (!format.LoadFromFile(file, false))
            return format.Blank ? Damage::RecordEmpty : Damage::RecordDamaged;
        if (const auto damage = DamageOfRecord(RecordOf(format))) return damage;
    }
    return std::nullopt;
}

class Check {
 public:
    Check(const std::wstring& directory, const std::function<bool(std::size_t, std::size_t)>& goOn)
        : directory_(directory), file_(TreeDataFilePath(directory)), goOn_(goOn) {}

    DirectoryState Run() {
        if (!ThePlatform().files.IsDirectory(directory_)) {
            Found(Damage::DirectoryMissing, directory_);
            return state_;
        }
        LookAtTheTree();
        if (state_.readable) LookAtTheClips();
        if (state_.readable && state_.complete) LookAtTheFiles();
        return state_;
    }

 private:
    void Found(Damage damage, const std::wstring& place) { state_.findings.push_back({damage, place}); }

    void LookAtTheTree() {
        const std::wstring name = LastPartOf(file_);
        if (!SafeFileExists(file_)) return Found(Damage::TreeMissing, name);
        std::vector<std::uint8_t> image;
        if (ErrorIn([&] { image = ReadSafeFile(file_); })) return Found(Damage::TreeUnreadable, name);
        LookAtTheJournal();
        if (ErrorIn([&] { ReadTreeImage(image, nullptr); })) return Found(Damage::TreeDamaged, name);
        ReadTreeImage(image, [&](const KeptRecord& record) { return LookAtNode(record); });
        if (!state_.readable) return Found(Damage::TreeWithoutProfile, name);
        LookAtTheCounter();
    }
    // That of a profile in use is being written, or will be finished by the program that has it.
    void LookAtTheJournal() {
        const std::wstring name = LastPartOf(JournalPathOf(file_));
        const JournalState state = StateOfJournal(file_);
        if (state == JournalState::None || IsKept(directory_)) return;
        switch (state) {
            case JournalState::None:
                return;
            case JournalState::Pending:
                return Found(Damage::SaveBrokenOff, name);
            case JournalState::Written:
                return Found(Damage::JournalLeft, name);
            case JournalState::Foreign:
                return Found(Damage::JournalForeign, name);
        }
    }

    // False where a load would end, too.
    bool LookAtNode(const KeptRecord& record) {
        const std::wstring tag = TextFromAnsi(record.tag);
        const std::wstring text = TextFromAnsi(record.text);
        if (path_.empty()) {
            state_.readable = record.depth == 0 && tag.starts_with(L"P");
            path_.push_back({text, false});
            profileTag_ = tag;
            return state_.readable;
        }
        const auto depth = static_cast<std::size_t>(std::max<std::int16_t>(record.depth, 0));
        if (record.depth == 0) Found(Damage::SecondTopNode, text);
        if (record.depth < 0 || depth > path_.size()) Found(Damage::DepthJumps, text);
        if (record.depth <= 0 || depth > path_.size()) return false;
        path_.resize(depth);
        const bool isClip = tag.starts_with(L"C");
        if (path_.back().isClip) Found(Damage::NodeBelowClip, PlaceOf(text));
        if (isClip)
            LookAtClipTag(tag, PlaceOf(text));
        else if (tag.starts_with(L"S"))
            ++state_.folders;
        else
            Found(tag.starts_with(L"P") ? Damage::ProfileInProfile : Damage::NodeOfNoKind, PlaceOf(text));
        path_.push_back({text, isClip});
        return true;
    }
    std::wstring PlaceOf(const std::wstring& text) const {
        std::wstring place;
        for (const Level& level : path_)
            place += level.text + L'\\';
        return place + text;
    }

    void LookAtClipTag(const std::wstring& tag, const std::wstring& place) {
        CheckedClip clip{.place = place};
        std::wstring time, info;
        const auto error = ErrorIn([&] { ParseClipTag(tag, clip.number, clip.formatCount, time, info); });
        ++state_.clips;
        if (error || clip.number < 1 || clip.formatCount < 0) return Found(Damage::ClipTagDamaged, place);
        if (!IsTrustedClipNumber(clip.number)) Found(Damage::ClipNumberTooHigh, place);
        state_.formats += clip.formatCount;
        clips_.push_back(clip);
    }

    void LookAtTheCounter() {
        std::int32_t counter = -1;
        bool globalFlag = false;
        std::wstring directory, info;
        const auto error =
            ErrorIn([&] { ParseProfileTag(profileTag_, counter, directory, globalFlag, info); });
        if (error || !IsTrustedClipNumber(counter)) return Found(Damage::ProfileTagDamaged, path_[0].text);
        const bool tooLow = std::any_of(clips_.begin(), clips_.end(), [&](const CheckedClip& clip) {
            return IsTrustedClipNumber(clip.number) && clip.number > counter;
        });
        if (tooLow) Found(Damage::CounterTooLow, path_[0].text);
    }

    void LookAtTheClips() {
        std::stable_sort(clips_.begin(), clips_.end(),
                         [](const CheckedClip& a, const CheckedClip& b) { return a.number < b.number; });
        for (std::size_t i = 0; i < clips_.size() && state_.complete; ++i) {
            const bool again = i > 0 && clips_[i].number == clips_[i - 1].number;
            if (again)
                Found(Damage::ClipNumberTwice, clips_[i].place);
            else
                LookAtClipFile(clips_[i]);
            if (goOn_) state_.complete = goOn_(i + 1, clips_.size());
        }
    }
    void LookAtClipFile(const CheckedClip& clip) {
        const std::wstring path = ClipFilePath(directory_, clip.number);
        if (const auto damage = DamageOfClipFile(path, clip.formatCount)) Found(*damage, clip.place);
        const FileOwner file(ThePlatform().files.Open(path, FileUse::Read));
        if (file.IsSet()) state_.dataSize += ThePlatform().files.Size(file.Get()).value_or(0);
    }

    void LookAtTheFiles() {
        for (const std::wstring& name : ThePlatform().files.List(JoinDirectory(directory_, L"*"))) {
            const std::int32_t number = ClipNumberInName(name);
            if (IsHalfCopyName(name) || (number != 0 && !HasNode(number))) LookAtFileWithoutNode(name);
        }
    }
    bool HasNode(std::int32_t number) const {
        const auto found = std::lower_bound(
            clips_.begin(), clips_.end(), number,
            [](const CheckedClip& clip, std::int32_t wanted) { return clip.number < wanted; });
        return found != clips_.end() && found->number == number;
    }
    // One that another program holds is just becoming a clip, and one that is gone was no finding.
    void LookAtFileWithoutNode(const std::wstring& name) {
        FilePort& files = ThePlatform().files;
        const FileOwner file(files.Open(JoinDirectory(directory_, name), FileUse::Read));
        const std::uint32_t error = file.IsSet() ? 0 : files.LastError();
        if (error == kErrorSharingViolation || IsMissing(error)) return;
        if (IsHalfCopyName(name)) return Found(Damage::HalfCopy, name);
        if (!file.IsSet()) return Found(Damage::ClipFileUnreadable, name);
        // A load passes by it.
        if (!IsTrustedClipNumber(ClipNumberInName(name))) return Found(Damage::ClipNumberTooHigh, name);
        const auto damage = DamageOfRecords(file.Get(), 1);
        Found(!damage                          ? Damage::ClipWithoutNode
              : *damage == Damage::RecordEmpty ? Damage::ZerosOfClip
                                               : Damage::RestOfClip,
              name);
    }

    struct Level {
        std::wstring text;
        bool isClip = false;
    };

    const std::wstring directory_;
    const std::wstring file_;
    const std::function<bool(std::size_t, std::size_t)>& goOn_;
    DirectoryState state_;
    std::vector<Level> path_;  // from the profile down to the last node
    std::wstring profileTag_;
    std::vector<CheckedClip> clips_;
};

struct DamageText {
    Damage damage;
    Mending mending;
    const wchar_t* text;
};

constexpr DamageText kTexts[] = {
    {Damage::DirectoryMissing, Mending::None, L"Das Verzeichnis ist nicht da."},
    {Damage::TreeMissing, Mending::AfterAnswer, L"Die Datei des Profils fehlt."},
    {Damage::TreeUnreadable, Mending::None, L"Die Datei des Profils kann nicht gelesen werden."},
    {Damage::TreeDamaged, Mending::AfterAnswer, L"Die Datei des Profils ist beschädigt."},
    {Damage::TreeWithoutProfile, Mending::AfterAnswer, L"Die Datei enthält kein Profil."},
    {Damage::SaveBrokenOff, Mending::ByLoad, L"Ein Speichern wurde unterbrochen und ist noch zu beenden."},
    {Damage::JournalLeft, Mending::ByLoad, L"Das Journal des letzten Speicherns liegt noch da."},
    {Damage::JournalForeign, Mending::ByLoad, L"Das Journal gehört nicht zu diesem Stand der Datei."},
    {Damage::DepthJumps, Mending::ByLoad, L"Ab hier ist der Baum beschädigt; was folgt, ist nicht zu lesen."},
    {Damage::SecondTopNode, Mending::ByLoad,
     L"Neben dem Profil steht ein zweiter oberster Eintrag; er ist nicht zu erreichen."},
    {Damage::NodeOfNoKind, Mending::None, L"Der Eintrag ist weder Ordner noch Clip."},
    {Damage::ProfileInProfile, Mending::None, L"Im Profil steht ein weiteres Profil."},
    {Damage::NodeBelowClip, Mending::None, L"Der Eintrag steht unter einem Clip."},
    {Damage::ProfileTagDamaged, Mending::ByLoad, L"Der Zähler der Clips ist beschädigt."},
    {Damage::CounterTooLow, Mending::ByLoad, L"Der Zähler der Clips ist kleiner als die höchste Nummer."},
    {Damage::ClipTagDamaged, Mending::None, L"Der Eintrag sagt nicht, welche Datei zum Clip gehört."},
    {Damage::ClipNumberTooHigh, Mending::None, L"Die Nummer des Clips kann nicht stimmen."},
    {Damage::ClipNumberTwice, Mending::None,
     L"Ein anderer Clip hat dieselbe Nummer und damit dieselbe Datei."},
    {Damage::ClipFileMissing, Mending::None, L"Die Datei des Clips fehlt."},
    {Damage::ClipFileUnreadable, Mending::None, L"Die Datei des Clips kann nicht gelesen werden."},
    {Damage::RecordsMissing, Mending::None, L"Der Datei des Clips fehlen Formate."},
    {Damage::RecordDamaged, Mending::None, L"In der Datei des Clips ist ein Format beschädigt."},
    {Damage::RecordEmpty, Mending::None, L"In der Datei des Clips stehen nur Nullen."},
    {Damage::RecordWithoutData, Mending::None, L"Ein Format des Clips hat keine Daten."},
    {Damage::RecordOfObject, Mending::None, L"Ein Format des Clips kann keine Daten haben."},
    {Damage::ClipWithoutNode, Mending::AfterAnswer, L"Zur Datei gibt es keinen Eintrag im Baum."},
    {Damage::RestOfClip, Mending::ByLoad,
     L"In der Datei ist kein Format ganz; zu ihr gibt es keinen Eintrag."},
    {Damage::ZerosOfClip, Mending::None, L"In der Datei stehen nur Nullen; zu ihr gibt es keinen Eintrag."},
    {Damage::HalfCopy, Mending::ByLoad, L"Die Datei ist der Rest einer abgebrochenen Kopie."},
};

const DamageText& RowOf(Damage damage) {
    return *std::find_if(std::begin(kTexts), std::end(kTexts),
                         [&](const DamageText& row) { return row.damage == damage; });
}

}  // namespace

Mending MendingOf(Damage damage) {
    return RowOf(damage).mending;
}

std::wstring TextOf(const Finding& finding) {
    return finding.place + L": " + RowOf(finding.damage).text;
}

std::optional<Damage> DamageOfRecord(const ClipRecord& record) {
    if (record.id == 0 && record.name.empty()) return Damage::RecordEmpty;
    if (IsGdiObjectFormat(record.id)) return Damage::RecordOfObject;
    if (HasTooLittleData(record)) return Damage::RecordWithoutData;
    return std::nullopt;
}

std::optional<Damage> DamageOfClipFile(const std::wstring& file, std::int16_t formatCount) {
    FilePort& files = ThePlatform().files;
    const FileOwner opened(files.Open(file, FileUse::Read));
    if (!opened.IsSet())
        return IsMissing(files.LastError()) ? Damage::ClipFileMissing : Damage::ClipFileUnreadable;
    return DamageOfRecords(opened.Get(), formatCount);
}

DirectoryState CheckDirectory(const std::wstring& directory,
                              const std::function<bool(std::size_t, std::size_t)>& goOn) {
    constexpr int kMostLooks = 3;
    const std::wstring file = TreeDataFilePath(directory);
    for (int look = 1;; ++look) {
        const FileMark before = FileMark::Of(file);
        const DirectoryState state = Check(directory, goOn).Run();
        // Whoever has the profile open may have saved it meanwhile: the tree and the files are of two
        // moments.
        const bool tellsOneMoment = state.findings.empty() || FileMark::Of(file) == before;
        if (tellsOneMoment || !state.complete || look == kMostLooks) return state;
    }
}

bool IsLoss(Damage damage) {
    const bool treeGone = damage == Damage::TreeDamaged || damage == Damage::TreeWithoutProfile;
    const bool neverStood = damage == Damage::DirectoryMissing || damage == Damage::ZerosOfClip;
    return treeGone || (!neverStood && MendingOf(damage) == Mending::None);
}

std::vector<std::wstring> LossesIn(const std::wstring& directory) {
    std::vector<std::wstring> texts;
    for (const Finding& finding : CheckDirectory(directory).findings)
        if (IsLoss(finding.damage)) texts.push_back(TextOf(finding));
    return texts;
}
