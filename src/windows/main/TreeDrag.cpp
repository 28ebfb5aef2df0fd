#include "windows/main/TreeDrag.h"

#include <ole2.h>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "engine/flows/DropRules.h"
#include "engine/flows/modDragDrop.h"
#include "engine/process/MayBegin.h"
#include "engine/process/modOption.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/Guard.h"
#include "platform/Platform.h"
#include "windows/controls/ComObject.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/Ole.h"
#include "windows/main/DraggedClip.h"

namespace {

class NodeDropSource : public ComObject<IDropSource> {
 public:
    explicit NodeDropSource(const bool& cancelled) : cancelled_(cancelled) {}

    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) noexcept override {
        if (escape || cancelled_) return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) != 0 ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) noexcept override { return DRAGDROP_S_USEDEFAULTCURSORS; }

 private:
    const bool& cancelled_;
};

// What OLE drags, as the engine reads it.
class OleDragData : public DragData {
 public:
    explicit OleDragData(IDataObject* data) : data_(data) {}

    bool Offers(std::int16_t number) override {
        FORMATETC format = FormatOf(number);
        return data_->QueryGetData(&format) == S_OK;
    }
    std::optional<std::vector<std::uint8_t>> Bytes(std::int16_t number) override {
        FORMATETC format = FormatOf(number);
        STGMEDIUM medium{};
        if (FAILED(data_->GetData(&format, &medium))) return std::nullopt;
        std::optional<std::vector<std::uint8_t>> bytes;
        if (medium.tymed == TYMED_HGLOBAL) {
            if (const auto* const block = static_cast<const std::uint8_t*>(GlobalLock(medium.hGlobal))) {
                bytes.emplace(block, block + GlobalSize(medium.hGlobal));
                GlobalUnlock(medium.hGlobal);
            }
        }
        ReleaseStgMedium(&medium);
        return bytes;
    }

 private:
    static FORMATETC FormatOf(std::int16_t number) {
        FORMATETC format = DraggedNodeData::NodeFormat();
        format.cfFormat = static_cast<CLIPFORMAT>(number);
        return format;
    }

    IDataObject* data_;
};

}  // namespace

class TreeDrag::Target : public ComObject<IDropTarget> {
 public:
    explicit Target(TreeDrag& drag) : drag_(drag) {}

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override {
        return Guarded<HRESULT>(E_UNEXPECTED, [&] {
            OleDragData dragged(data);
            DraggedNode payload;
            isNode_ = GetDraggedNode(dragged, payload);
            isOurs_ = isNode_ && drag_.IsDragged(payload);
            areFiles_ = !isNode_ && AreFiles(data);
            return Over(keys, point, effect);
        });
    }

    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL point, DWORD* effect) override {
        return Guarded<HRESULT>(E_UNEXPECTED, [&] { return Over(keys, point, effect); });
    }

    HRESULT STDMETHODCALLTYPE DragLeave() noexcept override {
        drag_.pane_.ShowDropTarget(nullptr, false);
        isNode_ = isOurs_ = areFiles_ = false;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override {
        const DWORD offered = std::exchange(*effect, DROPEFFECT_NONE);
        const HRESULT result = Guarded<HRESULT>(E_UNEXPECTED, [&] {
            Node* const container = areFiles_ ? drag_.ContainerAt(InTree(point)) : nullptr;
            if (container != nullptr && (offered & DROPEFFECT_COPY) != 0) {
                drag_.filesDropped_(*container, DraggedPaths(data));
                *effect = DROPEFFECT_COPY;
            }
            // The program does the move itself: the source has nothing to delete.
            if (isOurs_) drag_.Dropped(drag_.PlaceAt(InTree(point), Moves(keys)), Moves(keys));
            return S_OK;
        });
        DragLeave();
        return result;
    }

 private:
    static bool Moves(DWORD keys) { return (keys & MK_CONTROL) == 0; }

    POINT InTree(POINTL point) const {
        POINT inTree{point.x, point.y};
        ScreenToClient(drag_.pane_.Window(), &inTree);
        return inTree;
    }

    HRESULT Over(DWORD keys, POINTL point, DWORD* effect) {
        if (areFiles_) return FilesOver(point, effect);
        const bool moves = Moves(keys);
        const Place place = isOurs_ ? drag_.PlaceAt(InTree(point), moves) : Place{};
        drag_.pane_.ShowDropTarget(place.permitted ? place.target : nullptr, !place.into);
        *effect = !place.permitted ? DROPEFFECT_NONE : moves ? DROPEFFECT_MOVE : DROPEFFECT_COPY;
        if (isNode_) drag_.ScrollNear(InTree(point));
        return S_OK;
    }

    // The files stay where they are, whatever is held down: nothing but a copy is taken.
    HRESULT FilesOver(POINTL point, DWORD* effect) {
        Node* const container = drag_.ContainerAt(InTree(point));
        drag_.pane_.ShowDropTarget(container, false);
        *effect = container != nullptr ? *effect & DROPEFFECT_COPY : DROPEFFECT_NONE;
        drag_.ScrollNear(InTree(point));
        return S_OK;
    }

    TreeDrag& drag_;
    bool isNode_ = false;
    bool isOurs_ = false;
    bool areFiles_ = false;
};

