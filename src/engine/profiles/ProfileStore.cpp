#include "engine/profiles/ProfileStore.h"

#include <algorithm>
#include <vector>

#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Paths.h"
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

// The tag is what leads from a clip to its file, so it must be right whatever the file says: the directory,
// and a counter that gives no number a second time.
void MakeTagTrue(Node& profile, const std::wstring& directory) {
    std::int32_t highest = 0;
    for (TreeWalk walk(&profile); walk.InSubtree(); walk.Step()) {
        highest = std::max(highest, ClipNumberOf(walk.Current()));
    }
    try {
        SetProfileDirectory(&profile, directory);
    } catch (const RuntimeError&) {
        profile.SetTag(MakeProfileTag(0, directory, false, L""));
    }
    RaiseClipCounter(profile, highest);
}

// The file keeps the picture of what was the active container when it was saved.
void ShowKinds(Node& profile) {
    for (TreeWalk walk(&profile); walk.InSubtree(); walk.Step()) {
        Node& node = *walk.Current();
        if (node.Image() == ImageValue(std::wstring(L"Camera"))) node.SetImage(KindImage(&node));
    }
}

// Only a part of the file is in the tree, and that part is what the next save writes over it.
void KeepDamagedFile(const std::wstring& directory) {
    const std::wstring file = TreeDataFilePath(directory);
    ThePlatform().files.Copy(file, WithBackslash(directory) + L"nxclip.bak", false);
}

}  // namespace

Node* LoadProfileDirectory(CTreeViewEx& tree, const std::wstring& directory) {
    // A profile's tag cannot hold such a directory.
    if (directory.empty() || directory.find(L'&') != std::wstring::npos) return nullptr;
    if (!tree.LoadDataFromFile(TreeDataFilePath(directory))) return nullptr;

    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    const int before = nodes.Count();
    Node* const profile = tree.BuildSubTreeFromData(nullptr);
    const bool complete = nodes.Count() - before == tree.Data().Count;
    tree.ReleaseData();

    std::vector<Node*> roots = RootNodesFrom(nodes, before + 1);
    if (!IsProfileNode(profile)) {
        nodes.RemoveAll(roots);
        return nullptr;
    }
    if (!complete || roots.size() > 1) KeepDamagedFile(directory);
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

void LoadListedProfiles(CTreeViewEx& tree) {
    const HourglassScope hourglass(ThePlatform().user);
    tree.TreeView()->Clear();
    CProfiles listed;
    listed.LoadRegistry();
    Profiles().Clear();
    for (const CProfile* entry : listed.NewEnum()) {
        // The same directory with and without "\" at its end.
        if (Profiles().ProfileInDirectory(entry->Directory) != nullptr) continue;
        Node* const node = LoadProfileDirectory(tree, entry->Directory);
        if (node != nullptr) {
            Profiles().Add(node->Text(), entry->Directory, false, node);
        } else {
            ThePlatform().user.Tell(L"Profil \"" + entry->Name + L"\" konnte nicht geladen werden");
        }
    }
}

bool SaveProfile(CTreeViewEx& tree, Node& profile, Node* without) {
    UserPort& user = ThePlatform().user;
    bool saved = tree.BuildTreeData(&profile, without);
    if (saved) {
        saved = tree.SaveDataToFile(TreeDataFilePath(GetProfileDirectory(&profile)));
        tree.ReleaseData();
    } else {
        user.Tell(L"BuildTreeData: Profiledaten konnten nicht ermittelt werden.");
    }
    if (!saved) user.Tell(L"Speichern des Profils ist fehlgeschlagen !!!");

    // After a failure file and tree may differ: the next save of all makes up for it.
    CProfile* const entry = Profiles().ProfileOf(&profile);
    if (entry != nullptr) entry->Dirty = !saved;
    return saved;
}

bool SaveAllProfiles(CTreeViewEx& tree) {
    bool allSaved = true;
    for (CProfile* entry : Profiles().NewEnum()) {
        if (!entry->Dirty || entry->Node == nullptr) continue;
        if (!SaveProfile(tree, *entry->Node)) allSaved = false;
    }
    if (!allSaved) ThePlatform().user.Tell(L"Speichern des Profiles ist fehlgeschlagen !!!");
    return allSaved;
}

void SetProfileChanged(Node* node) {
    const Node* const profile = GetProfileNode(node, true);
    if (profile != nullptr) SetDirtyProfile(GetProfileDirectory(profile));
}
