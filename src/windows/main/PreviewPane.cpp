#include "windows/main/PreviewPane.h"

// The rich-text box and the tab need <windows.h> in front of them.
#include <commctrl.h>
#include <richedit.h>
#include <richole.h>

#include <algorithm>

#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/views/PreviewText.h"
#include "platform/Platform.h"
#include "platform/Text.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"

namespace {

constexpr const wchar_t* kRichTextName = L"Rich Text Format";

// Refuses every embedded object: a preview runs nothing and fetches nothing. One object for all, never freed.
class NoObjects : public IRichEditOleCallback {
 public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_IRichEditOleCallback;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetNewStorage(LPSTORAGE*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetInPlaceContext(LPOLEINPLACEFRAME*, LPOLEINPLACEUIWINDOW*,
                                                LPOLEINPLACEFRAMEINFO) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ShowContainerUI(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryInsertObject(LPCLSID, LPSTORAGE, LONG) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE DeleteObject(LPOLEOBJECT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE QueryAcceptData(LPDATAOBJECT, CLIPFORMAT*, DWORD, BOOL, HGLOBAL) override {
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(CHARRANGE*, DWORD, LPDATAOBJECT*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDragDropEffect(BOOL, DWORD, LPDWORD effect) override {
        if (effect != nullptr) *effect = DROPEFFECT_NONE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetContextMenu(WORD, LPOLEOBJECT, CHARRANGE*, HMENU*) override {
        return E_NOTIMPL;
    }
};

NoObjects& TheNoObjects() {
    static NoObjects none;
    return none;
}

DWORD CALLBACK FeedRichText(DWORD_PTR cookie, LPBYTE buffer, LONG wanted, LONG* given) {
    auto& rest = *reinterpret_cast<std::span<const std::uint8_t>*>(cookie);
    const std::size_t count = std::min(rest.size(), static_cast<std::size_t>(wanted));
    std::copy_n(rest.begin(), count, buffer);
    rest = rest.subspan(count);
    *given = static_cast<LONG>(count);
    return 0;
}

}  // namespace

bool PreviewPane::Create(HWND parent) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    const auto make = [&](DWORD exStyle, const wchar_t* name, DWORD style, int control) {
        return CreateWindowExW(exStyle, name, L"", WS_CHILD | WS_TABSTOP | style, 0, 0, 0, 0, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), instance, nullptr);
    };
    constexpr DWORD kTextStyle =
        WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL;
    tab_ = make(0, WC_TABCONTROLW, WS_CLIPSIBLINGS, tabFormat);
    text_ = make(WS_EX_CLIENTEDGE, L"EDIT", kTextStyle, tbPreviewText);
    richTextLibrary_.Reset(LoadLibraryW(L"Msftedit.dll"));
    if (richTextLibrary_.IsSet()) {
        richText_ = make(WS_EX_CLIENTEDGE, MSFTEDIT_CLASS, kTextStyle, tbPreviewRtf);
    }
    if (richText_ == nullptr) {
        richTextLibrary_.Reset(LoadLibraryW(L"Riched20.dll"));
        richText_ = make(WS_EX_CLIENTEDGE, RICHEDIT_CLASSW, kTextStyle, tbPreviewRtf);
    }
    if (tab_ == nullptr || text_ == nullptr || richText_ == nullptr ||
        !picture_.Create(parent, picPreviewDIB))
        return false;
    SendMessageW(text_, EM_SETLIMITTEXT, 0, 0);
    SendMessageW(richText_, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    SendMessageW(richText_, EM_SETOLECALLBACK, 0, reinterpret_cast<LPARAM>(&TheNoObjects()));
    // The box begins with the system's bold font; text that does not name its own must not look emphasised.
    CHARFORMATW plain{};
    plain.cbSize = sizeof plain;
    plain.dwMask = CFM_BOLD;
    SendMessageW(richText_, EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&plain));

    int place = 0;
    for (const wchar_t* caption : {L"Text", L"RTF", L"Bild"}) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(caption);
        SendMessageW(tab_, TCM_INSERTITEMW, static_cast<WPARAM>(place++), reinterpret_cast<LPARAM>(&item));
    }
    return true;
}

void PreviewPane::SetFont(HFONT font) {
    for (const HWND control : {tab_, text_})
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    LayOutInside();
}

void PreviewPane::Place(const ::Box& area) {
    const bool appears = area.width > 0 && area.height > 0 && !shown_;
    shown_ = area.width > 0 && area.height > 0;
    SetWindowPos(tab_, nullptr, area.left, area.top, area.width, area.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | (shown_ ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    LayOutInside();
    if (appears && content_ != nullptr) Show(*content_);
}

void PreviewPane::LayOutInside() {
    RECT area;
    GetWindowRect(tab_, &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(tab_), reinterpret_cast<POINT*>(&area), 2);
    SendMessageW(tab_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    for (const HWND box : {text_, richText_, picture_.Window()}) {
        const bool visible = shown_ && box == ChosenBox();
        SetWindowPos(box, HWND_TOP, area.left, area.top, std::max(area.right - area.left, 0L),
                     std::max(area.bottom - area.top, 0L),
                     SWP_NOACTIVATE | (visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    }
}

PreviewPane::Tab PreviewPane::Chosen() const {
    return static_cast<Tab>(std::max(TabCtrl_GetCurSel(tab_), 0));
}

HWND PreviewPane::ChosenBox() const {
    switch (Chosen()) {
        case Tab::RichText:
            return richText_;
        case Tab::Picture:
            return picture_.Window();
        default:
            return text_;
    }
}

bool PreviewPane::Wants(const MSG& message) const {
    if (message.hwnd != text_ && message.hwnd != richText_) return false;
    if (message.message != WM_KEYDOWN) return false;
    // Whoever reads a text does not mean the clip.
    if (message.wParam == VK_DELETE) return true;
    return GetKeyState(VK_CONTROL) < 0 && (message.wParam == L'C' || message.wParam == L'A');
}

void PreviewPane::TabChanged() {
    LayOutInside();
    ClearBoxes();
    if (content_ != nullptr) Show(*content_);
}

void PreviewPane::Clear() {
    content_ = nullptr;
    ClearBoxes();
}

void PreviewPane::ClearBoxes() {
    SetWindowTextW(text_, L"");
    SetWindowTextW(richText_, L"");
    picture_.Clear();
}

void PreviewPane::Show(const ListContent& content) {
    content_ = &content;
    if (!shown_ || content.formats == nullptr) return;
    switch (Chosen()) {
        case Tab::Text:
            return ShowText();
        case Tab::RichText:
            return ShowRichText();
        case Tab::Picture:
            return ShowPicture();
    }
}

void PreviewPane::ShowText() {
    CFormat* const format = FindById(kTextFormat);
    if (format == nullptr) return;
    const bool shown = WithData(*format, [this](std::span<const std::uint8_t> bytes) {
        return SetWindowTextW(text_, PreviewTextOf(bytes).c_str()) != 0;
    });
    if (shown) return;
    SetWindowTextW(text_, L"");
    ThePlatform().user.Tell(L"Textdaten konnten nicht geladen werden");
}

void PreviewPane::ShowRichText() {
    CFormat* const format = FindByName(kRichTextName);
    if (format == nullptr) return;
    const bool shown = WithData(*format, [this](std::span<const std::uint8_t> bytes) {
        std::span<const std::uint8_t> rest = RichTextOf(bytes);
        EDITSTREAM stream{};
        stream.dwCookie = reinterpret_cast<DWORD_PTR>(&rest);
        stream.pfnCallback = &FeedRichText;
        SendMessageW(richText_, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
        return stream.dwError == 0;
    });
    if (shown) return;
    SetWindowTextW(richText_, L"");
    ThePlatform().user.Tell(L"Textdaten (RTF) konnten nicht geladen werden");
}

void PreviewPane::ShowPicture() {
    CFormat* const dib = FindById(kDibFormat);
    CFormat* const format = dib != nullptr ? dib : FindById(kBitmapFormat);
    if (format == nullptr) return;
    const bool shown = WithData(*format, [this](std::span<const std::uint8_t> bytes) {
        const std::optional<DibLayout> layout = CheckDib(bytes);
        return layout && picture_.ShowDib(bytes, *layout);
    });
    if (shown) return;
    picture_.Clear();
    ThePlatform().user.Tell(format == dib ? L"DIB konnte nicht geladen werden"
                                          : L"Bitmap konnte nicht geladen werden");
}

bool PreviewPane::WithData(CFormat& format,
                           const std::function<bool(std::span<const std::uint8_t>)>& use) const {
    const ClipFileScope file(OpenClipFile(content_->clipFile, false, true));
    if (!file.IsOpen() || !format.LoadDataFromFile(file.Handle(), false)) return false;
    const auto* const bytes = static_cast<const std::uint8_t*>(format.LockMemo());
    const bool used = bytes != nullptr && use({bytes, static_cast<std::size_t>(format.DataLength)});
    format.ReleaseGlobalData(false);
    return used;
}

CFormat* PreviewPane::FindById(FormatNumber id) const {
    for (CFormat& format : *content_->formats)
        if (format.FormatId == id) return &format;
    return nullptr;
}

CFormat* PreviewPane::FindByName(const std::wstring& name) const {
    for (CFormat& format : *content_->formats)
        if (format.FormatName == name) return &format;
    return nullptr;
}
