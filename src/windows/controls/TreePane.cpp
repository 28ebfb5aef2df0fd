#include "windows/controls/TreePane.h"

#include <algorithm>
#include <string>

#include "windows/controls/Pictures.h"

namespace {

// While it lives, what the control reports is an echo of the collection's own change.
class MirrorScope {
 public:
    explicit MirrorScope(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
    ~MirrorScope() { flag_ = before_; }
    MirrorScope(const MirrorScope&) = delete;
    MirrorScope& operator=(const MirrorScope&) = delete;

 private:
    bool& flag_;
    bool before_;
};

}  // namespace

TreePane::~TreePane() {
    Detach();
}

bool TreePane::Create(HWND parent, int control) {
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_TREEVIEWW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES |
                                  TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_EDITLABELS,
                              0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)),
                              GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) return false;
    Attach(window_);
    return true;
}

void TreePane::Attach(HWND control) {
    window_ = control;
    nodes_.SetView(this);
}

void TreePane::Detach() {
    if (nodes_.View() == this) nodes_.SetView(nullptr);
    listener_ = nullptr;
}

LRESULT TreePane::OnNotify(NMHDR& header) {
    switch (header.code) {
        case TVN_GETDISPINFOW:
            FillItem(reinterpret_cast<NMTVDISPINFOW&>(header).item);
            return 0;
        case TVN_ITEMEXPANDINGW: {
            auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
            if (change.action == TVE_EXPAND) MakeChildren(&NodeOf(change.itemNew.lParam));
            return FALSE;
        }
        case TVN_ITEMEXPANDEDW: {
            auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
            const MirrorScope mirror(mirroring_);
            NodeOf(change.itemNew.lParam).SetExpanded((change.itemNew.state & TVIS_EXPANDED) != 0);
            return 0;
        }
        case TVN_SELCHANGEDW: {
            if (mirroring_) return 0;
            auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
            Node* const node = change.itemNew.hItem != nullptr ? &NodeOf(change.itemNew.lParam) : nullptr;
            {
                const MirrorScope mirror(mirroring_);
                nodes_.Select(node);
            }
            if (listener_ != nullptr) listener_->TreeSelectionChanged(node);
            return 0;
        }
        case TVN_DELETEITEMW: {
            auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
            if (!allGone_) NodeOf(change.itemOld.lParam).viewItem = 0;
            return 0;
        }
        case TVN_BEGINLABELEDITW: {
            auto& item = reinterpret_cast<NMTVDISPINFOW&>(header).item;
            return listener_ == nullptr || !listener_->MayEditLabel(NodeOf(item.lParam));
        }
        case TVN_ENDLABELEDITW: {
            auto& item = reinterpret_cast<NMTVDISPINFOW&>(header).item;
            if (item.pszText != nullptr && listener_ != nullptr)
                listener_->LabelEdited(NodeOf(item.lParam), item.pszText);
            // The item goes on asking its node for the text: what was taken over may differ from what was
            // typed.
            return FALSE;
        }
        case TVN_BEGINDRAGW: {
            auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
            if (listener_ != nullptr) listener_->DragStarted(NodeOf(change.itemNew.lParam));
            return 0;
        }
        case NM_RETURN:
        case NM_DBLCLK: {
            DWORD where = GetMessagePos();
            POINT point{static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))};
            ScreenToClient(window_, &point);
            Node* const node = header.code == NM_RETURN ? nodes_.Selected() : NodeAt(point);
            if (node != nullptr && listener_ != nullptr) listener_->NodeActivated(*node);
            // A used Enter must not beep; a double click still opens and closes folders.
            return header.code == NM_RETURN;
        }
        default:
            return 0;
    }
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
    if (item.mask & TVIF_TEXT) lstrcpynW(item.pszText, node.Text().c_str(), item.cchTextMax);
    if (item.mask & (TVIF_IMAGE | TVIF_SELECTEDIMAGE)) {
        const bool open = node.Expanded() && node.Children() > 0 && node.ExpandedImage().index() != 0;
        item.iImage = ListPictureIndex(open ? node.ExpandedImage() : node.Image());
        item.iSelectedImage = item.iImage;
    }
    if (item.mask & TVIF_CHILDREN) item.cChildren = node.Children() > 0 ? 1 : 0;
}

bool TreePane::ShowsChildren(const Node* parent) const {
    if (parent == nullptr) return true;
    if (parent->viewItem == 0) return false;
    return parent->Expanded() || TreeView_GetChild(window_, ItemOf(*parent)) != nullptr;
}

Node* TreePane::FirstOf(const Node* parent) const {
    return parent != nullptr ? parent->FirstChild() : nodes_.Root();
}

HTREEITEM TreePane::PlaceOf(const Node& node) {
    if (node.Next() == nullptr) return TVI_LAST;
    return node.Previous() != nullptr ? ItemOf(*node.Previous()) : TVI_FIRST;
}

