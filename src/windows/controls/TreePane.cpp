#include "windows/controls/TreePane.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "engine/process/MayBegin.h"
#include "engine/profiles/NodePictures.h"
#include "platform/ByteBuffer.h"
#include "platform/SetWhile.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/QuietScope.h"

namespace {

// Sent by the control to itself: something waits to be told.
constexpr UINT kTellWaitingMessage = WM_APP;

// A damaged file can nest nodes very deeply, and the control walks opened levels by recursion.
constexpr int kDeepestOpenedLevel = 300;

constexpr std::chrono::milliseconds kTellAgainAfter(100);

// While it lives the control draws nothing, and does not look for what it would have to draw.
class RedrawnAtEnd {
 public:
    explicit RedrawnAtEnd(HWND window) : window_(window) { SendMessageW(window_, WM_SETREDRAW, FALSE, 0); }
    ~RedrawnAtEnd() {
        SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(window_, nullptr, TRUE);
    }
    RedrawnAtEnd(const RedrawnAtEnd&) = delete;
    RedrawnAtEnd& operator=(const RedrawnAtEnd&) = delete;

 private:
    HWND window_;
};

bool IsInSubtree(const Node* node, const Node& top) {
    while (node != nullptr && node != &top)
        node = node->Parent();
    return node != nullptr;
}

bool OpensByItself(const Node& node) {
    if (!node.Expanded()) return false;
    int level = 1;
    for (const Node* above = node.Parent(); above != nullptr; above = above->Parent())
        if (++level > kDeepestOpenedLevel) return false;
    return true;
}

bool ScreenIsReadAloud() {
    BOOL read = FALSE;
    return SystemParametersInfoW(SPI_GETSCREENREADER, 0, &read, 0) && read;
}

// Whoever sees the tree knows the active container by its picture; a reader needs it in the text.
std::wstring ItemText(const Node& node) {
    std::wstring text = node.Text();
    if (IsShownAsActive(node) && ScreenIsReadAloud()) text += L", aktive Ablage";
    return text;
}

}  // namespace

TreePane::~TreePane() {
    Detach();
}

bool TreePane::Create(HWND parent, int control) {
    const HWND made =
        CreateWindowExW(WS_EX_CLIENTEDGE, WC_TREEVIEWW, L"",
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                            TVS_SHOWSELALWAYS | TVS_EDITLABELS,
                        0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)),
                        GetModuleHandleW(nullptr), nullptr);
    if (made == nullptr) return false;
    Attach(made);
    return true;
}

void TreePane::Attach(HWND control) {
    window_ = control;
    ownMessage_.Attach(window_, [this](UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN) {
            held_.emplace(Busy::Drag);
            const LRESULT result = ownMessage_.PassOn(message, wParam, lParam);
            held_.reset();
            return result;
        }
        if (message != kTellWaitingMessage) return std::nullopt;
        TellWaitingWhenFree();
        return 0;
    });
    nodes_.SetView(this);
}

void TreePane::Detach() {
    if (nodes_.View() == this) nodes_.SetView(nullptr);
    listener_ = nullptr;
    waiting_.clear();
    tellAgain_.Stop();
    editing_.reset();
    ownMessage_.Detach();
}

LRESULT TreePane::OnNotify(NMHDR& header) {
    auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
    auto& info = reinterpret_cast<NMTVDISPINFOW&>(header).item;
    switch (header.code) {
        case TVN_GETDISPINFOW:
            FillItem(info);
            return 0;
        case TVN_ITEMEXPANDINGW:
            // What the pane opens itself has its items already, and to open it once more from here would send
            // this notification again, without end.
            if (!mirroring_ && change.action == TVE_EXPAND) MakeItemsBelow(&NodeOf(change.itemNew.lParam));
            return FALSE;
        case TVN_ITEMEXPANDEDW:
            if (!mirroring_)
                OnExpanded(NodeOf(change.itemNew.lParam), (change.itemNew.state & TVIS_EXPANDED) != 0);
            return 0;
        case TVN_SELCHANGEDW:
            if (!mirroring_)
                OnSelected(change.itemNew.hItem != nullptr ? &NodeOf(change.itemNew.lParam) : nullptr);
            return 0;
        case TVN_DELETEITEMW:
            NodeOf(change.itemOld.lParam).viewItem = 0;
            return 0;
        case TVN_BEGINLABELEDITW:
            if (listener_ == nullptr || !listener_->MayEditLabel(NodeOf(info.lParam))) return TRUE;
            OnBeginLabelEdit(NodeOf(info.lParam));
            return FALSE;
        case TVN_ENDLABELEDITW:
            if (info.pszText != nullptr)
                OnEndLabelEdit(NodeOf(info.lParam), info.pszText);
            else
                editing_.reset();
            // The item gets its text from its node: what is taken over may differ from what was typed.
            return FALSE;
        case TVN_BEGINDRAGW:
            TellLater(Deed::Drag, NodeOf(change.itemNew.lParam));
            return 0;
        case NM_RCLICK:
            // The button is up; the context menu comes by a message that is sent from here.
            held_.reset();
            return 0;
        case NM_RETURN:
        case NM_DBLCLK:
            if (Node* const node = ActivatedBy(header.code); node != nullptr)
                TellLater(Deed::Activate, *node);
            // A used Enter must not beep; a double click still opens and closes folders.
            return header.code == NM_RETURN;
        default:
            return 0;
    }
}

