#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/flows/ChosenNodes.h"
#include "engine/flows/LastDeletion.h"
#include "engine/profiles/ActiveContainer.h"
#include "engine/tree/CTreeViewEx.h"

class NodeCopies;

// Copying, moving and deleting of nodes with all that belongs to them: data files, saved profiles, the active
// container. It handles the tree wrapper's events, by which the wrapper lets it deal with the data files.
// Each operation is done whole or not at all, and tells the user why when it is not.
class ClipOperations : public TreeViewExEvents {
 public:
    // Neither is owned; both must live as long. Becomes the handler of the tree's events.
    ClipOperations(CTreeViewEx& tree, ActiveContainer& container);
    ~ClipOperations() override;
    ClipOperations(const ClipOperations&) = delete;
    ClipOperations& operator=(const ClipOperations&) = delete;

    // A node was dropped: into `target` (`asChild`), in front of it, or at the end of the root level when it
    // is null. Checks the rules and the lock, then copies or moves. Returns the node at its new place, for
    // the selection; null when nothing was done. A moved node is a new one, its old reference is dead.
    Node* Drop(Node* target, Node* source, bool asChild, bool move);

    // The same for several, in their order: one that may not go there keeps all where they are. Each profile
    // is saved once, and what fails of one keeps nothing from the others. Returns those at their new place.
    std::vector<Node*> Drop(Node* target, ChosenNodes sources, bool asChild, bool move);

    // Deletes a node, by its kind, after a question; without one, if the user wants that, into the folder for
    // what is deleted. True when it is gone from where it was.
    bool Delete(Node* node);
    // The same for several with one question; profiles are deleted one by one. True when any is gone.
    bool Delete(ChosenNodes nodes);
    bool DeleteProfile(Node& profile);

    // What Delete put into such folders last goes back to where it was, or, where that is gone, into its
    // profile. Returns what is back.
    std::vector<Node*> TakeBackDeletion();
    bool CanTakeBackDeletion() const { return !lastDeletion_.IsEmpty(); }

    // Everything in the profile's folder for what is deleted goes for good, after a question.
    bool EmptyDeleted(Node& profile);
    // So does, unasked, what came there more than so many days ago; 0 is never. Nothing is told but in the
    // status bar. True when anything went.
    bool RemoveOldDeleted(int days);
    // Of the clips directly in the container the oldest go, until so many are left: those with an
    // information, and what stands on the clipboard, neither go nor count. 0 is all. True when any went.
    bool KeepNewest(Node& container, std::int32_t most);

    void BeforeNodeCopy(Node* newParent, Node& sourceNode, bool isMove, bool& cancel) override;
    void AfterNodeCopy(Node& newNode, Node& sourceNode, bool isMove) override;
    void DoAction(std::int16_t action, Node& node, bool& cancel) override;

 private:
    using Saved = CTreeViewEx::Saved;
    // Where copies go: into `target`, or in front of it.
    struct Place {
        Node* target = nullptr;
        bool asChild = false;
    };
    std::vector<Node*> Copy(const Place& place, ChosenNodes sources);
    std::vector<Node*> MoveInsideProfile(const Place& place, ChosenNodes sources);
    std::vector<Node*> MoveAcrossProfiles(const Place& place, ChosenNodes sources);
    Node* MoveProfile(Node* target, Node& source);
    Saved ReplaceInProfile(NodeCopies& copying, ChosenNodes sources);
    bool AskToDelete(ChosenNodes nodes);
    bool DeleteOfOneProfile(ChosenNodes nodes);
    bool MoveToDeleted(ChosenNodes nodes, bool canBeTakenBack);
    void KeepSelectionOutOf(const Node& folder, ChosenNodes going);
    std::vector<Node*> PutBack(Node& profile);
    bool Remove(ChosenNodes nodes);
    bool RemoveFilesFirst(ChosenNodes nodes, const std::vector<std::wstring>& files);
    void RemoveNodes(ChosenNodes nodes);
    void CarryContainerOver(const Node& source, Node& copy);

    void cTV_BeforeNodeCopy(bool& cancel);
    void cTV_AfterNodeCopy(Node& newNode, Node& sourceNode, bool isMove);
    void cTV_DoAction(std::int16_t action, Node& node);
    void CopyClipData(Node& newNode, const Node& sourceNode, const std::wstring& from);

    std::vector<std::wstring> FilesBelow(ChosenNodes nodes);
    bool MayGo(const std::vector<std::wstring>& files);
    void RemoveFiles(const std::vector<std::wstring>& files);

    CTreeViewEx& tree_;
    ActiveContainer& container_;
    NodeCopies* copy_ = nullptr;
    LastDeletion lastDeletion_;
    bool deletionBegins_ = false;             // the last one counts until something of this one is done
    std::vector<std::int32_t> noticedClips_;  // by the walk that is under way; 0 is none
};
