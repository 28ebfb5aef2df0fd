#include "engine/tree/CTreeViewEx.h"

#include <limits>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

#include "engine/tree/TreeFile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/ByteBuffer.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

std::int16_t In16Bits(std::int32_t number) {
    if (number > std::numeric_limits<std::int16_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
    return static_cast<std::int16_t>(number);
}

// The node itself, or the highest collapsed one above it, behind which it is hidden.
Node* ShownFor(Node* node) {
    Node* shown = node;
    for (Node* above = node->Parent(); above != nullptr; above = above->Parent())
        if (!above->Expanded()) shown = above;
    return shown;
}

std::int32_t SecondsSinceMidnight(FileTime time) {
    constexpr FileTime kSecond = 10'000'000;
    constexpr FileTime kDay = 24 * 60 * 60;
    return static_cast<std::int32_t>((time + kSecond / 2) / kSecond % kDay);
}

}  // namespace

Node* CTreeViewEx::SearchForTag(const std::wstring& tag) const {
    if (mvarTreeView == nullptr) return nullptr;
    for (int i = 1; i <= mvarTreeView->Count(); ++i)
        if (mvarTreeView->Item(i)->Tag() == tag) return mvarTreeView->Item(i);
    return nullptr;
}

std::int16_t CTreeViewEx::NodeDepth(const Node* node) const {
    return In16Bits(LevelOf(node));
}

void CTreeViewEx::MaxNodeDepth(std::int16_t depth) {
    if (mvarTreeView == nullptr) return;
    if (depth == 0 && mvarTreeView->Selected() == nullptr) return;
    const std::int32_t level = depth != 0 ? depth : LevelOf(mvarTreeView->Selected());
    const BulkChangeScope bulk(*mvarTreeView);
    for (TreeWalk walk(mvarTreeView->Root()); walk.Current() != nullptr; walk.Step())
        if (walk.Depth() + 1 == level) walk.Current()->SetExpanded(false);
}

void CTreeViewEx::ExpandAllNodes() {
    if (mvarTreeView == nullptr) return;
    const BulkChangeScope bulk(*mvarTreeView);
    for (int i = 1; i <= mvarTreeView->Count(); ++i)
        if (mvarTreeView->Item(i)->Children() > 0) mvarTreeView->Item(i)->SetExpanded(true);
}

void CTreeViewEx::SortAllNodes() {
    if (mvarTreeView == nullptr) return;
    const BulkChangeScope bulk(*mvarTreeView);
    for (int i = 1; i <= mvarTreeView->Count(); ++i)
        mvarTreeView->Item(i)->SetSorted(true);
    mvarTreeView->SetSorted(true);
}

Node* CTreeViewEx::FirstNode() const {
    return mvarTreeView != nullptr ? NodeRoot(mvarTreeView->Item(1)) : nullptr;
}

Node* CTreeViewEx::NodeRoot(Node* node) const {
    while (node != nullptr && node->Parent() != nullptr)
        node = node->Parent();
    return node;
}

Node* CTreeViewEx::FirstVisibleNode() const {
    NodeView* const screen = mvarTreeView != nullptr ? mvarTreeView->View() : nullptr;
    return screen != nullptr ? screen->FirstVisible() : nullptr;
}

Node* CTreeViewEx::PreviousNode(Node* node, bool visibleOnly) const {
    if (node == nullptr) return nullptr;
    Node* const sibling = node->Previous();
    if (sibling == nullptr) return node->Parent();
    Node* const deepest = LastSubNode(sibling, visibleOnly);
    return deepest != nullptr ? deepest : sibling;
}

Node* CTreeViewEx::NextNode(Node* node, bool visibleOnly) const {
    if (node == nullptr) return nullptr;
    if (node->FirstChild() != nullptr && (node->Expanded() || !visibleOnly)) return node->FirstChild();
    while (node != nullptr && node->Next() == nullptr)
        node = node->Parent();
    return node != nullptr ? node->Next() : nullptr;
}

Node* CTreeViewEx::LastSubNode(Node* node, bool visibleOnly) const {
    if (node == nullptr || (visibleOnly && !node->Expanded())) return nullptr;
    Node* result = nullptr;
    for (Node* child = node->LastChild(); child != nullptr; child = child->LastChild())
        result = child;
    return result;
}

Node* CTreeViewEx::CopyNode(Node* targetNode, Node* sourceNode, bool asChild, bool nodeOnly, bool isMove) {
    if (mvarTreeView == nullptr || sourceNode == nullptr) return nullptr;
    // Inside its own subtree the copy would be met on the way and copied again, without end.
    const bool beside = targetNode == sourceNode && !asChild;
    if (!nodeOnly && !beside && IsSubNode(targetNode, sourceNode)) return nullptr;

    bool cancel = false;
    const NodeRelation place = asChild                 ? NodeRelation::Child
                               : targetNode == nullptr ? NodeRelation::Last
                                                       : NodeRelation::Previous;
    Node* const copy = AddCopy(targetNode, place, *sourceNode, isMove, cancel);
    if (!cancel && !nodeOnly && sourceNode->Children() > 0) CopyDescendants(*sourceNode, *copy, isMove);
    return copy;
}

