#include "engine/profiles/ProfileStore.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/Tags.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FlushLater.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

// The nodes of the collection from `first` on (an index) that stand at the root level.
std::vector<Node*> RootNodesFrom(const NodeCollection& nodes, int first) {
    std::vector<Node*> roots;
    for (int i = first; i <= nodes.Count(); ++i) {
        if (nodes.Item(i)->Parent() == nullptr) roots.push_back(nodes.Item(i));
    }
    return roots;
}

// A tag whose counter is no number, or one that leaves no room, gets the counter 0; what stands behind it
// stays.
void MendCounter(Node& profile) {
    const std::wstring tag = profile.Tag();
    if (!IsTrustedClipNumber(ProfileTag::CounterOf(tag).value_or(-1)))
        profile.SetTag(ProfileTag::WithCounter(tag, 0));
}

// The tag is what leads from a clip to its file, so it must be right whatever the file says: the directory,
// and a counter that gives no number a second time.
void MakeTagTrue(Node& profile, const std::wstring& directory) {
    MendCounter(profile);
    std::int32_t highest = 0;
    for (TreeWalk walk(&profile); walk.InSubtree(); walk.Step()) {
        const std::int32_t number = ClipNumberOf(walk.Current());
        if (IsTrustedClipNumber(number)) highest = std::max(highest, number);
    }
    SetProfileDirectory(&profile, directory);
    RaiseClipCounter(profile, highest);
}

// The file keeps the picture of what was the active container when it was saved.
void ShowKinds(Node& profile) {
    for (TreeWalk walk(&profile); walk.InSubtree(); walk.Step())
        if (IsShownAsActive(*walk.Current())) ShowKind(*walk.Current());
}

std::wstring KeptStem(const std::wstring& directory) {
    return WithBackslash(directory) + L"nxclip";
}

using Saved = CTreeViewEx::Saved;

// The user is asked once for each change that is found.
void NoteConflict(CProfile& entry, bool found) {
    using enum ProfileConflict;
    if (!found) entry.Conflict = None;
    if (found && entry.Conflict == None) entry.Conflict = Found;
    if (found)
        ThePlatform().user.Status(
            L"Das Profil \"" + entry.Name +
            L"\" ist nicht gespeichert: Ein anderes Programm hat seine Datei geändert.");
}

Saved WriteTree(CTreeViewEx& tree, const Node& profile, std::span<Node* const> without,
                const std::wstring& file, FileMark& mark) {
    const bool built = tree.BuildTreeData(&profile, without);
    const Saved saved = built ? tree.SaveDataToFile(file, mark) : Saved::Failed;
    tree.ReleaseData();
    if (!built) {
        ThePlatform().user.Tell(L"BuildTreeData: Profiledaten konnten nicht ermittelt werden.");
        ThePlatform().user.Tell(L"Speichern des Profils ist fehlgeschlagen !!!");
    }
    return saved;
}

}  // namespace

Node* LoadProfileDirectory(CTreeViewEx& tree, const std::wstring& directory) {
    FileMark any;
    return LoadProfileDirectory(tree, directory, any);
}

Node* LoadProfileDirectory(CTreeViewEx& tree, const std::wstring& directory, FileMark& onDisk) {
    // A profile's tag cannot hold such a directory.
    if (directory.empty() || directory.find(L'&') != std::wstring::npos) return nullptr;
    if (!tree.LoadDataFromFile(TreeDataFilePath(directory), onDisk)) return nullptr;

    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    const int before = nodes.Count();
    Node* const profile = tree.BuildSubTreeFromData(nullptr);
    const bool complete = nodes.Count() - before == tree.DataCount();
    tree.ReleaseData();

    std::vector<Node*> roots = RootNodesFrom(nodes, before + 1);
    const bool damaged = !complete || roots.size() > 1;
    // Only a part of the file is in the tree then, and that part is what the next save writes over it.
    if (!IsProfileNode(profile) || (damaged && !KeepTreeFile(directory))) {
        nodes.RemoveAll(roots);
        return nullptr;
    }
    if (roots.size() > 1) {
        // A second top node belongs to no profile of the list: it could neither be saved nor deleted.
        ThePlatform().user.Tell(L"Fataler Fehler: ungültige Knotentiefe.");
        std::erase(roots, profile);
        nodes.RemoveAll(roots);
    }
    MakeTagTrue(*profile, directory);
    ShowKinds(*profile);
    return profile;
}

