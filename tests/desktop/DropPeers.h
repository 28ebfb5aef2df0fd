#pragma once

#include <windows.h>
// OLE needs <windows.h> in front of it.
#include <ole2.h>
#include <shlobj.h>

#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"
#include "windows/controls/ComObject.h"

// What stands for Explorer when things are dragged from one program into another.

class OleHere {
 public:
    OleHere() { OleInitialize(nullptr); }
    ~OleHere() { OleUninitialize(); }
    OleHere(const OleHere&) = delete;
    OleHere& operator=(const OleHere&) = delete;
};

inline FORMATETC FormatOf(const wchar_t* name, DWORD medium, LONG index = -1) {
    return {static_cast<CLIPFORMAT>(RegisterClipboardFormatW(name)), nullptr, DVASPECT_CONTENT, index,
            medium};
}

// A small window on top of all others that takes files which exist in no directory yet.
class FileTaker {
 public:
    FileTaker()
        : window_(CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, L"STATIC", L"Ablage",
                                  WS_POPUP | WS_VISIBLE | SS_NOTIFY, 0, 0, 60, 400, nullptr, nullptr, nullptr,
                                  nullptr)) {
        RegisterDragDrop(window_, target_.get());
    }
    ~FileTaker() {
        RevokeDragDrop(window_);
        DestroyWindow(window_);
    }
    FileTaker(const FileTaker&) = delete;
    FileTaker& operator=(const FileTaker&) = delete;

    // At the height of what is dragged: on the way the list's heading would keep the moves from the list.
    static POINT PlaceAt(LONG height) { return {30, height}; }
    // By their names; none means that the receiver was told that it cannot be had.
    const std::map<std::wstring, std::optional<std::string>>& Files() const { return target_->files; }
    bool Dropped() const { return target_->dropped; }
    // Comes between the names and the bytes.
    std::function<void()> beforeTheBytes;

 private:
    class Target : public ComObject<IDropTarget> {
     public:
        explicit Target(FileTaker& taker) : taker_(taker) {}
        HRESULT STDMETHODCALLTYPE DragEnter(IDataObject*, DWORD, POINTL, DWORD* effect) noexcept override {
            *effect &= DROPEFFECT_COPY;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL, DWORD* effect) noexcept override {
            *effect &= DROPEFFECT_COPY;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE DragLeave() noexcept override { return S_OK; }
        HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) noexcept override {
            *effect &= DROPEFFECT_COPY;
            const std::vector<std::wstring> names = NamesIn(data);
            if (taker_.beforeTheBytes) taker_.beforeTheBytes();
            for (std::size_t i = 0; i < names.size(); ++i)
                files[names[i]] = BytesIn(data, static_cast<LONG>(i));
            dropped = true;
            return S_OK;
        }

        std::map<std::wstring, std::optional<std::string>> files;
        bool dropped = false;

     private:
        static std::vector<std::wstring> NamesIn(IDataObject* data) {
            FORMATETC format = FormatOf(CFSTR_FILEDESCRIPTORW, TYMED_HGLOBAL);
            STGMEDIUM medium{};
            std::vector<std::wstring> names;
            if (FAILED(data->GetData(&format, &medium))) return names;
            const auto* const group = static_cast<FILEGROUPDESCRIPTORW*>(GlobalLock(medium.hGlobal));
            for (UINT i = 0; i < group->cItems; ++i)
                names.emplace_back(group->fgd[i].cFileName);
            GlobalUnlock(medium.hGlobal);
            ReleaseStgMedium(&medium);
            return names;
        }
        static std::optional<std::string> BytesIn(IDataObject* data, LONG index) {
            FORMATETC format = FormatOf(CFSTR_FILECONTENTS, TYMED_ISTREAM, index);
            STGMEDIUM medium{};
            if (FAILED(data->GetData(&format, &medium))) return std::nullopt;
            std::string bytes;
            char piece[4096];
            for (ULONG read = 1; read > 0; bytes.append(piece, read)) {
                read = 0;
                medium.pstm->Read(piece, sizeof piece, &read);
            }
            ReleaseStgMedium(&medium);
            return bytes;
        }
        FileTaker& taker_;
    };

    const ComOwned<Target> target_{new Target(*this)};
    const HWND window_;
};