Node* CTreeViewEx::AddCopy(Node* relative, NodeRelation relation, Node& source, bool isMove, bool& cancel) {
    const bool below = relation == NodeRelation::Child || relative == nullptr;
    Node* const newParent = below ? relative : relative->Parent();
    if (events_ != nullptr) events_->BeforeNodeCopy(newParent, source, isMove, cancel);
    if (cancel) return nullptr;
    Node& copy = mvarTreeView->Add(relative, relation, source.Text(), source.Image(), source.SelectedImage());
    copy.SetTag(source.Tag());
    copy.SetExpanded(source.Expanded());
    if (events_ != nullptr) events_->AfterNodeCopy(copy, source, isMove);
    return &copy;
}

void CTreeViewEx::CopyDescendants(Node& source, Node& copy, bool isMove) {
    const BulkChangeScope bulk(*mvarTreeView);
    Node* lastCopy = &copy;
    int lastDepth = 0;
    TreeWalk walk(&source);
    for (walk.Step(); walk.InSubtree(); walk.Step()) {
        Node* newParent = lastCopy;
        for (; lastDepth >= walk.Depth(); --lastDepth)
            newParent = newParent->Parent();
        bool cancel = false;
        lastCopy = AddCopy(newParent, NodeRelation::Child, *walk.Current(), isMove, cancel);
        if (cancel) return;
        lastDepth = walk.Depth();
    }
}

void CTreeViewEx::ForAllNodes(Node* startNode, bool withSubNodes, std::int16_t action) {
    if (mvarTreeView == nullptr) return;
    // Not from FirstNode on: when the oldest node does not stand first, that would pass by the ones before
    // it.
    TreeWalk walk(startNode != nullptr ? startNode : mvarTreeView->Root());
    while (startNode != nullptr ? walk.InSubtree() : walk.Current() != nullptr) {
        bool cancel = false;
        if (events_ != nullptr) events_->DoAction(action, *walk.Current(), cancel);
        if (cancel || !withSubNodes) return;
        walk.Step();
    }
}

bool CTreeViewEx::DropAllowed(const Node* sourceNode, const Node* targetNode, bool checkSubNodes) const {
    if (sourceNode == nullptr || sourceNode == targetNode) return false;
    return !checkSubNodes || !IsSubNode(targetNode, sourceNode);
}

bool CTreeViewEx::IsSubNode(const Node* node, const Node* ancestor) const {
    while (node != nullptr && node != ancestor)
        node = node->Parent();
    return node != nullptr;
}

std::int16_t CTreeViewEx::SubNodeCount(const Node* node) const {
    return In16Bits(DescendantCount(node));
}

void CTreeViewEx::ScrollUp() {
    Node* const above = PreviousNode(FirstVisibleNode(), true);
    if (above != nullptr) mvarTreeView->View()->EnsureVisible(*ShownFor(above));
}

void CTreeViewEx::ScrollDown() {
    if (mvarTreeView == nullptr || mvarTreeView->Count() == 0 || mvarTreeView->View() == nullptr) return;
    mvarTreeView->View()->ScrollDown();
}

void CTreeViewEx::DragOver(DragState state, float y, float height) {
    if (!autoScroll_ || state != DragState::Over) return;
    const bool nearTop = y < scrollMargin_;
    const bool nearBottom = y > height - scrollMargin_;
    if (nearTop) ScrollUp();
    if (nearBottom) ScrollDown();
    if (nearTop || nearBottom) lastScrollTime_ = SecondsSinceMidnight(ThePlatform().clock.Now());
}

bool CTreeViewEx::BuildTreeData(const Node* node, std::span<Node* const> without) {
    if (mvarTreeView == nullptr) return false;
    // As in ForAllNodes, the whole tree begins with its first root-level node.
    if (node == nullptr && mvarTreeView->Count() < 1) {
        ReleaseData();
        return false;
    }
    const Node* const top = node != nullptr ? node : mvarTreeView->Root();
    return Succeeds([&] { SetData(EncodeNodes({top, node == nullptr, without})); });
}

const TreeData& CTreeViewEx::Data() const {
    if (!data_) data_ = image_.empty() ? TreeData{} : DecodeTreeData(image_);
    return *data_;
}

std::int32_t CTreeViewEx::DataCount() const {
    return image_.empty() ? 0 : ByteReader(image_).Int32();
}