void TreePane::OnExpanded(Node& node, bool expanded) {
    const Node* const selected = nodes_.Selected();
    {
        const SetWhile mirror(mirroring_);
        node.SetExpanded(expanded);
    }
    // The closed item took the selection; the control does the same, but not every one tells of it.
    if (nodes_.Selected() != selected && listener_ != nullptr)
        listener_->TreeSelectionChanged(nodes_.Selected());
}

void TreePane::OnSelected(Node* node) {
    if (node == nodes_.Selected()) return;
    {
        const SetWhile mirror(mirroring_);
        nodes_.Select(node);
    }
    if (listener_ != nullptr) listener_->TreeSelectionChanged(node);
}

// The control's own edit would hold no more than it draws of a text.
void TreePane::OnBeginLabelEdit(const Node& node) {
    if (!editing_) editing_.emplace(Busy::Rename);
    const HWND edit = TreeView_GetEditControl(window_);
    SendMessageW(edit, EM_SETLIMITTEXT, kLongestStoredText, 0);
    SetWindowTextW(edit, node.Text().c_str());
}

void TreePane::OnEndLabelEdit(Node& node, const wchar_t* text) {
    // Some versions of the control tell the end twice, since the edit then loses the focus.
    if (IsRenameWaiting()) return;
    const HWND edit = TreeView_GetEditControl(window_);
    TellLater(Deed::Rename, node, edit != nullptr ? WindowText(edit) : text);
}

Node* TreePane::ActivatedBy(UINT notification) const {
    if (notification == NM_RETURN) return nodes_.Selected();
    const DWORD where = GetMessagePos();
    POINT point{static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))};
    ScreenToClient(window_, &point);
    return NodeAt(point);
}

void TreePane::TellLater(Deed deed, Node& node, std::wstring text) {
    if (listener_ == nullptr) return;
    waiting_.push_back({deed, &node, std::move(text)});
    PostMessageW(window_, kTellWaitingMessage, 0, 0);
}

// Not inside the loop of a dialog that has opened since: it would go on there with what the user did before.
// A name waits; a drag and a click are over by then.
void TreePane::TellWaitingWhenFree() {
    if (MayBegin(Who::TypedName) == Answer::Now) return TellWaiting();
    KeepOnlyNames();
    if (!waiting_.empty()) tellAgain_.Start(kTellAgainAfter);
}

void TreePane::KeepOnlyNames() {
    std::erase_if(waiting_, [](const Waiting& each) { return each.deed != Deed::Rename; });
}

void TreePane::TellWaiting() {
    // What is told may take long, and more may come meanwhile.
    while (!waiting_.empty() && listener_ != nullptr) {
        const Waiting next = std::move(waiting_.front());
        waiting_.erase(waiting_.begin());
        switch (next.deed) {
            case Deed::Drag:
                listener_->DragStarted(*next.node);
                break;
            case Deed::Activate:
                listener_->NodeActivated(*next.node);
                break;
            case Deed::Rename:
                Rename(*next.node, next.text);
                break;
        }
    }
}

void TreePane::Rename(Node& node, const std::wstring& text) {
    const NodeRef edited(&node);
    editing_.reset();
    if (text == node.Text() || listener_->LabelEdited(node, text) || edited.Get() == nullptr) return;
    EditLabel(node);
    const HWND edit = TreeView_GetEditControl(window_);
    SetWindowTextW(edit, text.c_str());
    SendMessageW(edit, EM_SETSEL, 0, -1);
}