bool KeepTreeFile(const std::wstring& directory) {
    return Succeeds([&] { KeepCopy(TreeDataFilePath(directory), KeptStem(directory)); });
}

std::vector<std::wstring> KeptTreeFiles(const std::wstring& directory) {
    std::vector<std::wstring> names = KeptCopies(KeptStem(directory));
    for (std::wstring& name : names)
        name = LastPartOf(name);
    return names;
}

CTreeViewEx::Saved TrySaveProfile(CTreeViewEx& tree, Node& profile, std::span<Node* const> without) {
    UserPort& user = ThePlatform().user;
    if (IsEditedByOther(&profile)) {
        user.Inform(kEditedByOther);
        return Saved::Failed;
    }
    CProfile* const entry = Profiles().ProfileOf(&profile);
    const std::wstring file = TreeDataFilePath(GetProfileDirectory(&profile));
    FileMark mark = entry != nullptr ? entry->OnDisk : FileMark();
    const Saved saved = WriteTree(tree, profile, without, file, mark);
    if (entry != nullptr) {
        // After a failure file and tree may differ: the next save of all makes up for it.
        entry->Dirty = saved != Saved::Whole;
        entry->Unfinished |= saved != Saved::ChangedByOther;
        // A failed save may have made the file longer.
        entry->OnDisk = mark.IsKnown() ? mark : FileMark::Of(file);
        NoteConflict(*entry, saved == Saved::ChangedByOther);
    }
    return saved;
}

bool SaveProfile(CTreeViewEx& tree, Node& profile, std::span<Node* const> without) {
    const Saved saved = TrySaveProfile(tree, profile, without);
    if (saved == Saved::DiskFull) TellError(DiskFullError(TreeDataFilePath(GetProfileDirectory(&profile))));
    return saved == Saved::Whole;
}

bool SaveAllProfiles(CTreeViewEx& tree) {
    bool allSaved = true;
    for (CProfile* entry : Profiles().NewEnum()) {
        if (!entry->Dirty || entry->Node == nullptr || SaveProfile(tree, *entry->Node)) continue;
        if (entry->Conflict == ProfileConflict::None) allSaved = false;
    }
    if (!allSaved) ThePlatform().user.Tell(L"Speichern des Profiles ist fehlgeschlagen !!!");
    return allSaved;
}

bool KeepOwnTree(CTreeViewEx& tree, const CProfile& entry) {
    bool kept = false;
    const bool named = Succeeds([&] {
        const std::wstring copy = FreeKeptPath(KeptStem(entry.Directory));
        kept = tree.BuildTreeData(entry.Node) && tree.SaveDataToFile(copy);
        FinishSave(copy);
    });
    tree.ReleaseData();
    return named && kept;
}

void KeepTreesInConflict(CTreeViewEx& tree) {
    for (const CProfile* entry : Profiles().NewEnum())
        if (entry->Conflict != ProfileConflict::None && entry->Node != nullptr) KeepOwnTree(tree, *entry);
}

bool FinishNextSave() {
    if (FlushNext()) return true;
    // While others hold a clip's file, the tree that names it keeps its journal.
    if (AnyToFlush()) return false;
    for (CProfile* entry : Profiles().NewEnum()) {
        if (!std::exchange(entry->Unfinished, false)) continue;
        // What cannot be finished now is finished by the next save or the next load.
        FinishSave(TreeDataFilePath(entry->Directory));
        return true;
    }
    return false;
}

void FinishSaves() {
    while (FinishNextSave()) {
    }
}

void SetProfileChanged(Node* node) {
    const Node* const profile = GetProfileNode(node, true);
    if (profile != nullptr) SetDirtyProfile(GetProfileDirectory(profile));
}
