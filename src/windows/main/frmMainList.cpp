// What the user does in the list, and what it shows.

#include <algorithm>

#include "engine/process/modOption.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/ByteBuffer.h"
#include "platform/SetWhile.h"
#include "windows/controls/Dialog.h"
#include "windows/main/frmMain.h"

LRESULT frmMain::OnListNotify(NMHDR& header) {
    ListPane& list = panes_.lvListView;
    switch (header.code) {
        case LVN_ODFINDITEMW:
            return FindListRow(reinterpret_cast<NMLVFINDITEMW&>(header));
        case LVN_GETDISPINFOW:
            list.OnGetDisplayInfo(reinterpret_cast<NMLVDISPINFOW&>(header));
            return 0;
        case NM_CUSTOMDRAW:
            return list.OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED:
            ListRowChosen();
            return 0;
        case LVN_BEGINLABELEDITW:
            return BeginListEdit(reinterpret_cast<NMLVDISPINFOW&>(header).item.iItem) ? FALSE : TRUE;
        case LVN_ENDLABELEDITW:
            EndListEdit(reinterpret_cast<NMLVDISPINFOW&>(header).item.pszText != nullptr);
            // The row gets its text from its node.
            return FALSE;
        case LVN_COLUMNCLICK:
            if (CanBeSorted(panes_.Content()))
                SortList(OrderAfterClick(panes_.Order(), reinterpret_cast<NMLISTVIEW&>(header).iSubItem));
            return 0;
        case LVN_KEYDOWN:
            if (reinterpret_cast<NMLVKEYDOWN&>(header).wVKey == VK_BACK) OpenFolderAbove();
            return 0;
        case NM_DBLCLK:
        case NM_RETURN:
            // What holds others is opened where it stands.
            if (hits_.IsActive() && (GetKeyState(VK_CONTROL) < 0 || !IsClipNode(listNode_.Get())))
                ShowInTree(listNode_.Get());
            else if (GetKeyState(VK_CONTROL) < 0)
                OpenListRow(list.FocusedRow());
            else
                UseListRow(list.FocusedRow());
            return 0;
        default:
            return 0;
    }
}

Node* frmMain::NodeOfListRow(int row) const {
    const std::vector<ListEntry>& entries = panes_.Content().entries;
    if (row < 0 || row >= static_cast<int>(entries.size())) return nullptr;
    return nodes_.Item(entries[static_cast<std::size_t>(row)].treeIndex);
}

int frmMain::ListRowOf(const Node* node) const {
    const std::vector<ListEntry>& entries = panes_.Content().entries;
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const ListEntry& candidate) {
        return node != nullptr && candidate.treeIndex == node->Index();
    });
    return entry != entries.end() ? static_cast<int>(entry - entries.begin()) : -1;
}

void frmMain::UseListRow(int row) {
    Node* const node = NodeOfListRow(row);
    if (IsClipNode(node) && Options().SetClipByDblClick)
        PutOnClipboard(node);
    else
        OpenListRow(row);
}

void frmMain::OpenListRow(int row) {
    Node* const node = NodeOfListRow(row);
    if (node == nullptr) return;
    nodes_.Select(node);
    if (!panes_.Content().entries.empty()) panes_.lvListView.ChooseRow(0);
}

void frmMain::OpenFolderAbove() {
    const NodeRef left(nodes_.Selected());
    if (left.Get() == nullptr || left.Get()->Parent() == nullptr) return;
    nodes_.Select(left.Get()->Parent());
    if (const int row = ListRowOf(left.Get()); row >= 0) panes_.lvListView.ChooseRow(row);
}

void frmMain::HotKeyPressed() {
    Restore();
    if (Options().HotKeyToList && MayBegin(Who::TreeCommand) == Answer::Now) ShowNewestClip();
}