Node* CTreeViewEx::BuildSubTreeFromData(Node* parent) {
    if (mvarTreeView == nullptr) return nullptr;
    UserPort& user = ThePlatform().user;
    Node* top = nullptr;
    bool depthsHold = true;
    const auto error = ErrorIn([&] {
        const BulkChangeScope bulk(*mvarTreeView);
        depthsHold = BuildNodes(parent, top);
    });
    if (error) {
        user.Tell(error->Description(), L"Fehler beim Aufbau des Baumes " + NumberText(error->Number()));
    } else if (!depthsHold) {
        user.Tell(L"Fataler Fehler: ungültige Knotentiefe.");
    }
    user.ShowPointer(PointerShape::Normal);
    return top;
}

// False when a depth leads nowhere. `top` becomes the node of the first record as soon as it is made.
bool CTreeViewEx::BuildNodes(Node* parent, Node*& top) {
    if (image_.empty()) return true;
    Node* current = parent;
    std::int32_t depth = -1;
    bool depthsHold = true;
    mvarTreeView->Expect(DataCount());
    ReadTreeImage(image_, [&](const KeptRecord& record) {
        // A negative depth would put the node beside or above `parent`, outside the subtree that is built.
        depthsHold = record.depth >= 0 && record.depth <= depth + 1;
        if (!depthsHold) return false;
        const bool asChild = record.depth > depth;
        for (; depth > record.depth; --depth)
            current = current->Parent();
        current = &AddFromRecord(current, asChild ? NodeRelation::Child : NodeRelation::Next, record);
        depth = record.depth;
        if (top == nullptr) top = current;
        return true;
    });
    return depthsHold;
}

Node& CTreeViewEx::AddFromRecord(Node* relative, NodeRelation relation, const KeptRecord& record) {
    Node& node = mvarTreeView->Add(relative, relation, NodeTexts(record.text, record.tag), record.image,
                                   record.selectedImage);
    node.SetExpanded(record.expanded);
    if (!record.expandedImage.IsEmpty()) node.SetExpandedImage(record.expandedImage);
    if (node.Sorted() != record.sorted) node.SetSorted(record.sorted);
    return node;
}

bool CTreeViewEx::SaveDataToFile(const std::wstring& path) {
    FileMark any;
    const Saved saved = SaveDataToFile(path, any);
    if (saved == Saved::DiskFull) TellError(DiskFullError(path));
    return saved == Saved::Whole;
}

CTreeViewEx::Saved CTreeViewEx::SaveDataToFile(const std::wstring& path, FileMark& mark) {
    const HourglassScope hourglass(ThePlatform().user);
    bool written = false;
    const auto error = ErrorIn([&] {
        if (image_.empty()) SetData(EncodeTreeData({}));
        written = WriteSafeFile(path, image_, mark);
    });
    if (error && error->Number() == static_cast<int>(ErrorNumber::DiskFull)) return Saved::DiskFull;
    if (error) ThePlatform().user.Tell(error->Description());
    if (error) return Saved::Failed;
    return written ? Saved::Whole : Saved::ChangedByOther;
}

bool CTreeViewEx::LoadDataFromFile(const std::wstring& path) {
    FileMark any;
    return LoadDataFromFile(path, any);
}

bool CTreeViewEx::LoadDataFromFile(const std::wstring& path, FileMark& mark) {
    if (mvarTreeView == nullptr || !SafeFileExists(path)) return false;
    const auto error = ErrorIn([&] {
        ReleaseData();
        std::vector<std::uint8_t> image = ReadSafeFile(path);
        // Of a damaged one nothing is taken.
        ReadTreeImage(image, nullptr);
        mark = FileMark::OfBytes(image);
        SetData(std::move(image));
    });
    UserPort& user = ThePlatform().user;
    if (error) user.Tell(error->Description(), L"Strukturladefehler " + NumberText(error->Number()));
    user.ShowPointer(PointerShape::Normal);
    return !error;
}

void CTreeViewEx::ReleaseData() {
    SetData({});
}

void CTreeViewEx::SetData(std::vector<std::uint8_t> image) {
    image_ = std::move(image);
    data_.reset();
}

bool CTreeViewEx::SaveToRecordField() {
    ThePlatform().user.Tell(L"Noch nicht implementiert");
    return false;
}

bool CTreeViewEx::LoadFromRecordField() {
    ThePlatform().user.Tell(L"Noch nicht implementiert");
    return false;
}

std::int32_t CTreeViewEx::PositionOf(const Node* node) const {
    if (mvarTreeView == nullptr || node == nullptr) return -1;
    std::int32_t position = 1;
    for (TreeWalk walk(mvarTreeView->Root()); walk.Current() != nullptr; walk.Step(), ++position)
        if (walk.Current() == node) return position;
    return -1;
}

Node* CTreeViewEx::NodeAtPosition(std::int32_t position) const {
    if (mvarTreeView == nullptr || position < 1 || position > mvarTreeView->Count()) return nullptr;
    TreeWalk walk(mvarTreeView->Root());
    while (--position > 0)
        walk.Step();
    return walk.Current();
}
