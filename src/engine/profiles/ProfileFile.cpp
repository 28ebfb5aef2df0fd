#include "engine/profiles/ProfileFile.h"

#include "engine/tree/modTreeEx.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

using Saved = CTreeViewEx::Saved;

namespace {

std::wstring KeptStem(const std::wstring& directory) {
    return WithBackslash(directory) + L"nxclip";
}

void TellNotBuilt() {
    ThePlatform().user.Tell(L"BuildTreeData: Profiledaten konnten nicht ermittelt werden.");
    ThePlatform().user.Tell(L"Speichern des Profils ist fehlgeschlagen !!!");
}

}  // namespace

ProfileFile::ProfileFile(const std::wstring& directory) : directory_(directory), lock_(directory) {
    if (lock_.Held()) identity_ = ThePlatform().files.Identity(directory);
}

ProfileFile ProfileFile::WithoutLock(const std::wstring& directory) {
    ProfileFile file;
    file.directory_ = directory;
    return file;
}

std::wstring ProfileFile::Path() const {
    return TreeDataFilePath(directory_);
}

bool ProfileFile::LiesIn(const std::wstring& directory, const std::wstring& identity) const {
    if (identity.empty() || identity_ != identity) return false;
    // Where the number is wrong, the lock of the one does not stand in the other. Another program may have
    // that one, but there is another tree in it.
    if (!lock_.Held() || !IsKept(directory)) return false;
    const FileMark there = FileMark::Of(TreeDataFilePath(directory));
    return there.IsKnown() && there == FileMark::Of(Path());
}

bool ProfileFile::Read(CTreeViewEx& tree) {
    Finish();
    return tree.LoadDataFromFile(Path(), mark_);
}

Saved ProfileFile::Write(CTreeViewEx& tree, const Node& profile, std::span<Node* const> without) {
    FileMark mark = mark_;
    const bool built = tree.BuildTreeData(&profile, without);
    const Saved saved = built ? tree.SaveDataToFile(Path(), mark) : Saved::Failed;
    tree.ReleaseData();
    if (!built) TellNotBuilt();
    unfinished_ |= saved != Saved::ChangedByOther;
    // A failed save may have made the file longer.
    mark_ = mark.IsKnown() ? mark : FileMark::Of(Path());
    NoteConflict(saved == Saved::ChangedByOther);
    return saved;
}

bool ProfileFile::Restore(const std::vector<std::uint8_t>& bytes) const {
    return Succeeds([&] { WriteSafeFile(Path(), bytes); });
}

void ProfileFile::Finish() {
    unfinished_ = false;
    // The other program may be in the middle of that save.
    if (!HeldByOther()) FinishSave(Path());
}

bool ProfileFile::KeepCopy() const {
    return Succeeds([&] { ::KeepCopy(Path(), KeptStem(directory_)); });
}

bool ProfileFile::KeepTree(CTreeViewEx& tree, const Node& profile) const {
    bool kept = false;
    const bool named = Succeeds([&] {
        const std::wstring copy = FreeKeptPath(KeptStem(directory_));
        kept = tree.BuildTreeData(&profile) && tree.SaveDataToFile(copy);
        FinishSave(copy);
    });
    tree.ReleaseData();
    return named && kept;
}

std::vector<std::wstring> ProfileFile::KeptCopies() const {
    std::vector<std::wstring> names = ::KeptCopies(KeptStem(directory_));
    for (std::wstring& name : names)
        name = LastPartOf(name);
    return names;
}

bool ProfileFile::GiveUpOthersTree() {
    // What is written there after the copy was made is in none: it is asked about anew.
    const FileMark kept = FileMark::Of(Path());
    if (!KeepCopy()) return false;
    mark_ = kept;
    conflict_ = ProfileConflict::None;
    return true;
}

void ProfileFile::GoOnFrom(const ProfileFile& read) {
    mark_ = read.mark_;
    conflict_ = ProfileConflict::None;
}

// The user is asked once for each change that is found.
void ProfileFile::NoteConflict(bool found) {
    using enum ProfileConflict;
    if (!found) conflict_ = None;
    if (found && conflict_ == None) conflict_ = Found;
}