void frmMain::ShowNewestClip() {
    Node* const container = container_.Get();
    if (container == nullptr) return;
    if (nodes_.Selected() != container) SelectAndShow(*container);
    SetFocus(panes_.lvListView.Window());
    // New clips come last, in front of no folder.
    const Node* newest = container->LastChild();
    while (newest != nullptr && !IsClipNode(newest))
        newest = newest->Previous();
    if (const int row = ListRowOf(newest); row >= 0) panes_.lvListView.ChooseRow(row);
}

bool frmMain::BeginListEdit(int row) {
    Node* const node = NodeOfListRow(row);
    if (node == nullptr || !MayEditLabel(*node)) return false;
    editedNode_.Follow(node);
    listEdit_.emplace(Busy::Rename);
    ShowInListEdit(node->Text());
    return true;
}

// The control's own edit would hold no more than it draws of a text.
void frmMain::ShowInListEdit(const std::wstring& text) const {
    const HWND edit = panes_.lvListView.LabelEdit();
    SendMessageW(edit, EM_SETLIMITTEXT, kLongestStoredText, 0);
    SetWindowTextW(edit, text.c_str());
    SendMessageW(edit, EM_SETSEL, 0, -1);
}

// The new name may open boxes and fill the list anew: not in the middle of the control's notification.
void frmMain::EndListEdit(bool confirmed) {
    listEdit_.reset();
    if (!confirmed) return;
    Later(std::chrono::milliseconds(0),
          [this, text = WindowText(panes_.lvListView.LabelEdit())] { RenameEdited(text); });
}

void frmMain::RenameEdited(const std::wstring& text) {
    Node* const node = editedNode_.Get();
    if (node == nullptr || text == node->Text() || LabelEdited(*node, text)) return;
    // What was typed stands in the edit again.
    const int row = ListRowOf(editedNode_.Get());
    if (row < 0) return;
    panes_.lvListView.EditLabel(row);
    if (panes_.lvListView.LabelEdit() != nullptr) ShowInListEdit(text);
}

Node* frmMain::ChosenNode() const {
    const HWND pane = FocusedPane();
    const bool inList =
        pane == panes_.lvListView.Window() || (hits_.IsActive() && pane != panes_.tvTreeView.Window());
    return inList ? listNode_.Get() : nodes_.Selected();
}

const CFormat* frmMain::ChosenFormat() const {
    if (FocusedPane() != panes_.lvListView.Window()) return nullptr;
    const int row = panes_.lvListView.FocusedRow();
    const std::shared_ptr<CFormats>& formats = panes_.Content().formats;
    return formats != nullptr && row >= 0 && row < formats->Count() ? &formats->Item(row + 1) : nullptr;
}

void frmMain::ListRowChosen() {
    if (filling_) return;
    listNode_.Follow(NodeOfListRow(panes_.lvListView.FocusedRow()));
    RefreshCommands();
    // Not for each row that the user passes with a key held down.
    previewing_.PutOff();
}

void frmMain::PreviewChosenRow() {
    const Node* const hit = listNode_.Get();
    if (hits_.IsActive() && IsClipNode(hit))
        return panes_.preview.Show(BuildListContent(hit, clipBoard_),
                                   HitOfRow(panes_.lvListView.FocusedRow()));
    if (hits_.IsActive()) return;
    if (IsClipNode(nodes_.Selected())) return;  // the open clip is shown, whichever of its formats is chosen
    const Node* const chosen = listNode_.Get();
    if (!IsClipNode(chosen)) return panes_.preview.Show(panes_.Content());
    const ListContent content = BuildListContent(chosen, clipBoard_);
    panes_.preview.Show(content);
    if (content.formats == nullptr) panes_.ShowStatus(content.status);
}

void frmMain::SortList(const ListOrder& order) {
    panes_.SetOrder(order);
    UpdateListview();
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
    const int count = static_cast<int>(panes_.Content().entries.size());
    if (row < 0 || count == 0) {
        listNode_.Follow(nullptr);
        return;
    }
    const int kept = ListRowOf(listNode_.Get());
    panes_.lvListView.ChooseRow(kept >= 0 ? kept : std::min(row, count - 1));
    listNode_.Follow(NodeOfListRow(panes_.lvListView.FocusedRow()));
}
