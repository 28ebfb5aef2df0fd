#include "engine/profiles/ProfileAttachment.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/FoundClips.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/FileBytes.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

// The directory is gone, not only the drive or the server that it lies on.
bool IsGone(const std::wstring& directory) {
    FilePort& files = ThePlatform().files;
    return !files.IsDirectory(directory) && files.IsDirectory(DirectoryAbove(directory));
}

bool IsProfileImage(const std::vector<std::uint8_t>& image) {
    try {
        bool any = false, isProfile = false;
        ReadTreeImage(image, [&](const KeptRecord& record) {
            if (!std::exchange(any, true)) isProfile = record.tag.starts_with('P');
            return true;
        });
        return isProfile;
    } catch (const std::exception&) {
        return false;
    }
}

std::optional<std::vector<std::uint8_t>> BytesOf(const std::wstring& file) {
    try {
        return ReadSafeFile(file);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

// There is no tree in the file, today or tomorrow: it is gone or holds something else. A file that only
// cannot be read now may be whole.
bool IsBeyondReading(const std::wstring& directory) {
    const std::wstring file = TreeDataFilePath(directory);
    if (!SafeFileExists(file)) return ThePlatform().files.IsDirectory(directory);
    const auto bytes = BytesOf(file);
    return bytes && !IsProfileImage(*bytes);
}

std::wstring CannotBeRead(const std::wstring& directory) {
    return L"Die Datei\r\n" + TreeDataFilePath(directory) + L"\r\nkann nicht gelesen werden. ";
}

// What cannot be read is kept all the same before something else takes its place.
bool KeepWhatIsThere(const std::wstring& directory) {
    return !ThePlatform().files.Exists(TreeDataFilePath(directory)) || KeepTreeFile(directory);
}

// The last kept copy that holds a profile, after a question. Null when there is none.
Node* LoadKeptCopy(CTreeViewEx& tree, const std::wstring& directory) {
    const std::vector<std::wstring> names = KeptTreeFiles(directory);
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        const auto bytes = BytesOf(WithBackslash(directory) + *name);
        if (!bytes || !IsProfileImage(*bytes)) continue;
        if (!ThePlatform().user.Ask(
                CannotBeRead(directory) + L"Soll die Kopie " + *name + L" verwendet werden ?",
                L"Profil beschädigt", false) ||
            !KeepWhatIsThere(directory))
            return nullptr;
        try {
            WriteSafeFile(TreeDataFilePath(directory), *bytes);
            FinishSave(TreeDataFilePath(directory));
        } catch (const RuntimeError& error) {
            ThePlatform().user.Tell(error.Description());
            return nullptr;
        }
        return LoadProfileDirectory(tree, directory);
    }
    return nullptr;
}

// A new tree over the clips that lie in the directory, after a question. Null when there are none.
Node* BuildFromClips(CTreeViewEx& tree, const std::wstring& name, const std::wstring& directory) {
    const std::vector<FoundClip> clips = FindClips(directory, nullptr);
    if (clips.empty()) return nullptr;
    if (!ThePlatform().user.Ask(CannotBeRead(directory) + L"Soll das Profil aus seinen " +
                                    NumberText(static_cast<int>(clips.size())) +
                                    L" Clipdateien neu aufgebaut werden ?",
                                L"Profil beschädigt", false) ||
        !KeepWhatIsThere(directory))
        return nullptr;
    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    Node& profile = nodes.Add(nullptr, NodeRelation::Last, name, std::wstring(L"Profile"));
    profile.SetTag(MakeProfileTag(clips.back().number, directory, false, L""));
    AddFoundClips(nodes, profile, clips, directory);
    const bool saved = SaveProfile(tree, profile);
    // Nobody waits here, and the entry that would remember it is not made yet.
    FinishSave(TreeDataFilePath(directory));
    if (saved) return &profile;
    nodes.Remove(profile);
    return nullptr;
}

Node* RecoverProfile(CTreeViewEx& tree, const std::wstring& directory) {
    if (directory.find(L'&') != std::wstring::npos || !IsBeyondReading(directory)) return nullptr;
    if (Node* const profile = LoadKeptCopy(tree, directory); profile != nullptr) return profile;
    const CProfile* const waiting = Profiles().ProfileInDirectory(directory);
    const std::wstring name = waiting != nullptr ? waiting->Name : LastPartOf(WithoutBackslash(directory));
    return BuildFromClips(tree, name, directory);
}

CProfile& EntryFor(const Node& profile, const std::wstring& directory) {
    CProfile* const waiting = Profiles().ProfileInDirectory(directory);
    if (waiting == nullptr) return Profiles().Add(profile.Text(), directory, false, nullptr);
    waiting->Name = profile.Text();
    waiting->Directory = directory;
    return *waiting;
}

// Takes the place of `old` in tree and list. Null when it cannot be loaded; `old` stays then.
Node* LoadAgain(CTreeViewEx& tree, CProfile& entry, ActiveContainer& container) {
    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    Node* const loaded = LoadProfileDirectory(tree, entry.Directory);
    if (loaded == nullptr) return nullptr;
    Node& old = *entry.Node;
    Node* const profile = tree.CopyNode(&old, loaded, false, false, true);
    nodes.Remove(*loaded);
    const bool wasSelected = tree.IsSubNode(nodes.Selected(), &old);
    if (tree.IsSubNode(container.Get(), &old)) container.SetActiveContainer(profile);
    if (wasSelected) nodes.Select(profile);
    nodes.Remove(old);
    entry.Node = profile;
    entry.Name = profile->Text();
    return profile;
}

}  // namespace

