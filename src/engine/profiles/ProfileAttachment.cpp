#include "engine/profiles/ProfileAttachment.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/FoundClips.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/WaitingProfiles.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/NodePlace.h"
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
            if (!std::exchange(any, true)) isProfile = record.tag.starts_with('P') && record.depth == 0;
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
bool IsBeyondReading(const ProfileFile& file) {
    if (!SafeFileExists(file.Path())) return ThePlatform().files.IsDirectory(file.Directory());
    const auto bytes = BytesOf(file.Path());
    return bytes && !IsProfileImage(*bytes);
}

std::wstring NotLoaded(const std::wstring& name) {
    return L"Profil \"" + name + L"\" konnte nicht geladen werden";
}

std::wstring CannotBeRead(const ProfileFile& file) {
    return L"Die Datei\r\n" + file.Path() + L"\r\nkann nicht gelesen werden. ";
}

// What cannot be read is kept all the same before something else takes its place.
bool KeepWhatIsThere(const ProfileFile& file) {
    return !MayBeThere(file.Path()) || file.KeepCopy();
}

// From the last kept copy that holds a profile, after a question. None when there is none, or none that the
// user wants. Null after a failure, also when a copy cannot be read: it may be the one, and a tree from the
// clips alone would be poorer.
std::optional<Node*> LoadKeptCopy(CTreeViewEx& tree, ProfileFile& file) {
    const std::vector<std::wstring> names = file.KeptCopies();
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        const auto bytes = BytesOf(WithBackslash(file.Directory()) + *name);
        if (!bytes) return nullptr;
        if (!IsProfileImage(*bytes)) continue;
        if (!ThePlatform().user.Ask(CannotBeRead(file) + L"Soll die Kopie " + *name + L" verwendet werden ?",
                                    L"Profil beschädigt", false))
            return std::nullopt;
        return KeepWhatIsThere(file) && file.Restore(*bytes) ? LoadProfile(tree, file) : nullptr;
    }
    return std::nullopt;
}

// A new tree over the clips that lie in the directory, after a question. Null when there are none.
Node* BuildFromClips(CTreeViewEx& tree, const std::wstring& name, ProfileFile& file) {
    const std::vector<FoundClip> clips = FindClips(file.Directory(), nullptr);
    if (clips.empty()) return nullptr;
    if (!ThePlatform().user.Ask(CannotBeRead(file) + L"Soll das Profil aus seinen " +
                                    NumberText(static_cast<int>(clips.size())) +
                                    L" Clipdateien neu aufgebaut werden ?",
                                L"Profil beschädigt", false) ||
        !KeepWhatIsThere(file))
        return nullptr;
    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    Node& profile = nodes.Add(nullptr, NodeRelation::Last, name, std::wstring(L"Profile"));
    profile.SetTag(MakeProfileTag(clips.back().number, file.Directory(), false, L""));
    AddFoundClips(nodes, profile, clips);
    const bool saved = SaveProfile(tree, profile);
    // Nobody waits here, and the entry that would remember it is not made yet.
    file.Finish();
    nodes.Remove(profile);
    return saved ? LoadProfile(tree, file) : nullptr;
}

Node* RecoverProfile(CTreeViewEx& tree, ProfileFile& file) {
    const std::wstring& directory = file.Directory();
    if (directory.find(L'&') != std::wstring::npos || !IsBeyondReading(file)) return nullptr;
    if (const auto profile = LoadKeptCopy(tree, file)) return *profile;
    const CProfile* const waiting = Profiles().ProfileSpelled(directory);
    const std::wstring name = waiting != nullptr ? waiting->Name : LastPartOf(WithoutBackslash(directory));
    return BuildFromClips(tree, name, file);
}

CProfile& EntryFor(const Node& profile, const std::wstring& directory) {
    CProfile* const waiting = Profiles().ProfileSpelled(directory);
    if (waiting == nullptr) return Profiles().Add(profile.Text(), directory, false, nullptr);
    waiting->Name = profile.Text();
    waiting->Directory = directory;
    return *waiting;
}

// The node of the entry gives way to `loaded`, which moves to its place. Selection and active container
// follow by their place below the profile.
Node& TakePlace(CTreeViewEx& tree, CProfile& entry, Node& loaded, ActiveContainer& container) {
    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    Node& old = *entry.Node;
    Node& profile = *tree.CopyNode(&old, &loaded, false, false, true);
    nodes.Remove(loaded);
    if (tree.IsSubNode(container.Get(), &old)) {
        const NodePlace place = PlaceBelow(old, *container.Get());
        container.MoveTo(&NearestToPlace(profile, place));
        if (PlaceBelow(profile, *container.Get()).path != place.path)
            ThePlatform().user.TellLater(
                L"Die aktive Ablage ist nicht mehr vorhanden.\r\nNeue Clips kommen in \"" +
                container.Title() + L"\".");
    }
    if (tree.IsSubNode(nodes.Selected(), &old))
        nodes.Select(&NearestToPlace(profile, PlaceBelow(old, *nodes.Selected())));
    nodes.Remove(old);
    entry.Node = &profile;
    entry.Name = profile.Text();
    return profile;
}