Node* TreePane::NodeAt(POINT point) const {
    TVHITTESTINFO hit{};
    hit.pt = point;
    const HTREEITEM item = TreeView_HitTest(window_, &hit);
    return item != nullptr && (hit.flags & TVHT_ONITEM) != 0 ? NodeOfItem(item) : nullptr;
}

Node* TreePane::RowAt(POINT point) const {
    TVHITTESTINFO hit{};
    hit.pt = point;
    const HTREEITEM item = TreeView_HitTest(window_, &hit);
    return item != nullptr ? NodeOfItem(item) : nullptr;
}

RECT TreePane::RowOf(const Node& node) const {
    RECT row{};
    if (node.viewItem != 0) TreeView_GetItemRect(window_, ItemOf(node), &row, FALSE);
    return row;
}

POINT TreePane::MenuPoint() const {
    RECT area{};
    const Node* const node = nodes_.Selected();
    if (node != nullptr && node->viewItem != 0) TreeView_GetItemRect(window_, ItemOf(*node), &area, TRUE);
    POINT point{area.left, area.bottom};
    ClientToScreen(window_, &point);
    return point;
}

void TreePane::EditLabel(Node& node) {
    MakeItemsDownTo(node);
    SetFocus(window_);
    SendMessageW(window_, TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(ItemOf(node)));
}

bool TreePane::IsRenameWaiting() const {
    return std::any_of(waiting_.begin(), waiting_.end(),
                       [](const Waiting& each) { return each.deed == Deed::Rename; });
}

bool TreePane::IsEditing() const {
    // The control may name one that has gone by itself.
    return IsWindow(TreeView_GetEditControl(window_)) != FALSE;
}

void TreePane::EndEdit() {
    if (IsEditing()) TreeView_EndEditLabelNow(window_, FALSE);
    if (editing_) {
        // Who wants the edit to end comes before a drag that has not begun.
        KeepOnlyNames();
        TellWaiting();
    }
    ForgetEndedEdit();
}

void TreePane::ForgetEndedEdit() {
    if (editing_ && !IsRenameWaiting() && !IsEditing()) editing_.reset();
}

void TreePane::ShowDropTarget(Node* node, bool before) {
    const HTREEITEM item = node != nullptr ? ItemOf(*node) : nullptr;
    TreeView_SelectDropTarget(window_, before ? nullptr : item);
    SendMessageW(window_, TVM_SETINSERTMARK, FALSE, reinterpret_cast<LPARAM>(before ? item : nullptr));
}

