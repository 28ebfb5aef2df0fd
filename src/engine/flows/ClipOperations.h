#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/profiles/ActiveContainer.h"
#include "engine/tree/CTreeViewEx.h"

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

    // Delete a node, by its kind, after a question. True when it is gone.
    bool Delete(Node* node);
    bool DeleteClip(Node& clip);
    bool DeleteFolder(Node& folder);
    bool DeleteProfile(Node& profile);

    void BeforeNodeCopy(Node* newParent, Node& sourceNode, bool isMove, bool& cancel) override;
    void AfterNodeCopy(Node& newNode, Node& sourceNode, bool isMove) override;
    void DoAction(std::int16_t action, Node& node, bool& cancel) override;

 private:
    class CopyUnderWay;
    Node* Copy(Node* target, Node& source, bool asChild);
    Node* MoveInsideProfile(Node* target, Node& source, bool asChild);
    Node* MoveAcrossProfiles(Node* target, Node& source, bool asChild);
    Node* MoveProfile(Node* target, Node& source);
    bool Remove(Node& node);
    bool RemoveFilesFirst(Node& node, const std::vector<std::wstring>& files);
    void RemoveNode(Node& node);
    void CarryContainerOver(const Node& source, Node& copy);

    void cTV_BeforeNodeCopy(bool& cancel);
    void cTV_AfterNodeCopy(Node& newNode, Node& sourceNode, bool isMove);
    void cTV_DoAction(std::int16_t action, Node& node);
    void CopyClipData(Node& newNode, const Node& sourceNode, const std::wstring& from);

    std::vector<std::wstring> FilesBelow(Node& node);
    bool MayGo(const std::vector<std::wstring>& files);
    void RemoveFiles(const std::vector<std::wstring>& files);

    CTreeViewEx& tree_;
    ActiveContainer& container_;
    CopyUnderWay* copy_ = nullptr;
    std::vector<std::int32_t> noticedClips_;  // by the walk that is under way; 0 is none
};
