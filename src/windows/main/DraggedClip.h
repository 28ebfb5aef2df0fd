#pragma once

#include <objidl.h>
#include <windows.h>

#include <array>
#include <span>
#include <string>
#include <vector>

#include "engine/flows/ClipAsFiles.h"
#include "engine/flows/modDragDrop.h"
#include "windows/controls/ComObject.h"

// The data of a drag of a node: its payload for our own trees and, of a clip, the ordinary files that it
// becomes where files are dropped. Their names are known at once, from the headers of the clip's file; their
// bytes are read when the receiver asks for them, after the drop.
class DraggedNodeData : public ComObject<IDataObject> {
 public:
    // The nodes are looked at once, now.
    DraggedNodeData(const DraggedNode& payload, ChosenNodes nodes);

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override;
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) noexcept override;
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) noexcept override {
        out->ptd = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** enumerator) noexcept override;
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) noexcept override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) noexcept override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) noexcept override {
        return OLE_E_ADVISENOTSUPPORTED;
    }

    // The format of the payload.
    static FORMATETC NodeFormat();

 private:
    // A clip's come behind the payload.
    std::span<const FORMATETC> Formats() const noexcept;
    HRESULT Give(const FORMATETC& format, STGMEDIUM& medium) const;

    const std::array<std::uint8_t, kDraggedNodeSize> payload_;
    const ClipAsFiles files_;
    const std::array<FORMATETC, 4> formats_;
};

// The full paths of the files that are dragged; empty when no files are.
std::vector<std::wstring> DraggedPaths(IDataObject* data);
// Asked while they are over us, without reading anything.
bool AreFiles(IDataObject* data);
