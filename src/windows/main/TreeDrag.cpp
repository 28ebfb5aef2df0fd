#include "windows/main/TreeDrag.h"

#include <ole2.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "windows/controls/ComObject.h"

namespace {

FORMATETC NodeFormat() {
    FORMATETC format{};
    format.cfFormat = static_cast<CLIPFORMAT>(DraggedNodeFormat());
    format.dwAspect = DVASPECT_CONTENT;
    format.lindex = -1;
    format.tymed = TYMED_HGLOBAL;
    return format;
}

bool IsNodeFormat(const FORMATETC& format) {
    return format.cfFormat == static_cast<CLIPFORMAT>(DraggedNodeFormat()) &&
           (format.tymed & TYMED_HGLOBAL) != 0;
}

// The data of a drag: one format, the payload.
class NodeDataObject : public ComObject<IDataObject> {
 public:
    explicit NodeDataObject(const DraggedNode& payload) : bytes_(DraggedNodeBytes(payload)) {}

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (!IsNodeFormat(*format)) return DV_E_FORMATETC;
        const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes_.size());
        if (block == nullptr) return E_OUTOFMEMORY;
        std::memcpy(GlobalLock(block), bytes_.data(), bytes_.size());
        GlobalUnlock(block);
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = block;
        medium->pUnkForRelease = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        return IsNodeFormat(*format) ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override {
        out->ptd = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** enumerator) override {
        if (direction != DATADIR_GET) return E_NOTIMPL;
        const FORMATETC format = NodeFormat();
        return CreateFormatEnumerator(1, &format, enumerator);
    }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

 private:
    static HRESULT CreateFormatEnumerator(UINT count, const FORMATETC* formats, IEnumFORMATETC** enumerator);

    std::array<std::uint8_t, kDraggedNodeSize> bytes_;
};

class FormatEnumerator : public ComObject<IEnumFORMATETC> {
 public:
    explicit FormatEnumerator(std::vector<FORMATETC> formats, std::size_t next = 0)
        : formats_(std::move(formats)), next_(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, FORMATETC* formats, ULONG* fetched) override {
        const ULONG given = std::min(wanted, static_cast<ULONG>(formats_.size() - next_));
        std::copy_n(formats_.begin() + static_cast<std::ptrdiff_t>(next_), given, formats);
        next_ += given;
        if (fetched != nullptr) *fetched = given;
        return given == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const bool enough = formats_.size() - next_ >= count;
        next_ = enough ? next_ + count : formats_.size();
        return enough ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumFORMATETC** copy) override {
        *copy = new FormatEnumerator(formats_, next_);
        return S_OK;
    }

 private:
    std::vector<FORMATETC> formats_;
    std::size_t next_;
};

HRESULT NodeDataObject::CreateFormatEnumerator(UINT count, const FORMATETC* formats,
                                               IEnumFORMATETC** enumerator) {
    *enumerator = new FormatEnumerator(std::vector<FORMATETC>(formats, formats + count));
    return S_OK;
}

class NodeDropSource : public ComObject<IDropSource> {
 public:
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
        if (escape) return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) != 0 ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
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
        FORMATETC format = NodeFormat();
        format.cfFormat = static_cast<CLIPFORMAT>(number);
        return format;
    }

    IDataObject* data_;
};

// Where a drop would go now.
struct DropPlace {
    Node* target = nullptr;
    bool into = false;
    bool permitted = false;
};

class TreeDropTarget : public ComObject<IDropTarget> {
 public:
    TreeDropTarget(TreePane& pane, TreeDragHost& host) : pane_(pane), host_(host) {}

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect) override {
        OleDragData dragged(data);
        DraggedNode payload;
        isNode_ = GetDraggedNode(dragged, payload);
        source_ = isNode_ ? host_.DraggedNodeOf(payload) : nullptr;
        return DragOver(keys, point, effect);
    }

    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL point, DWORD* effect) override {
        const DropPlace place = PlaceAt(point, Moves(keys));
        pane_.ShowDropTarget(place.permitted ? place.target : nullptr, !place.into);
        *effect = place.permitted ? (Moves(keys) ? DROPEFFECT_MOVE : DROPEFFECT_COPY) : DROPEFFECT_NONE;
        RECT client;
        GetClientRect(pane_.Window(), &client);
        if (isNode_) host_.DraggedOver(static_cast<int>(InTree(point).y), static_cast<int>(client.bottom));
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE DragLeave() override {
        Forget();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Drop(IDataObject*, DWORD keys, POINTL point, DWORD* effect) override {
        const bool move = Moves(keys);
        const DropPlace place = PlaceAt(point, move);
        Node* const source = source_;
        const bool isNode = isNode_;
        Forget();
        // The program does the move itself: the source has nothing to delete.
        *effect = DROPEFFECT_NONE;
        if (isNode) host_.Dropped(source, place.target, place.into, move);
        return S_OK;
    }

 private:
    static bool Moves(DWORD keys) { return (keys & MK_CONTROL) == 0; }

    POINT InTree(POINTL point) const {
        POINT inTree{point.x, point.y};
        ScreenToClient(pane_.Window(), &inTree);
        return inTree;
    }

    DropPlace PlaceAt(POINTL point, bool move) const {
        DropPlace place;
        const POINT inTree = InTree(point);
        place.target = pane_.RowAt(inTree);
        if (source_ == nullptr) return place;
        if (place.target != nullptr) {
            const RECT row = pane_.RowOf(*place.target);
            place.into = host_.DropsInto(*source_, place.target, move, static_cast<int>(inTree.y - row.top),
                                         static_cast<int>(row.bottom - row.top));
        }
        place.permitted = host_.MayDrop(*source_, place.target, place.into, move);
        return place;
    }

    void Forget() {
        pane_.ShowDropTarget(nullptr, false);
        source_ = nullptr;
        isNode_ = false;
    }

    TreePane& pane_;
    TreeDragHost& host_;
    Node* source_ = nullptr;
    bool isNode_ = false;
};

}  // namespace

void DragNode(const TreePane& pane, const Node& node) {
    const DraggedNode payload{static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(pane.Window())),
                              node.Index()};
    auto* const data = new NodeDataObject(payload);
    auto* const source = new NodeDropSource;
    DWORD effect = DROPEFFECT_NONE;
    DoDragDrop(data, source, DROPEFFECT_MOVE | DROPEFFECT_COPY, &effect);
    source->Release();
    data->Release();
}

bool AcceptDrops(TreePane& pane, TreeDragHost& host) {
    auto* const target = new TreeDropTarget(pane, host);
    const HRESULT registered = RegisterDragDrop(pane.Window(), target);
    target->Release();
    return SUCCEEDED(registered);
}

void StopDropping(const TreePane& pane) {
    RevokeDragDrop(pane.Window());
}