// The entry stays in the list; the caller has told the user why its profile leaves the tree.
void TakeOutOfTree(CTreeViewEx& tree, CProfile& entry, ActiveContainer& container) {
    container.LeaveSubtree(*entry.Node);
    tree.TreeView()->Remove(*std::exchange(entry.Node, nullptr));
    entry.File = ProfileFile::WithoutLock(entry.Directory);
    ThePlatform().user.TellLater(NotLoaded(entry.Name));
}

// The same directory under another spelling.
bool IsListedTwice(const CProfile& entry) {
    const std::wstring identity = ThePlatform().files.Identity(entry.Directory);
    for (const CProfile* first : Profiles().NewEnum()) {
        if (first == &entry) return false;
        if (LieIn(*first, entry.Directory, identity)) return true;
    }
    return false;
}

// Asks until the profile is found or the user has decided. False when it is to leave the list.
bool AskWhereItIs(CTreeViewEx& tree, CProfile& entry, const AskForMissingProfile& ask) {
    for (;;) {
        const MissingProfileAnswer answer = ask(entry.Name, entry.Directory);
        if (answer.choice != MissingProfileAnswer::Choice::Moved)
            return answer.choice == MissingProfileAnswer::Choice::Keep;
        const CProfile* const there = Profiles().ProfileInDirectory(answer.directory);
        const std::wstring before = entry.Directory;
        if (there != nullptr && there != &entry) {
            ThePlatform().user.Tell(kAlreadyAttached);
            continue;
        }
        entry.Directory = answer.directory;
        if (AttachProfileDirectory(tree, answer.directory) != nullptr) {
            StoredContainerMoved(before, answer.directory);
            return true;
        }
        entry.Directory = before;
        ThePlatform().user.Tell(NotLoaded(entry.Name));
    }
}

// False when it is to leave the list.
bool LoadListed(CTreeViewEx& tree, CProfile& entry, const AskForMissingProfile& ask) {
    if (IsSilent(entry)) {
        ShowWaiting(*tree.TreeView(), entry);
        return true;
    }
    if (IsListedTwice(entry)) return false;
    if (!entry.Directory.empty() && IsGone(entry.Directory)) return AskWhereItIs(tree, entry, ask);
    if (AttachProfileDirectory(tree, entry.Directory) != nullptr) return true;
    ThePlatform().user.Tell(NotLoaded(entry.Name));
    return !entry.Directory.empty();
}

bool IsListed(const CProfile* entry) {
    const std::vector<CProfile*> entries = Profiles().NewEnum();
    return std::find(entries.begin(), entries.end(), entry) != entries.end();
}

// Null when the directory holds nothing that could be loaded or rebuilt.
Node* LoadOrRecover(CTreeViewEx& tree, ProfileFile& file) {
    Node* const profile = LoadProfile(tree, file);
    return profile != nullptr ? profile : RecoverProfile(tree, file);
}

// Null, and nothing is asked any more, when it was detached or settled while a question stood.
CProfile* StillInConflict(const std::wstring& directory) {
    CProfile* const entry = Profiles().GetProfile(directory);
    const bool stands = entry != nullptr && entry->Node != nullptr;
    return stands && entry->File.Conflict() == ProfileConflict::Found ? entry : nullptr;
}

bool LoadOthersTree(CTreeViewEx& tree, CProfile& entry, ActiveContainer& container) {
    if (!entry.File.KeepTree(tree, *entry.Node)) return false;
    ProfileFile others = ProfileFile::WithoutLock(entry.Directory);
    Node* const loaded = LoadProfile(tree, others);
    if (loaded == nullptr) return false;
    Node& profile = TakePlace(tree, entry, *loaded, container);
    entry.File.GoOnFrom(others);
    entry.Dirty = false;
    StoreProfileList();
    OfferFoundClips(tree, profile);
    return true;
}

bool WriteOverOthersTree(CTreeViewEx& tree, CProfile& entry) {
    return entry.File.GiveUpOthersTree() && SaveProfile(tree, *entry.Node);
}