void TreePane::MakeItem(Node& node, HTREEITEM after) {
    if (node.viewItem != 0) return;
    TVINSERTSTRUCTW insert{};
    insert.hParent = node.Parent() != nullptr ? ItemOf(*node.Parent()) : TVI_ROOT;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_PARAM;
    insert.item.pszText = LPSTR_TEXTCALLBACKW;
    insert.item.iImage = I_IMAGECALLBACK;
    insert.item.iSelectedImage = I_IMAGECALLBACK;
    insert.item.cChildren = I_CHILDRENCALLBACK;
    insert.item.lParam = reinterpret_cast<LPARAM>(&node);
    node.viewItem = static_cast<std::uintptr_t>(
        SendMessageW(window_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    if (node.Expanded()) MakeChildren(&node);
}

void TreePane::MakeChildren(Node* parent) {
    const HTREEITEM above = parent != nullptr ? ItemOf(*parent) : TVI_ROOT;
    const bool allMissing = TreeView_GetChild(window_, above) == nullptr;
    for (Node* child = FirstOf(parent); child != nullptr; child = child->Next())
        MakeItem(*child, allMissing ? TVI_LAST : PlaceOf(*child));
    if (parent != nullptr && parent->Expanded()) {
        const MirrorScope mirror(mirroring_);
        TreeView_Expand(window_, ItemOf(*parent), TVE_EXPAND);
    }
}

void TreePane::MakeItemsDownTo(Node& node) {
    if (node.viewItem != 0) return;
    if (node.Parent() == nullptr) {
        MakeItem(node, PlaceOf(node));
        return;
    }
    MakeItemsDownTo(*node.Parent());
    MakeChildren(node.Parent());
}

void TreePane::TellChildCount(const Node& node) {
    if (node.viewItem == 0) return;
    // The button in front of the item appears or goes; the control asks for the number when it draws.
    Redraw(node);
}

void TreePane::Redraw(const Node& node) {
    if (node.viewItem == 0 || bulkDepth_ > 0) return;
    RECT area;
    if (TreeView_GetItemRect(window_, ItemOf(node), &area, FALSE)) InvalidateRect(window_, &area, TRUE);
}

void TreePane::NodeAdded(Node& node) {
    if (bulkDepth_ > 0) {
        pending_.push_back(&node);
        return;
    }
    Node* const parent = node.Parent();
    if (!ShowsChildren(parent)) {
        if (parent != nullptr) TellChildCount(*parent);
        return;
    }
    const bool firstShown = parent != nullptr && TreeView_GetChild(window_, ItemOf(*parent)) == nullptr;
    if (firstShown)
        MakeChildren(parent);
    else
        MakeItem(node, PlaceOf(node));
    if (parent != nullptr) TellChildCount(*parent);
}

void TreePane::NodeRemoving(Node& node) {
    if (bulkDepth_ > 0) {
        std::erase_if(pending_, [&](Node* waiting) {
            for (const Node* above = waiting; above != nullptr; above = above->Parent())
                if (above == &node) return true;
            return false;
        });
    }
    if (node.viewItem == 0) return;
    const MirrorScope mirror(mirroring_);
    TreeView_DeleteItem(window_, ItemOf(node));
    node.viewItem = 0;
    if (node.Parent() != nullptr) TellChildCount(*node.Parent());
}

void TreePane::NodeTextChanged(Node& node) {
    if (node.viewItem == 0) return;
    // Setting the callback again makes the control measure the text anew.
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = ItemOf(node);
    item.pszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(window_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void TreePane::NodeImageChanged(Node& node) {
    Redraw(node);
}

void TreePane::NodeExpandedChanged(Node& node) {
    if (node.viewItem == 0 || node.Children() == 0) return;
    const bool shown = (TreeView_GetItemState(window_, ItemOf(node), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    if (shown == node.Expanded()) return;
    const MirrorScope mirror(mirroring_);
    if (node.Expanded())
        MakeChildren(&node);
    else
        TreeView_Expand(window_, ItemOf(node), TVE_COLLAPSE);
}

void TreePane::ChildrenReordered(Node* parent) {
    if (!ShowsChildren(parent)) return;
    const MirrorScope mirror(mirroring_);
    BeginBulkChange();
    for (Node* child = FirstOf(parent); child != nullptr; child = child->Next())
        if (child->viewItem != 0) TreeView_DeleteItem(window_, ItemOf(*child));
    MakeChildren(parent);
    if (Node* const selected = nodes_.Selected(); selected != nullptr) {
        MakeItemsDownTo(*selected);
        TreeView_SelectItem(window_, ItemOf(*selected));
    }
    EndBulkChange();
}

void TreePane::SelectionChanged(Node* node) {
    if (mirroring_) return;
    if (node != nullptr) MakeItemsDownTo(*node);
    {
        const MirrorScope mirror(mirroring_);
        TreeView_SelectItem(window_, node != nullptr ? ItemOf(*node) : nullptr);
    }
    if (listener_ != nullptr) listener_->TreeSelectionChanged(node);
}

void TreePane::AllRemoved() {
    const MirrorScope mirror(mirroring_);
    pending_.clear();
    allGone_ = true;
    TreeView_DeleteAllItems(window_);
    allGone_ = false;
}

void TreePane::BeginBulkChange() {
    if (bulkDepth_++ == 0) SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
}

void TreePane::EndBulkChange() {
    if (--bulkDepth_ > 0) return;
    const std::vector<Node*> added = std::move(pending_);
    pending_.clear();
    for (Node* node : added)
        if (node->viewItem == 0 && ShowsChildren(node->Parent())) MakeChildren(node->Parent());
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window_, nullptr, TRUE);
}

void TreePane::EnsureVisible(Node& node) {
    MakeItemsDownTo(node);
    TreeView_EnsureVisible(window_, ItemOf(node));
}

bool TreePane::IsVisible(const Node& node) {
    if (node.viewItem == 0) return false;
    for (const Node* above = node.Parent(); above != nullptr; above = above->Parent())
        if (!above->Expanded()) return false;
    RECT item;
    RECT client;
    if (!TreeView_GetItemRect(window_, ItemOf(node), &item, FALSE)) return false;
    GetClientRect(window_, &client);
    return item.bottom > client.top && item.top < client.bottom;
}

void TreePane::ScrollDown() {
    const HTREEITEM first = TreeView_GetFirstVisible(window_);
    if (first == nullptr) return;
    const HTREEITEM second = TreeView_GetNextVisible(window_, first);
    if (second != nullptr) TreeView_Select(window_, second, TVGN_FIRSTVISIBLE);
}
