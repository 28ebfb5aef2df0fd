#include "windows/main/PreviewPane.h"

// The rich-text box and the tab need <windows.h> in front of them.
#include <commctrl.h>
#include <richedit.h>
#include <richole.h>

#include <algorithm>
#include <utility>

#include "engine/clipboard/FormatNames.h"
#include "platform/Guard.h"
#include "platform/Platform.h"
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

constexpr DWORD kTextStyle =
    WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL;

HWND MakeBox(HWND parent, DWORD exStyle, const wchar_t* name, DWORD style, int control) {
    return CreateWindowExW(exStyle, name, L"", WS_CHILD | WS_TABSTOP | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), GetModuleHandleW(nullptr),
                           nullptr);
}

constexpr UINT_PTR kRestTimer = 1;
// Whoever walks through the clips has gone on by then; after that, between any two messages.
constexpr UINT kBeforeRest = 250;
constexpr UINT kBetweenPieces = 10;

}  // namespace

bool PreviewPane::Create(HWND parent) {
    tab_ = MakeBox(parent, 0, WC_TABCONTROLW, WS_CLIPSIBLINGS, tabFormat);
    text_ = MakeBox(parent, WS_EX_CLIENTEDGE, L"EDIT", kTextStyle, tbPreviewText);
    if (tab_ == nullptr || text_ == nullptr || !picture_.Create(parent, picPreviewDIB)) return false;
    SetWindowLongPtrW(tab_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SendMessageW(text_, EM_SETLIMITTEXT, 0, 0);

    int place = 0;
    for (const wchar_t* caption : {L"Text", L"RTF", L"Bild"}) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(caption);
        SendMessageW(tab_, TCM_INSERTITEMW, static_cast<WPARAM>(place++), reinterpret_cast<LPARAM>(&item));
    }
    return true;
}

