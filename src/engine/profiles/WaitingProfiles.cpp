#include "engine/profiles/WaitingProfiles.h"

#include <algorithm>
#include <chrono>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileAttachment.h"
#include "platform/Busy.h"
#include "platform/DirectoryAnswers.h"
#include "platform/Platform.h"

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience{2000};

bool Answers(const CProfile& entry, milliseconds patience) {
    return DirectoryAnswers(entry.Directory, patience);
}

bool IsListed(const CProfile* entry) {
    const std::vector<CProfile*> entries = Profiles().NewEnum();
    return std::find(entries.begin(), entries.end(), entry) != entries.end();
}

// Moves the profile from the end of the root level to where it waited.
void TakeWaitingPlace(CTreeViewEx& tree, CProfile& entry) {
    NodeCollection& nodes = *tree.TreeView();
    const BulkChangeScope bulk(nodes);
    if (Node* const copy = tree.CopyNode(entry.Waiting.Get(), entry.Node, false, false, true)) {
        nodes.Remove(*entry.Node);
        entry.Node = copy;
    }
}

}  // namespace

void AskAllDirectories() {
    for (const CProfile* entry : Profiles().NewEnum())
        Answers(*entry, milliseconds(0));
}

bool IsSilent(const CProfile& entry) {
    return !Answers(entry, AnyWaiting() ? milliseconds(0) : kPatience);
}

void ShowWaiting(NodeCollection& nodes, CProfile& entry) {
    entry.Waiting.Follow(&nodes.Add(nullptr, NodeRelation::Last, entry.Name + L" (antwortet nicht)",
                                    std::wstring(L"Waiting")));
}

bool AnyWaiting() {
    const std::vector<CProfile*> entries = Profiles().NewEnum();
    return std::any_of(entries.begin(), entries.end(),
                       [](const CProfile* entry) { return entry->Waiting.Get() != nullptr; });
}

CProfile* WaitingAs(const Node* node) {
    for (CProfile* entry : Profiles().NewEnum())
        if (node != nullptr && entry->Waiting.Get() == node) return entry;
    return nullptr;
}

bool AttachAnswering(CTreeViewEx& tree, ActiveContainer& container) {
    const BusyScope operation(Busy::TreeOperation);
    bool any = false;
    for (CProfile* entry : Profiles().NewEnum()) {
        // A box may have been open meanwhile, and everything have come to its end.
        if (!IsListed(entry)) break;
        if (entry->Waiting.Get() == nullptr) continue;
        if (entry->Node != nullptr) {
            // The user was faster and has attached it himself.
            tree.TreeView()->Remove(*entry->Waiting.Get());
            continue;
        }
        if (!Answers(*entry, milliseconds(0))) continue;
        any = true;
        const std::wstring name = entry->Name;
        const bool attached = AttachProfileDirectory(tree, entry->Directory) != nullptr;
        if (!IsListed(entry)) break;
        if (attached)
            TakeWaitingPlace(tree, *entry);
        else
            ThePlatform().user.TellLater(L"Profil \"" + name + L"\" konnte nicht geladen werden");
        tree.TreeView()->Remove(*entry->Waiting.Get());
    }
    if (any) StoreProfileList();
    if (Profiles().Count() > 0) container.ProfilesAnswered();
    return any;
}
