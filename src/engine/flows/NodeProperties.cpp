#include "engine/flows/NodeProperties.h"

#include "engine/process/StoredLetters.h"
#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/DeletedFolder.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/ByteBuffer.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

// True when there is nothing to refuse; else the user is told.
bool Accepted(const std::wstring& refusal) {
    if (!refusal.empty()) ThePlatform().user.Inform(refusal);
    return refusal.empty();
}

void SaveChange(CTreeViewEx& tree, Node& node) {
    SetProfileChanged(&node);
    SaveAllProfiles(tree);
}

}  // namespace

bool NameCanBeConfirmed(const std::wstring& name) {
    return !Trim(name).empty();
}

std::wstring NameRefusal(const std::wstring& name) {
    if (!NameCanBeConfirmed(name)) return L"Geben Sie bitte einen Namen ein.";
    if (!FitsStoredText(name)) return L"Der Name ist zu lang !!!";
    return LetterRefusal(name, L"in einem Namen");
}

std::wstring InfoRefusal(const std::wstring& info, const std::wstring& tag) {
    if (!FitsStoredText(tag)) return L"Die Informationen sind zu lang !!!";
    return LetterRefusal(info, L"in den Informationen");
}

ClipProperties ReadClipProperties(const Node& clip) {
    const NodeAttributes read = AttributesOf(&clip);
    return {clip.Text(), read.info, read.timeCaptured, read.formatCount, ClipFileOf(&clip)};
}

bool ApplyClipProperties(CTreeViewEx& tree, Node& clip, const std::wstring& name, const std::wstring& info) {
    const BusyScope operation(Busy::TreeOperation);
    if (!ChangeAllowed(&clip)) return false;
    const NodeAttributes read = AttributesOf(&clip);
    const std::wstring tag = MakeClipTag(read.clipNumber, read.formatCount, read.timeCaptured, info);
    if (!Accepted(NameRefusal(name)) || !Accepted(InfoRefusal(info, tag))) return false;
    // A damaged tag leads to no file; rebuilt from what could be read, it would lead to a wrong one.
    const bool damaged = ClipNumberOf(&clip) == 0;
    if (damaged && info != read.info) {
        Accepted(
            L"Der Eintrag des Clips ist beschädigt. Die Informationen können nicht gespeichert werden !!!");
        return false;
    }
    clip.SetText(name);
    if (!damaged) clip.SetTag(tag);
    SaveChange(tree, clip);
    return true;
}

FolderProperties ReadFolderProperties(const Node& folder) {
    return {folder.Text(), ParseStructureTag(folder.Tag())};
}

bool ApplyFolderProperties(CTreeViewEx& tree, Node& folder, const std::wstring& name,
                           const std::wstring& info) {
    const BusyScope operation(Busy::TreeOperation);
    if (!ChangeAllowed(&folder)) return false;
    const std::wstring tag = MakeStructureTag(info);
    if (!Accepted(NameRefusal(name)) || !Accepted(InfoRefusal(info, tag))) return false;
    folder.SetText(name);
    folder.SetTag(tag);
    SaveChange(tree, folder);
    return true;
}

Node* NewFolder(CTreeViewEx& tree, Node* container, const std::wstring& name, const std::wstring& info) {
    const BusyScope operation(Busy::TreeOperation);
    if (!IsNodeOfKind(container, kProfileKind | kStructureKind) || !ChangeAllowed(container)) return nullptr;
    const std::wstring tag = MakeStructureTag(info);
    if (!Accepted(NameRefusal(name)) || !Accepted(InfoRefusal(info, tag))) return nullptr;
    Node& folder = AddInFrontOfDeleted(*tree.TreeView(), *container, name, L"Structure");
    folder.SetTag(tag);
    SaveChange(tree, folder);
    return &folder;
}

bool RenameNode(CTreeViewEx& tree, Node& node, const std::wstring& name) {
    const BusyScope operation(Busy::TreeOperation);
    if (!ChangeAllowed(&node) || !Accepted(NameRefusal(name))) return false;
    node.SetText(name);
    CProfile* const profile = Profiles().ProfileOf(&node);
    if (profile != nullptr) profile->Name = name;
    SaveChange(tree, node);
    if (profile != nullptr) StoreProfileList();
    return true;
}