Node* TreePane::NodeOfItem(HTREEITEM handle) const {
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem = handle;
    if (!SendMessageW(window_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) return nullptr;
    return reinterpret_cast<Node*>(item.lParam);
}

void TreePane::FillItem(TVITEMW& item) const {
    const Node& node = NodeOf(item.lParam);
    if (item.mask & (TVIF_IMAGE | TVIF_SELECTEDIMAGE)) {
        const bool open = node.Expanded() && node.Children() > 0 && !node.ExpandedImage().IsEmpty();
        item.iImage = ListPictureIndex(open ? node.ExpandedImage() : node.Image());
        item.iSelectedImage = item.iImage;
    }
    if (item.mask & TVIF_CHILDREN) item.cChildren = node.Children() > 0 ? 1 : 0;
}

HTREEITEM TreePane::FirstItemBelow(const Node* parent) const {
    return parent != nullptr ? TreeView_GetChild(window_, ItemOf(*parent)) : TreeView_GetRoot(window_);
}

bool TreePane::ShowsChildren(const Node* parent) const {
    if (parent == nullptr) return true;
    if (parent->viewItem == 0) return false;
    return OpensByItself(*parent) || FirstItemBelow(parent) != nullptr;
}

Node* TreePane::FirstOf(const Node* parent) const {
    return parent != nullptr ? parent->FirstChild() : nodes_.Root();
}

Node* TreePane::LastOf(const Node* parent) const {
    return parent != nullptr ? parent->LastChild() : nodes_.LastRoot();
}

// The control walks along all siblings to their last one when it is asked for that: TVI_LAST would make many
// insertions quadratic. Behind an item that is named it goes no way at all.
HTREEITEM TreePane::PlaceOf(const Node& node) {
    const Node* elder = node.Previous();
    while (elder != nullptr && elder->viewItem == 0)
        elder = elder->Previous();
    return elder != nullptr ? ItemOf(*elder) : TVI_FIRST;
}

void TreePane::MakeItem(Node& node, HTREEITEM after) {
    std::wstring text = ItemText(node);
    TVINSERTSTRUCTW insert{};
    insert.hParent = node.Parent() != nullptr ? ItemOf(*node.Parent()) : TVI_ROOT;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_PARAM;
    // A text that the control has to ask for can take it a buffer of the largest size for each item.
    insert.item.pszText = text.data();
    insert.item.iImage = I_IMAGECALLBACK;
    insert.item.iSelectedImage = I_IMAGECALLBACK;
    insert.item.cChildren = I_CHILDRENCALLBACK;
    insert.item.lParam = reinterpret_cast<LPARAM>(&node);
    node.viewItem = static_cast<std::uintptr_t>(
        SendMessageW(window_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

// Makes the items that are missing below `parent`, and below those of them that are open, without recursion;
// then opens them, the deepest first, while they are not yet shown. `parent` itself stays as it is.
void TreePane::MakeItemsBelow(Node* parent) {
    std::vector<Node*> opened{parent};
    for (std::size_t next = 0; next < opened.size(); ++next) {
        const Node* const above = opened[next];
        const bool allMissing = FirstItemBelow(above) == nullptr;
        const auto make = [&](Node& child, HTREEITEM after) {
            if (child.viewItem != 0) return;
            MakeItem(child, after);
            if (child.viewItem != 0 && child.Children() > 0 && OpensByItself(child)) opened.push_back(&child);
        };
        if (allMissing)
            for (Node* child = LastOf(above); child != nullptr; child = child->Previous())
                make(*child, TVI_FIRST);
        else
            for (Node* child = FirstOf(above); child != nullptr; child = child->Next())
                make(*child, PlaceOf(*child));
    }
    const SetWhile mirror(mirroring_);
    for (std::size_t next = opened.size() - 1; next > 0; --next)
        TreeView_Expand(window_, ItemOf(*opened[next]), TVE_EXPAND);
}

void TreePane::ShowChildren(Node* parent) {
    MakeItemsBelow(parent);
    if (parent == nullptr || !OpensByItself(*parent)) return;
    const SetWhile mirror(mirroring_);
    TreeView_Expand(window_, ItemOf(*parent), TVE_EXPAND);
}

void TreePane::MakeItemsDownTo(Node& node) {
    std::vector<Node*> missing;
    Node* above = &node;
    for (; above != nullptr && above->viewItem == 0; above = above->Parent())
        missing.push_back(above);
    // What is made for one level may reach down to the next.
    for (auto next = missing.rbegin(); next != missing.rend(); ++next)
        if ((*next)->viewItem == 0) ShowChildren((*next)->Parent());
}

// To a node whose row is there the control goes by moving what is seen, which draws least. Where rows are to
// be made or opened first, all is drawn at the end.
bool TreePane::IsRow(const Node& node) const {
    if (node.viewItem == 0) return false;
    for (const Node* above = node.Parent(); above != nullptr; above = above->Parent())
        if (!above->Expanded()) return false;
    return true;
}

void TreePane::SelectItemOf(Node* node) {
    std::optional<QuietScope> quiet;
    if (node != nullptr && !IsRow(*node)) quiet.emplace(window_);
    if (node != nullptr) MakeItemsDownTo(*node);
    const SetWhile mirror(mirroring_);
    TreeView_SelectItem(window_, node != nullptr ? ItemOf(*node) : nullptr);
}

void TreePane::TellChildCount(const Node& node) {
    // The button in front of the item appears or goes; the control asks for the number when it draws.
    Redraw(node);
}

void TreePane::Redraw(const Node& node) {
    if (node.viewItem == 0 || bulkDepth_ > 0) return;
    RECT area;
    if (TreeView_GetItemRect(window_, ItemOf(node), &area, FALSE)) InvalidateRect(window_, &area, TRUE);
}

void TreePane::NodeAdded(Node& node) {
    Node* const parent = node.Parent();
    if (bulkDepth_ > 0) {
        const bool hasItem = parent == nullptr || parent->viewItem != 0;
        if (hasItem && (grown_.empty() || grown_.back() != parent)) grown_.push_back(parent);
        return;
    }
    if (ShowsChildren(parent)) {
        if (FirstItemBelow(parent) != nullptr) {
            MakeItem(node, PlaceOf(node));
        } else {
            const QuietScope quiet(window_);
            ShowChildren(parent);
        }
    }
    if (parent != nullptr) TellChildCount(*parent);
}

void TreePane::NodeRemoving(Node& node) {
    std::erase_if(waiting_, [&](const Waiting& each) { return IsInSubtree(each.node, node); });
    if (node.viewItem != 0) {
        const SetWhile mirror(mirroring_);
        TreeView_DeleteItem(window_, ItemOf(node));
        node.viewItem = 0;
        // The items below it went with it.
        std::erase_if(grown_, [](const Node* parent) { return parent != nullptr && parent->viewItem == 0; });
    }
    ForgetEndedEdit();
    if (node.Parent() != nullptr) TellChildCount(*node.Parent());
}

void TreePane::NodeTextChanged(Node& node) {
    if (node.viewItem == 0) return;
    const QuietScope quiet(window_);
    std::wstring text = ItemText(node);
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = ItemOf(node);
    item.pszText = text.data();
    SendMessageW(window_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void TreePane::NodeImageChanged(Node& node) {
    if (ScreenIsReadAloud()) NodeTextChanged(node);
    Redraw(node);
}

void TreePane::NodeExpandedChanged(Node& node) {
    if (node.viewItem == 0 || node.Children() == 0) return;
    const bool shown = (TreeView_GetItemState(window_, ItemOf(node), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    if (shown == node.Expanded()) return;
    if (node.Expanded()) {
        ShowChildren(&node);
        return;
    }
    const SetWhile mirror(mirroring_);
    TreeView_Expand(window_, ItemOf(node), TVE_COLLAPSE);
}

void TreePane::NodeMoved(Node& node) {
    if (node.viewItem == 0) return;
    const SetWhile mirror(mirroring_);
    Node* const selected = nodes_.Selected();
    const bool holdsSelection = IsInSubtree(selected, node);
    // Otherwise the control would look for another item to select, and tell of it.
    if (holdsSelection) SelectItemOf(nullptr);
    TreeView_DeleteItem(window_, ItemOf(node));
    MakeItem(node, PlaceOf(node));
    if (node.Children() > 0 && OpensByItself(node)) ShowChildren(&node);
    if (holdsSelection) SelectItemOf(selected);
}

void TreePane::ChildrenReordered(Node* parent) {
    if (!ShowsChildren(parent)) return;
    const SetWhile mirror(mirroring_);
    std::optional<RedrawnAtEnd> redrawn;
    if (bulkDepth_ == 0) redrawn.emplace(window_);
    SelectItemOf(nullptr);
    if (parent != nullptr) TreeView_Expand(window_, ItemOf(*parent), TVE_COLLAPSE);
    // Always the one that is the first now: to take an item out, the control walks along those before it.
    for (HTREEITEM first = FirstItemBelow(parent); first != nullptr; first = FirstItemBelow(parent))
        if (!TreeView_DeleteItem(window_, first)) break;
    ShowChildren(parent);
    if (nodes_.Selected() != nullptr) SelectItemOf(nodes_.Selected());
}

void TreePane::SelectionChanged(Node* node) {
    if (mirroring_) return;
    SelectItemOf(node);
    if (listener_ != nullptr) listener_->TreeSelectionChanged(node);
}

void TreePane::AllRemoved() {
    const SetWhile mirror(mirroring_);
    grown_.clear();
    waiting_.clear();
    TreeView_DeleteAllItems(window_);
    ForgetEndedEdit();
}

void TreePane::BeginBulkChange() {
    if (bulkDepth_++ == 0) SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
}

void TreePane::EndBulkChange() {
    if (--bulkDepth_ > 0) return;
    const RedrawnAtEnd redrawn(window_);
    std::vector<Node*> grown = std::exchange(grown_, {});
    std::sort(grown.begin(), grown.end());
    grown.erase(std::unique(grown.begin(), grown.end()), grown.end());
    for (Node* const parent : grown)
        if (ShowsChildren(parent)) ShowChildren(parent);
}

void TreePane::EnsureVisible(Node& node) {
    std::optional<QuietScope> quiet;
    if (!IsRow(node)) quiet.emplace(window_);
    MakeItemsDownTo(node);
    TreeView_EnsureVisible(window_, ItemOf(node));
}

Node* TreePane::FirstVisible() {
    const HTREEITEM first = TreeView_GetFirstVisible(window_);
    return first != nullptr ? NodeOfItem(first) : nullptr;
}

void TreePane::ScrollDown() {
    const HTREEITEM first = TreeView_GetFirstVisible(window_);
    if (first == nullptr) return;
    const HTREEITEM second = TreeView_GetNextVisible(window_, first);
    if (second != nullptr) TreeView_Select(window_, second, TVGN_FIRSTVISIBLE);
}
