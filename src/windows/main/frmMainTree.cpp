// What the user does in the tree and the list, and what they show.

#include <algorithm>
#include <chrono>
#include <utility>

#include "engine/flows/NodeProperties.h"
#include "engine/process/modOption.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "platform/SetWhile.h"
#include "windows/main/frmMain.h"

void frmMain::TreeSelectionChanged(Node*) {
    if (!loaded_) return;
    if (LeavesSearch())
        EndSearch();
    else
        UpdateListview();
}

void frmMain::NodeActivated(Node& node) {
    if (IsClipNode(&node) && Options().SetClipByDblClick) PutOnClipboard(&node);
}

Node* frmMain::NodeOfListRow(int row) const {
    const std::vector<ListEntry>& entries = panes_.Content().entries;
    if (row < 0 || row >= static_cast<int>(entries.size())) return nullptr;
    return nodes_.Item(entries[static_cast<std::size_t>(row)].treeIndex);
}

void frmMain::OpenListRow(int row) {
    const NodeRef opened(NodeOfListRow(row));
    if (opened.Get() == nullptr) return;
    nodes_.Select(opened.Get());
    if (opened.Get() != nullptr) NodeActivated(*opened.Get());
}

Node* frmMain::ChosenNode() const {
    const HWND pane = FocusedPane();
    const bool inList =
        pane == panes_.lvListView.Window() || (hits_.IsActive() && pane != panes_.tvTreeView.Window());
    return inList ? listNode_.Get() : nodes_.Selected();
}

void frmMain::ListRowChosen() {
    if (filling_) return;
    listNode_.Follow(NodeOfListRow(panes_.lvListView.FocusedRow()));
    RefreshCommands();
    if (hits_.IsActive()) PreviewHitSoon();
}

// Not for each row that the user passes with a key held down.
void frmMain::PreviewHitSoon() {
    if (previewsHit_) return;
    Later(std::chrono::milliseconds(0), [this] {
        previewsHit_ = false;
        const Node* const chosen = listNode_.Get();
        if (!hits_.IsActive() || !IsClipNode(chosen)) return;
        panes_.preview.Show(BuildListContent(chosen, clipBoard_), HitOfRow(panes_.lvListView.FocusedRow()));
    });
    previewsHit_ = true;
}

void frmMain::UpdateListview() {
    ShowSearchHint();
    if (hits_.IsActive()) return UpdateHits();
    const bool sameNode = shownNode_.Get() != nullptr && shownNode_.Get() == nodes_.Selected();
    const int row = sameNode ? panes_.lvListView.FocusedRow() : -1;
    shownNode_.Follow(nodes_.Selected());
    ListContent content = BuildListContent(nodes_.Selected(), clipBoard_);
    {
        const SetWhile filling(filling_);
        panes_.ShowContent(std::move(content), container_.Title());
    }
    KeepListRow(row);
    RefreshCommands();
}

// The row that was chosen stays chosen; is its node gone, the one that took its place is: so row after row
// can be deleted.
void frmMain::KeepListRow(int row) {
    const std::vector<ListEntry>& entries = panes_.Content().entries;
    if (row < 0 || entries.empty()) {
        listNode_.Follow(nullptr);
        return;
    }
    const Node* const kept = listNode_.Get();
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const ListEntry& candidate) {
        return kept != nullptr && candidate.treeIndex == kept->Index();
    });
    const int count = static_cast<int>(entries.size());
    panes_.lvListView.ChooseRow(entry != entries.end() ? static_cast<int>(entry - entries.begin())
                                                       : std::min(row, count - 1));
    listNode_.Follow(NodeOfListRow(panes_.lvListView.FocusedRow()));
}

void frmMain::SelectAndShow(Node& node) {
    // The user's hits stay, whatever is selected for him.
    const bool before = std::exchange(keepsSearch_, true);
    panes_.tvTreeView.EnsureVisible(node);
    if (nodes_.Selected() == &node)
        UpdateListview();
    else
        nodes_.Select(&node);
    keepsSearch_ = before;
}

void frmMain::SetActiveContainer(Node* node) {
    container_.SetActiveContainer(node);
}

// An open node's own title stays; the tree's picture and the status bar say which the container is.
void frmMain::ShowContainer() {
    StorePlacesSoon();
    if (panes_.Content().title.empty())
        panes_.ShowTitle(container_.Title());
    else if (container_.Get() != nullptr)
        panes_.ShowStatus(L"Aktive Ablage: " + container_.Title());
    RefreshCommands();
}

bool frmMain::MayEditLabel(Node& node) {
    return IsNodeOfKind(&node, kProfileKind | kStructureKind | kClipKind) &&
           WhyNot(EditActionFor(node), &node, Options().LockEdit) == nullptr;
}

bool frmMain::LabelEdited(Node& node, const std::wstring& text) {
    if (!RenameNode(cTV, node, text)) return false;
    StorePlacesSoon();
    UpdateListview();
    return true;
}

void frmMain::DragStarted(Node& node) {
    if (!ActionAllowed(TreeAction::DragAndDrop, &node)) return;
    drag_.Run(node);
}