// A list of files as Explorer drags it.
class DraggedFiles : public ComObject<IDataObject> {
 public:
    explicit DraggedFiles(const std::vector<std::wstring>& paths) {
        DROPFILES head{};
        head.pFiles = sizeof head;
        head.fWide = TRUE;
        bytes_.assign(reinterpret_cast<const char*>(&head), sizeof head);
        std::wstring list;
        for (const std::wstring& path : paths)
            list += path + L'\0';
        list += L'\0';
        bytes_.append(reinterpret_cast<const char*>(list.data()), list.size() * sizeof(wchar_t));
    }
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override {
        if (QueryGetData(format) != S_OK) return DV_E_FORMATETC;
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = GlobalAlloc(GMEM_MOVEABLE, bytes_.size());
        medium->pUnkForRelease = nullptr;
        std::copy(bytes_.begin(), bytes_.end(), static_cast<char*>(GlobalLock(medium->hGlobal)));
        GlobalUnlock(medium->hGlobal);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) noexcept override {
        return format->cfFormat == CF_HDROP && (format->tymed & TYMED_HGLOBAL) != 0 ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) noexcept override {
        out->ptd = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC** enumerator) noexcept override {
        const FORMATETC format{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
        return SHCreateStdEnumFmtEtc(1, &format, enumerator);
    }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) noexcept override {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) noexcept override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) noexcept override {
        return OLE_E_ADVISENOTSUPPORTED;
    }

 private:
    std::string bytes_;
};

class FileSource : public ComObject<IDropSource> {
 public:
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) noexcept override {
        if (escape) return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) != 0 ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD effect) noexcept override {
        effect_ = effect;
        return DRAGDROP_S_USEDEFAULTCURSORS;
    }
    DWORD Effect() const { return effect_; }

 private:
    std::atomic<DWORD> effect_{DROPEFFECT_NONE};
};

// Drags files from a window of this program to a place of the screen, lets go where they are welcome, and
// returns what the receiver did: DROPEFFECT_NONE when they were not within `patience`.
inline DWORD DragFiles(const std::vector<std::wstring>& paths, POINT to,
                       std::chrono::milliseconds patience = kBound) {
    const ComOwned<DraggedFiles> files(new DraggedFiles(paths));
    const ComOwned<FileSource> source(new FileSource);
    // The system asks a window whether it takes anything when the pointer comes into it, and not again while
    // it stays there; a program that has just begun may register it a moment later.
    WaitFor("a window that takes drops",
            [&] { return GetPropW(WindowFromPoint(to), L"OleDropTargetInterface") != nullptr; });
    // The button goes down over a window that takes nothing itself.
    const HWND from =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, L"STATIC", L"Quelle",
                        WS_POPUP | WS_VISIBLE | SS_NOTIFY, 0, 0, 60, 60, nullptr, nullptr, nullptr, nullptr);
    MoveMouse({30, 30});
    MouseButton(true);
    WaitFor("the button", [] { return GetKeyState(VK_LBUTTON) < 0; });
    std::jthread hand([&] {
        const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(patience.count());
        for (LONG step = 0; source->Effect() == DROPEFFECT_NONE && GetTickCount64() < end; ++step) {
            MoveMouse({to.x + step % 3, to.y});
            Sleep(static_cast<DWORD>(kPollPause.count()) * 4);
        }
        MouseButton(false);
    });
    DWORD effect = DROPEFFECT_NONE;
    const HRESULT result =
        DoDragDrop(files.get(), source.get(), DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK, &effect);
    DestroyWindow(from);
    return result == DRAGDROP_S_DROP ? effect : DROPEFFECT_NONE;
}
