// What the user does in the tree and the list, and what they show.

#include "engine/clipboard/CClipBoard.h"
#include "engine/process/modOption.h"
#include "engine/profiles/DropRules.h"
#include "engine/profiles/NodeProperties.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/main/frmMain.h"

void frmMain::TreeSelectionChanged(Node*) {
    if (loaded_) UpdateListview();
}

void frmMain::NodeActivated(Node& node) {
    if (IsClipNode(&node) && Options().SetClipByDblClick) PrepareClipboard();
}

Node* frmMain::NodeOfListRow(int row) const {
    if (row < 0 || row >= static_cast<int>(content_.entries.size())) return nullptr;
    return nodes_.Item(content_.entries[static_cast<std::size_t>(row)].treeIndex);
}

void frmMain::OpenListRow(int row) {
    Node* const node = NodeOfListRow(row);
    if (node == nullptr) return;
    nodes_.Select(node);
    NodeActivated(*node);
}

void frmMain::TakeSelectionFromList() {
    if (GetFocus() != lvListView_.Window()) return;
    if (Node* const node = NodeOfListRow(lvListView_.FocusedRow()); node != nullptr) nodes_.Select(node);
}

void frmMain::UpdateListview() {
    preview_.Clear();
    ShowStatus(L"");
    content_ = BuildListContent(nodes_.Selected(), clipBoard_);
    const std::wstring& title = content_.title;
    SetWindowTextW(lblTitle_, title.empty() ? container_.Title().c_str() : title.c_str());
    lvListView_.ShowContent(content_);
    ShowStatus(content_.status);
    preview_.Show(content_);
    RefreshCommands();
}

bool frmMain::MayEditLabel(Node& node) {
    return IsNodeOfKind(&node, kProfileKind | kStructureKind | kClipKind) &&
           ActionAllowed(EditActionFor(node), &node);
}

bool frmMain::LabelEdited(Node& node, const std::wstring& text) {
    if (!RenameNode(cTV, node, text)) return false;
    UpdateListview();
    return true;
}

void frmMain::DragStarted(Node& node) {
    if (ActionAllowed(TreeAction::DragAndDrop, &node)) DragNode(tvTreeView_, node);
}

Node* frmMain::DraggedNodeOf(const DraggedNode& payload) {
    const auto ownTree = static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(tvTreeView_.Window()));
    return DraggedNodeIn(nodes_, payload, ownTree);
}

bool frmMain::DropsInto(Node& source, Node* target, bool move, int offset, int rowHeight) {
    return DropsAsChild(cTV, &source, target, move, offset, rowHeight);
}

bool frmMain::MayDrop(Node& source, Node* target, bool into, bool move) {
    return DropPermitted(cTV, &source, target, into, move);
}

void frmMain::DraggedOver(int y, int height) {
    cTV.DragOver(DragState::Over, static_cast<float>(TwipsFromPixels(y, dpi_)),
                 static_cast<float>(TwipsFromPixels(height, dpi_)));
}

void frmMain::Dropped(Node* source, Node* target, bool into, bool move) {
    if (Node* const placed = operations_.Drop(target, source, into, move); placed != nullptr)
        AfterTreeChange(placed);
}

void frmMain::ShowContextMenu(HWND source, POINT point) {
    const bool byKeyboard = point.x == -1 && point.y == -1;
    Node* node = nodes_.Selected();
    if (source == lvListView_.Window()) {
        TakeSelectionFromList();
        node = nodes_.Selected();
        if (byKeyboard) point = tvTreeView_.MenuPoint();
    } else if (source != tvTreeView_.Window()) {
        return;
    } else if (byKeyboard) {
        point = tvTreeView_.MenuPoint();
    } else {
        POINT inTree = point;
        ScreenToClient(source, &inTree);
        node = tvTreeView_.NodeAt(inTree);
        if (node != nullptr) nodes_.Select(node);
    }
    const int menu = IsProfileNode(node)     ? m_popProfile
                     : IsStructureNode(node) ? m_popStruct
                     : IsClipNode(node)      ? m_poptree
                                             : m_popNoNode;
    TrackMenu(menu, point);
}

void frmMain::TrackMenu(int menu, POINT point) {
    const HMENU loaded = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(menu));
    const HMENU popup = GetSubMenu(loaded, 0);
    GreyMenu(popup);
    CheckMenuItem(popup, m_tray_autosnap, MF_BYCOMMAND | (Options().AutoSnap ? MF_CHECKED : MF_UNCHECKED));
    TrackPopupMenu(popup, TPM_RIGHTBUTTON, point.x, point.y, 0, window_, nullptr);
    DestroyMenu(loaded);
}