// True when the tree was loaded again.
bool SettleConflict(CTreeViewEx& tree, const std::wstring& directory, ActiveContainer& container) {
    UserPort& user = ThePlatform().user;
    const std::wstring what =
        L"Die Datei\r\n" + TreeDataFilePath(directory) +
        L"\r\nwurde von einem anderen Programm geändert. Solange das so bleibt, wird das "
        L"Profil nicht gespeichert.\r\n\r\n";
    const wchar_t* const title = L"Profil geändert";
    const bool loads =
        user.Ask(what + L"Soll es neu geladen werden ?\r\n(Der bisherige Baum bleibt als Kopie erhalten.)",
                 title, false);
    const bool writes = !loads && StillInConflict(directory) != nullptr &&
                        user.Ask(what +
                                     L"Soll die Datei überschrieben werden ?\r\n(Eine Kopie bleibt "
                                     L"erhalten.)",
                                 title, true);
    CProfile* const entry = StillInConflict(directory);
    if (entry == nullptr) return false;
    entry->File.PutConflictOff();
    const BusyScope operation(Busy::TreeOperation);
    if (writes) WriteOverOthersTree(tree, *entry);
    return loads && LoadOthersTree(tree, *entry, container);
}

}  // namespace

Node* AttachProfileDirectory(CTreeViewEx& tree, const std::wstring& directory) {
    if (directory.empty()) return nullptr;
    const BusyScope operation(Busy::TreeOperation);
    ProfileFile file(directory);
    const bool editedByOther = file.HeldByOther();
    Node* const profile = editedByOther ? LoadProfile(tree, file) : LoadOrRecover(tree, file);
    if (profile == nullptr) return nullptr;
    EnterProfile(*profile, std::move(file));
    if (editedByOther)
        ThePlatform().user.Inform(kEditedByOther, profile->Text());
    else
        OfferFoundClips(tree, *profile);
    return profile;
}

void EnterProfile(Node& profile, ProfileFile file) {
    CProfile& entry = EntryFor(profile, file.Directory());
    entry.Node = &profile;
    entry.File = std::move(file);
}

void LoadListedProfiles(CTreeViewEx& tree, const AskForMissingProfile& ask) {
    const BusyScope operation(Busy::TreeOperation);
    const HourglassScope hourglass(ThePlatform().user);
    tree.TreeView()->Clear();
    Profiles().LoadRegistry();
    AskAllDirectories();
    for (CProfile* entry : Profiles().NewEnum()) {
        const bool nothing = entry->Name.empty() && entry->Directory.empty();
        if (nothing || !LoadListed(tree, *entry, ask)) Profiles().Remove(entry->Directory);
    }
    StoreProfileList();
}

bool AnyEditedByOther() {
    const std::vector<CProfile*> entries = Profiles().NewEnum();
    return std::any_of(entries.begin(), entries.end(),
                       [](const CProfile* entry) { return entry->File.HeldByOther(); });
}

bool TakeOverFreedProfiles(CTreeViewEx& tree, ActiveContainer& container) {
    const BusyScope operation(Busy::TreeOperation);
    bool any = false;
    for (CProfile* entry : Profiles().NewEnum()) {
        // While something was asked, everything may have come to its end.
        if (!IsListed(entry)) return any;
        if (entry->Node == nullptr || !entry->File.HeldByOther()) continue;
        ProfileFile file(entry->Directory);
        if (file.LockFile() == FileHandle::None) continue;
        const NodeRef loaded(LoadOrRecover(tree, file));
        if (!IsListed(entry)) return any;
        any = true;
        if (loaded.Get() == nullptr) {
            TakeOutOfTree(tree, *entry, container);
            continue;
        }
        Node& profile = TakePlace(tree, *entry, *loaded.Get(), container);
        EnterProfile(profile, std::move(file));
        ThePlatform().user.Status(L"Das Profil \"" + profile.Text() + L"\" kann wieder bearbeitet werden.");
        OfferFoundClips(tree, profile);
    }
    if (any) StoreProfileList();
    return any;
}

bool SettleConflicts(CTreeViewEx& tree, ActiveContainer& container) {
    std::vector<std::wstring> directories;
    for (const CProfile* entry : Profiles().NewEnum())
        if (entry->File.Conflict() == ProfileConflict::Found) directories.push_back(entry->Directory);
    bool anyLoaded = false;
    for (const std::wstring& directory : directories)
        anyLoaded = SettleConflict(tree, directory, container) || anyLoaded;
    return anyLoaded;
}

void LetProfileGo(FileHandle lock) {
    for (CProfile* entry : Profiles().NewEnum()) {
        if (lock == FileHandle::None || entry->File.LockFile() != lock) continue;
        FinishSaves();
        entry->File.LetGo();
        ThePlatform().user.Status(L"Das Profil \"" + entry->Name +
                                  L"\" ist freigegeben: Sein Laufwerk soll entfernt werden.");
    }
}
