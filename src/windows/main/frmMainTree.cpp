// What the user does in the tree, and the active container.

#include <utility>

#include "engine/flows/NodeProperties.h"
#include "engine/process/modOption.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "windows/main/FileCommands.h"
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
    Node* const dragged = &node;
    drag_.Run({&dragged, 1});
}

void frmMain::FilesDropped(Node& container, std::vector<std::wstring> paths) {
    dropped_.emplace_back(container, std::move(paths));
    importing_.PutOff();
}

void frmMain::ImportDropped() {
    std::list<DroppedFiles> files;
    files.swap(dropped_);
    for (DroppedFiles& drop : files) {
        Node* const container = drop.container.Get();
        if (container == nullptr || !ActionAllowed(TreeAction::Snap, container)) continue;
        const std::wstring result = ImportWithProgress(window_, cTV, *container, std::move(drop.paths));
        UpdateListview();
        panes_.ShowStatus(result);
    }
}