// Its library is large, and most never look at rich text.
void PreviewPane::MakeRichTextBox() {
    constexpr std::pair<const wchar_t*, const wchar_t*> kLibraries[] = {{L"Msftedit.dll", MSFTEDIT_CLASS},
                                                                        {L"Riched20.dll", RICHEDIT_CLASSW}};
    for (const auto& [library, name] : kLibraries) {
        richTextLibrary_.Reset(LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
        if (richTextLibrary_.IsSet())
            richText_ = MakeBox(GetParent(tab_), WS_EX_CLIENTEDGE, name, kTextStyle, tbPreviewRtf);
        if (richText_ != nullptr) break;
    }
    if (richText_ == nullptr) return;
    SendMessageW(richText_, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    SendMessageW(richText_, EM_SETOLECALLBACK, 0, reinterpret_cast<LPARAM>(&TheNoObjects()));
    // The box begins with the system's bold font; text that does not name its own must not look emphasised.
    CHARFORMATW plain{};
    plain.cbSize = sizeof plain;
    plain.dwMask = CFM_BOLD;
    SendMessageW(richText_, EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&plain));
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
    if (appears) Fill();
}

void PreviewPane::LayOutInside() {
    RECT area;
    GetWindowRect(tab_, &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(tab_), reinterpret_cast<POINT*>(&area), 2);
    SendMessageW(tab_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    for (const HWND box : {text_, richText_, picture_.Window()}) {
        if (box == nullptr) continue;
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
    Fill();
    LayOutInside();
}

void PreviewPane::Clear() {
    formats_ = nullptr;
    Fill();
}

void PreviewPane::Show(const ListContent& content) {
    formats_ = content.formats;
    clipFile_ = content.clipFile;
    Fill();
}

void PreviewPane::Fill() {
    ForgetRest();
    const Tab tab = Chosen();
    if (tab == Tab::RichText && shown_ && richText_ == nullptr) MakeRichTextBox();
    const bool something = shown_ && formats_ != nullptr;
    if (tab != Tab::Text || !something || !ShowText()) EmptyText();
    if (tab != Tab::RichText || !something || !ShowRichText()) EmptyRichText();
    if (tab != Tab::Picture || !something || !ShowPicture()) picture_.Clear();
}

void PreviewPane::EmptyText() {
    if (std::exchange(textFilled_, false)) SetWindowTextW(text_, L"");
}

void PreviewPane::EmptyRichText() {
    if (std::exchange(richTextFilled_, false)) SetWindowTextW(richText_, L"");
}

bool PreviewPane::ShowText() {
    const CFormat* const format = FindById(kTextFormat);
    if (format == nullptr) return false;
    restOfText_ = PreviewTextReader(clipFile_, *format);
    const auto text = restOfText_.Next(kFirstPreviewBytes);
    if (text && SetWindowTextW(text_, text->c_str())) {
        textFilled_ = true;
        if (restOfText_.HasMore()) ShowRestLater(kBeforeRest);
        return true;
    }
    ForgetRest();
    EmptyText();
    ThePlatform().user.Tell(L"Textdaten konnten nicht geladen werden");
    return false;
}

bool PreviewPane::ShowRichText() {
    const CFormat* const format = FindByName(kRichTextName);
    if (format == nullptr) return false;
    if (richText_ != nullptr && StreamRichText(*format, kNextPreviewBytes)) {
        if (static_cast<std::size_t>(format->DataSize) > kNextPreviewBytes) {
            restOfRichText_ = format;
            ShowRestLater(kBeforeRest);
        }
        return true;
    }
    EmptyRichText();
    ThePlatform().user.Tell(L"Textdaten (RTF) konnten nicht geladen werden");
    return false;
}

bool PreviewPane::StreamRichText(const CFormat& format, std::size_t most) {
    const auto read = ReadPreview(clipFile_, format, 0, most);
    if (!read) return false;
    std::span<const std::uint8_t> rest = RichTextOf(read->All());
    EDITSTREAM stream{};
    stream.dwCookie = reinterpret_cast<DWORD_PTR>(&rest);
    stream.pfnCallback = &FeedRichText;
    richTextFilled_ = true;
    SendMessageW(richText_, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    return stream.dwError == 0;
}

bool PreviewPane::ShowPicture() {
    const CFormat* const dib = FindById(kDibFormat);
    const CFormat* const format = dib != nullptr ? dib : FindById(kBitmapFormat);
    if (format == nullptr) return false;
    if (auto read = ReadPreview(clipFile_, *format, 0, static_cast<std::size_t>(format->DataSize))) {
        const std::optional<DibLayout> layout = CheckDib(read->All());
        if (layout && picture_.ShowDib(std::move(read->bytes), *layout)) return true;
    }
    picture_.Clear();
    ThePlatform().user.Tell(format == dib ? L"DIB konnte nicht geladen werden"
                                          : L"Bitmap konnte nicht geladen werden");
    return false;
}

void PreviewPane::ShowRestLater(UINT milliseconds) {
    SetTimer(tab_, kRestTimer, milliseconds, &PreviewPane::RestIsDue);
}

void PreviewPane::ForgetRest() {
    if (restOfText_.HasMore() || restOfRichText_ != nullptr) KillTimer(tab_, kRestTimer);
    restOfText_ = {};
    restOfRichText_ = nullptr;
}

void CALLBACK PreviewPane::RestIsDue(HWND tab, UINT, UINT_PTR timer, DWORD) {
    KillTimer(tab, timer);
    Guarded(false, [&] {
        reinterpret_cast<PreviewPane*>(GetWindowLongPtrW(tab, GWLP_USERDATA))->ShowRest();
        return true;
    });
}

void PreviewPane::ShowRest() {
    // Not under the hand that selects in the text.
    if (GetCapture() != nullptr) {
        ShowRestLater(kBeforeRest);
    } else if (restOfText_.HasMore()) {
        if (const auto text = restOfText_.Next(kNextPreviewBytes)) AppendText(*text);
        if (restOfText_.HasMore()) ShowRestLater(kBetweenPieces);
    } else if (const CFormat* const format = std::exchange(restOfRichText_, nullptr)) {
        StreamRichText(*format, kMostPreviewBytes);
    }
}

// What is selected and shown stays so.
void PreviewPane::AppendText(const std::wstring& text) {
    DWORD from = 0, to = 0;
    SendMessageW(text_, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    const LRESULT top = SendMessageW(text_, EM_GETFIRSTVISIBLELINE, 0, 0);
    const int end = GetWindowTextLengthW(text_);
    SendMessageW(text_, WM_SETREDRAW, FALSE, 0);
    SendMessageW(text_, EM_SETSEL, static_cast<WPARAM>(end), end);
    SendMessageW(text_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(text_, EM_SETSEL, from, static_cast<LPARAM>(to));
    SendMessageW(text_, EM_LINESCROLL, 0, top - SendMessageW(text_, EM_GETFIRSTVISIBLELINE, 0, 0));
    SendMessageW(text_, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(text_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
}

const CFormat* PreviewPane::FindById(FormatNumber id) const {
    for (const CFormat& format : *formats_)
        if (format.FormatId == id) return &format;
    return nullptr;
}

const CFormat* PreviewPane::FindByName(const std::wstring& name) const {
    for (const CFormat& format : *formats_)
        if (format.FormatName == name) return &format;
    return nullptr;
}
