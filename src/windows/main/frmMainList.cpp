// What the user does in the list, and what it shows.

#include <algorithm>

#include "engine/process/MayBegin.h"
#include "engine/process/modOption.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/ByteBuffer.h"
#include "platform/SetWhile.h"
#include "platform/Text.h"
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
        case LVN_COLUMNCLICK: {
            const int column = reinterpret_cast<NMLISTVIEW&>(header).iSubItem;
            if (hits_.IsActive())
                SortHits(OrderAfterClick(hits_.Order(), column, HitList::kCapturedColumn));
            else if (CanBeSorted(panes_.Content()))
                SortList(OrderAfterClick(panes_.Order(), column));
            return 0;
        }
        case LVN_BEGINDRAG:
            // This comes later, not in the middle of the control's notification.
            Later(std::chrono::milliseconds(0), [this] { DragFromList(); });
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
    // A name that waits is that of the node edited before.
    if (node == nullptr || listName_ || !MayEditLabel(*node)) return false;
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
    if (!confirmed) return listEdit_.reset();
    listName_ = WindowText(panes_.lvListView.LabelEdit());
    takesListName_.PutOff();
}

void frmMain::TakeListName() {
    if (!listName_) return;
    listEdit_.reset();
    RenameEdited(*std::exchange(listName_, std::nullopt));
}

void frmMain::EndListEditNow() {
    panes_.lvListView.EndEdit();
    TakeListName();
    ForgetEndedEdits();
}

// The controls do not always say that an edit has ended, because its row or its window went.
void frmMain::ForgetEndedEdits() {
    panes_.tvTreeView.ForgetEndedEdit();
    if (listEdit_ && !listName_ && panes_.lvListView.LabelEdit() == nullptr) listEdit_.reset();
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

bool frmMain::KeyboardIsInList() const {
    const HWND pane = FocusedPane();
    return pane == panes_.lvListView.Window() || (hits_.IsActive() && pane != panes_.tvTreeView.Window());
}

Node* frmMain::ChosenNode() const {
    return KeyboardIsInList() ? listNode_.Get() : nodes_.Selected();
}

bool frmMain::SeveralChosen() const {
    return panes_.lvListView.ChosenCount() > 1 && panes_.Content().nodes != nullptr && KeyboardIsInList();
}

std::vector<Node*> frmMain::ChosenNodes() const {
    if (!SeveralChosen()) return ChosenNode() != nullptr ? std::vector{ChosenNode()} : std::vector<Node*>();
    std::vector<Node*> nodes;
    for (const int row : panes_.lvListView.ChosenRows())
        if (Node* const node = NodeOfListRow(row); node != nullptr) nodes.push_back(node);
    return nodes;
}

std::vector<Node*> frmMain::NodesFor(Node* node) const {
    if (SeveralChosen() && node == ChosenNode()) return ChosenNodes();
    return {node};
}

void frmMain::ChooseRowsOf(::ChosenNodes nodes) {
    std::vector<const Node*> wanted(nodes.begin(), nodes.end());
    std::sort(wanted.begin(), wanted.end());
    std::vector<int> rows;
    for (int row = 0; row < static_cast<int>(panes_.Content().entries.size()); ++row)
        if (std::binary_search(wanted.begin(), wanted.end(), NodeOfListRow(row))) rows.push_back(row);
    if (rows.empty()) return;
    {
        const SetWhile filling(filling_);
        panes_.lvListView.ChooseRows(rows);
    }
    ListRowChosen();
}

void frmMain::DragFromList() {
    const std::vector<Node*> nodes = ChosenNodes();
    if (panes_.Content().nodes == nullptr || !KeyboardIsInList() || nodes.empty()) return;
    if (MayBegin(Who::TreeCommand) != Answer::Now) return;
    for (const Node* const node : nodes)
        if (!ActionAllowed(TreeAction::DragAndDrop, node)) return;
    drag_.Run(nodes);
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
    ShowHowMany();
    RefreshCommands();
    // The preview waits, so that rows passed with a key held down are not read.
    previewing_.PutOff();
}

void frmMain::ShowHowMany() {
    const int chosen = panes_.lvListView.ChosenCount();
    const std::wstring all = hits_.IsActive() ? hits_.Status() : panes_.Content().status;
    if (chosen > 1)
        panes_.ShowStatus(NumberText(std::int64_t{chosen}) + L" von " + all);
    else if (several_)
        panes_.ShowStatus(all);
    several_ = chosen > 1;
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

// The chosen rows stay chosen.
void frmMain::SortList(const ListOrder& order) {
    const std::vector<Node*> chosen = SeveralChosen() ? ChosenNodes() : std::vector<Node*>();
    panes_.SetOrder(order);
    UpdateListview();
    ChooseRowsOf(chosen);
}

void frmMain::SortHits(const ListOrder& order) {
    const std::vector<Node*> chosen = SeveralChosen() ? ChosenNodes() : std::vector<Node*>();
    hits_.SetOrder(order);
    ShowHits();
    ChooseRowsOf(chosen);
}

void frmMain::UpdateListview() {
    ShowSearchHint();
    if (hits_.IsActive()) return UpdateHits();
    const bool sameNode = shownNode_.Get() != nullptr && shownNode_.Get() == nodes_.Selected();
    const std::vector<int> rows = sameNode ? panes_.lvListView.ChosenRows() : std::vector<int>();
    const int row = rows.empty() ? -1 : rows.front();
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