Node* AttachProfileDirectory(CTreeViewEx& tree, const std::wstring& directory) {
    if (directory.empty()) return nullptr;
    const BusyScope operation(Busy::TreeOperation);
    ProfileLock lock(directory);
    const bool editedByOther = lock.HeldByOther();
    if (!editedByOther) FinishSave(TreeDataFilePath(directory));
    Node* profile = LoadProfileDirectory(tree, directory);
    if (profile == nullptr && !editedByOther) profile = RecoverProfile(tree, directory);
    if (profile == nullptr) return nullptr;
    EnterProfile(*profile, directory, std::move(lock));
    if (editedByOther)
        ThePlatform().user.Tell(kEditedByOther, profile->Text());
    else
        OfferFoundClips(tree, *profile);
    return profile;
}

void EnterProfile(Node& profile, const std::wstring& directory, ProfileLock lock) {
    CProfile& entry = EntryFor(profile, directory);
    entry.Node = &profile;
    entry.Lock = std::move(lock);
    entry.OnDisk = FileMark::Of(TreeDataFilePath(directory));
    entry.Identity = ThePlatform().files.Identity(directory);
}

void LoadListedProfiles(CTreeViewEx& tree) {
    const BusyScope operation(Busy::TreeOperation);
    const HourglassScope hourglass(ThePlatform().user);
    UserPort& user = ThePlatform().user;
    tree.TreeView()->Clear();
    CProfiles listed;
    listed.LoadRegistry();
    Profiles().Clear();
    for (const CProfile* entry : listed.NewEnum()) {
        // The same directory under another spelling.
        if (Profiles().ProfileInDirectory(entry->Directory) != nullptr) continue;
        CProfile& waiting = Profiles().Add(entry->Name, entry->Directory, false, nullptr);
        if (AttachProfileDirectory(tree, entry->Directory) != nullptr) continue;
        user.Tell(L"Profil \"" + entry->Name + L"\" konnte nicht geladen werden");
        const bool leftOut =
            entry->Directory.empty() ||
            (IsGone(entry->Directory) &&
             !user.Ask(L"Das Verzeichnis\r\n" + entry->Directory +
                           L"\r\nexistiert nicht. Soll das Profil in der Profilliste bleiben ?",
                       L"Profil \"" + entry->Name + L"\"", false));
        if (leftOut) Profiles().Remove(waiting.Directory);
    }
}

bool AnyEditedByOther() {
    const std::vector<CProfile*> entries = Profiles().NewEnum();
    return std::any_of(entries.begin(), entries.end(),
                       [](const CProfile* entry) { return entry->Lock.HeldByOther(); });
}

bool TakeOverFreedProfiles(CTreeViewEx& tree, ActiveContainer& container) {
    const BusyScope operation(Busy::TreeOperation);
    bool any = false;
    for (CProfile* entry : Profiles().NewEnum()) {
        if (entry->Node == nullptr || !entry->Lock.HeldByOther()) continue;
        ProfileLock lock(entry->Directory);
        if (!lock.Held()) continue;
        FinishSave(TreeDataFilePath(entry->Directory));
        Node* const profile = LoadAgain(tree, *entry, container);
        if (profile == nullptr) continue;
        any = true;
        EnterProfile(*profile, entry->Directory, std::move(lock));
        ThePlatform().user.Status(L"Das Profil \"" + profile->Text() + L"\" kann wieder bearbeitet werden.");
    }
    return any;
}