void TreeDrag::Accept() {
    if (accepts_ || !NeedOle()) return;
    const ComOwned<Target> target(new Target(*this));
    accepts_ = SUCCEEDED(RegisterDragDrop(pane_.Window(), target.get()));
}

void TreeDrag::Stop() {
    if (std::exchange(accepts_, false)) RevokeDragDrop(pane_.Window());
}

// The payload names the first of several: what goes with it is known here alone.
void TreeDrag::Run(ChosenNodes nodes) {
    // The button may have been let go of meanwhile, which the system's own loop would not learn any more. It
    // hears of one that goes up from here on: this is the state as of the last message, not as of now.
    if (nodes.empty() || GetKeyState(VK_LBUTTON) >= 0) return;
    Accept();
    const ComOwned<DraggedNodeData> data(new DraggedNodeData({OwnTree(), nodes.front()->Index()}, nodes));
    const ComOwned<NodeDropSource> source(new NodeDropSource(cancelled_));
    dragged_.clear();
    for (Node* const node : nodes)
        dragged_.emplace_back(node);
    dropped_ = cancelled_ = false;
    HRESULT result = E_FAIL;
    {
        const BusyScope drag(Busy::Drag);
        DWORD effect = DROPEFFECT_NONE;
        result = DoDragDrop(data.get(), source.get(), DROPEFFECT_MOVE | DROPEFFECT_COPY, &effect);
    }
    EndRun(result == DRAGDROP_S_DROP);
}

// The system asks the source when the mouse moves.
void TreeDrag::Cancel() {
    cancelled_ = true;
    if (const HWND mouse = GetCapture(); mouse != nullptr) PostMessageW(mouse, WM_MOUSEMOVE, 0, 0);
}

// Copying and moving may take long and ask; the system's own drag loop is over by then.
void TreeDrag::EndRun(bool letGo) {
    const std::vector<Node*> sources = Dragged();
    dragged_.clear();
    if (sources.empty()) return;
    if (!dropped_) {
        if (letGo) TellRefusal(sources);
        return;
    }
    if (MayBegin(Who::TreeCommand) != Answer::Now) return;
    Node* const target = target_.Get();
    if (target == nullptr && !ontoRootLevel_) return;
    if (const std::vector<Node*> placed = operations_.Drop(target, sources, into_, move_); !placed.empty())
        placed_(placed);
}

std::vector<Node*> TreeDrag::Dragged() const {
    std::vector<Node*> nodes;
    for (const NodeRef& node : dragged_)
        if (node.Get() != nullptr) nodes.push_back(node.Get());
    return nodes;
}

// Nothing is dropped where nothing may be. Let go on itself, it was no more than an unsteady click.
void TreeDrag::TellRefusal(ChosenNodes sources) {
    POINT pointer;
    GetCursorPos(&pointer);
    if (WindowFromPoint(pointer) != pane_.Window()) return;
    ScreenToClient(pane_.Window(), &pointer);
    if (std::find(sources.begin(), sources.end(), pane_.RowAt(pointer)) == sources.end())
        ThePlatform().user.Inform(L"Ablage auf diesem Eintrag ist nicht erlaubt !!!");
}

std::int32_t TreeDrag::OwnTree() const {
    return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(pane_.Window()));
}

bool TreeDrag::IsDragged(const DraggedNode& payload) const {
    const Node* const named = DraggedNodeIn(*tree_.TreeView(), payload, OwnTree());
    return named != nullptr && !dragged_.empty() && named == dragged_.front().Get();
}

TreeDrag::Place TreeDrag::PlaceAt(POINT inTree, bool move) const {
    Place place;
    const std::vector<Node*> sources = Dragged();
    if (sources.empty()) return place;
    place.target = pane_.RowAt(inTree);
    if (place.target != nullptr) {
        const RECT row = pane_.RowOf(*place.target);
        place.into =
            DropsAsChild(tree_, sources.front(), place.target, move, static_cast<int>(inTree.y - row.top),
                         static_cast<int>(row.bottom - row.top));
    }
    place.permitted = std::all_of(sources.begin(), sources.end(), [&](const Node* source) {
        const bool fits = sources.size() == 1 || !IsProfileNode(source);
        return fits && DropPermitted(tree_, source, place.target, place.into, move);
    });
    return place;
}

// The profile or folder at this place that new clips may come into now; null for none.
Node* TreeDrag::ContainerAt(POINT inTree) const {
    if (MayBegin(Who::TreeCommand) > Answer::EndsIt) return nullptr;
    Node* const node = pane_.RowAt(inTree);
    const bool takes = IsNodeOfKind(node, kProfileKind | kStructureKind) &&
                       WhyNot(TreeAction::Snap, node, Options().LockEdit) == nullptr;
    return takes ? node : nullptr;
}

void TreeDrag::ScrollNear(POINT inTree) {
    RECT client;
    GetClientRect(pane_.Window(), &client);
    const UINT dpi = DpiOfWindow(pane_.Window());
    tree_.DragOver(DragState::Over, static_cast<float>(TwipsFromPixels(inTree.y, dpi)),
                   static_cast<float>(TwipsFromPixels(client.bottom, dpi)));
}

void TreeDrag::Dropped(const Place& place, bool move) {
    dropped_ = true;
    target_.Follow(place.target);
    ontoRootLevel_ = place.target == nullptr;
    into_ = place.into;
    move_ = move;
}
