#include "engine/profiles/ProfileStore.h"

#include <algorithm>
#include <vector>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/Tags.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FlushLater.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

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

using Saved = CTreeViewEx::Saved;

Saved SaveEntry(CTreeViewEx& tree, CProfile& entry, std::span<Node* const> without) {
    const Saved saved = entry.File.Write(tree, *entry.Node, without);
    // After a failure file and tree may differ: the next save of all makes up for it.
    entry.Dirty = saved != Saved::Whole;
    if (saved == Saved::ChangedByOther)
        ThePlatform().user.Status(
            L"Das Profil \"" + entry.Name +
            L"\" ist nicht gespeichert: Ein anderes Programm hat seine Datei geändert.");
    return saved;
}

}  // namespace

Node* LoadProfile(CTreeViewEx& tree, ProfileFile& file) {
    const std::wstring& directory = file.Directory();
    // A profile's tag cannot hold such a directory.
    if (directory.empty() || directory.find(L'&') != std::wstring::npos) return nullptr;
    if (!file.Read(tree)) return nullptr;

    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    const int before = nodes.Count();
    Node* const profile = tree.BuildSubTreeFromData(nullptr);
    const bool complete = nodes.Count() - before == tree.DataCount();
    tree.ReleaseData();

    std::vector<Node*> roots = RootNodesFrom(nodes, before + 1);
    const bool damaged = !complete || roots.size() > 1;
    // Only a part of the file is in the tree then, and that part is what the next save writes over it.
    if (!IsProfileNode(profile) || (damaged && !file.KeepCopy())) {
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

Saved TrySaveProfile(CTreeViewEx& tree, Node& profile, std::span<Node* const> without) {
    if (IsEditedByOther(&profile)) {
        ThePlatform().user.Inform(kEditedByOther);
        return Saved::Failed;
    }
    if (CProfile* const entry = Profiles().ProfileOf(&profile)) return SaveEntry(tree, *entry, without);
    return ProfileFile::WithoutLock(GetProfileDirectory(&profile)).Write(tree, profile, without);
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
        if (entry->File.Conflict() == ProfileConflict::None) allSaved = false;
    }
    if (!allSaved) ThePlatform().user.Tell(L"Speichern des Profiles ist fehlgeschlagen !!!");
    return allSaved;
}

void KeepTreesInConflict(CTreeViewEx& tree) {
    for (const CProfile* entry : Profiles().NewEnum())
        if (entry->File.Conflict() != ProfileConflict::None && entry->Node != nullptr)
            entry->File.KeepTree(tree, *entry->Node);
}

bool FinishNextSave() {
    if (FlushNext()) return true;
    // While others hold a clip's file, the tree that names it keeps its journal.
    if (AnyToFlush()) return false;
    for (CProfile* entry : Profiles().NewEnum()) {
        if (!entry->File.IsUnfinished()) continue;
        // What cannot be finished now is finished by the next save or the next load.
        entry->File.Finish();
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
