#include "windows/main/PreviewPane.h"

// The rich-text box and the tab need <windows.h> in front of them.
#include <commctrl.h>
#include <richedit.h>
#include <richole.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <utility>

#include "engine/clipboard/FormatNames.h"
#include "engine/search/WordSearch.h"
#include "platform/Platform.h"
#include "platform/Text.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/PngDecoder.h"
#include "windows/controls/QuietScope.h"
#include "windows/controls/Readers.h"

namespace {

// Refuses every embedded object: a preview runs nothing and fetches nothing. One object for all, never freed.
class NoObjects : public IRichEditOleCallback {
 public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override {
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
    HRESULT STDMETHODCALLTYPE GetDragDropEffect(BOOL, DWORD, LPDWORD effect) noexcept override {
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

DWORD CALLBACK FeedRichText(DWORD_PTR cookie, LPBYTE buffer, LONG wanted, LONG* given) noexcept {
    auto& rest = *reinterpret_cast<std::span<const std::uint8_t>*>(cookie);
    const std::size_t count = std::min(rest.size(), static_cast<std::size_t>(wanted));
    std::copy_n(rest.begin(), count, buffer);
    rest = rest.subspan(count);
    *given = static_cast<LONG>(count);
    return 0;
}

constexpr DWORD kTextStyle =
    WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL;

HWND MakeBox(HWND parent, DWORD exStyle, const wchar_t* name, DWORD style, int control) {
    return CreateWindowExW(exStyle, name, L"", WS_CHILD | WS_TABSTOP | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), GetModuleHandleW(nullptr),
                           nullptr);
}

struct TextExtent {
    int width;
    int height;
};

LRESULT LengthOfLine(HWND box, LRESULT line) {
    const LRESULT begin = SendMessageW(box, EM_LINEINDEX, static_cast<WPARAM>(line), 0);
    return SendMessageW(box, EM_LINELENGTH, static_cast<WPARAM>(begin), 0);
}

// How much room the text of an edit box takes, in pixels. Of many lines the first count, of those the one
// with the most characters: to measure is dear.
TextExtent ExtentOf(HWND box) {
    constexpr LRESULT kLookedAt = 500;
    const LRESULT lines = SendMessageW(box, EM_GETLINECOUNT, 0, 0);
    LRESULT longest = 0;
    for (LRESULT line = 1; line < std::min(lines, kLookedAt); ++line)
        if (LengthOfLine(box, line) > LengthOfLine(box, longest)) longest = line;
    const std::wstring text = TextOfLine(box, longest);

    const HDC dc = GetDC(box);
    const HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(box, WM_GETFONT, 0, 0)));
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const DWORD size = GetTabbedTextExtentW(dc, text.c_str(), static_cast<int>(text.size()), 0, nullptr);
    SelectObject(dc, before);
    ReleaseDC(box, dc);
    return {LOWORD(size) + 2 * metrics.tmAveCharWidth, static_cast<int>(lines * metrics.tmHeight)};
}

std::wstring TextOfBox(HWND box) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(box)), L'\0');
    // With the zero behind it, which the text has room for.
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(box, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

// With one character for each line's end: so the box counts.
std::wstring TextOfRichBox(HWND box) {
    constexpr UINT kUtf16 = 1200;
    GETTEXTLENGTHEX length{GTL_NUMCHARS | GTL_PRECISE, kUtf16};
    const LRESULT count = SendMessageW(box, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&length), 0);
    std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(count, 0)), L'\0');
    GETTEXTEX how{};
    how.cb = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    how.flags = GT_DEFAULT;
    how.codepage = kUtf16;
    text.resize(static_cast<std::size_t>(SendMessageW(box, EM_GETTEXTEX, reinterpret_cast<WPARAM>(&how),
                                                      reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

constexpr const wchar_t* kCaptions[] = {L"Text", L"RTF", L"Bild"};
// Whoever walks through the clips has gone on by then; after that, between any two messages.
constexpr std::chrono::milliseconds kBeforeRest(250);
constexpr std::chrono::milliseconds kBetweenPieces(10);

}  // namespace

void PreviewPane::MarkHits() {
    hitIsDue_ = false;
    const bool plain = hit_ && InFront() == PreviewTab::Text && textFilled_;
    marks_.SetWords(plain ? std::optional(WordSearch(hit_->query, hit_->likeness)) : std::nullopt);
    if (hit_ && InFront() == PreviewTab::RichText && richTextFilled_) {
        WordSearch words(hit_->query, hit_->likeness);
        const QuietScope quiet(richText_);
        SendMessageW(richText_, WM_SETREDRAW, FALSE, 0);
        MarkRichText(richText_, TextOfRichBox(richText_), words);
        SendMessageW(richText_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(richText_, nullptr, TRUE);
    }
    ShowHitFrom(0);
}

bool PreviewPane::Create(HWND parent) {
    tab_ =
        MakeBox(parent, 0, WC_TABCONTROLW, WS_CLIPSIBLINGS | TCS_OWNERDRAWFIXED | TCS_FIXEDWIDTH, tabFormat);
    text_ = MakeBox(parent, WS_EX_CLIENTEDGE, L"EDIT", kTextStyle, tbPreviewText);
    if (tab_ == nullptr || text_ == nullptr) return false;
    NameByHiddenText(tab_, L"Vorschau");
    PutOverTab(text_, L"Vorschau als Text");
    SendMessageW(text_, EM_SETLIMITTEXT, 0, 0);
    marks_.Attach(text_);
    // Made with them, it can have them; without a text there is nothing to scroll with them.
    SetWindowLongPtrW(text_, GWL_STYLE,
                      GetWindowLongPtrW(text_, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_VSCROLL | WS_HSCROLL));

    int place = 0;
    for (const wchar_t* caption : kCaptions) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(caption);
        SendMessageW(tab_, TCM_INSERTITEMW, static_cast<WPARAM>(place++), reinterpret_cast<LPARAM>(&item));
    }
    return true;
}

// A tab does not know what stands in it: the box belongs above it on the screen, and so before it in the
// order of windows, together with its name.
void PreviewPane::PutOverTab(HWND box, const wchar_t* name) {
    SetWindowPos(box, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    NameByHiddenText(box, name);
}

// Most look at texts alone.
void PreviewPane::MakeBoxInFront() {
    if (!shown_ || ChosenBox() != nullptr) return;
    if (InFront() == PreviewTab::RichText)
        MakeRichTextBox();
    else if (picture_.Create(GetParent(tab_), picPreviewDIB, L"Vorschau als Bild"))
        PutOverTab(picture_.Window(), L"Vorschau als Bild");
    LayOutInside();
}

// Its library is large.
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
    PutOverTab(richText_, L"Vorschau als RTF");
    SendMessageW(richText_, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    SendMessageW(richText_, EM_SETOLECALLBACK, 0, reinterpret_cast<LPARAM>(&TheNoObjects()));
    SetRichTextFont();
}

// For text that names no font of its own: the box would begin with the system's bold one of fixed sizes.
void PreviewPane::SetRichTextFont() {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(tab_, WM_GETFONT, 0, 0)), sizeof font, &font);
    CHARFORMATW plain{};
    plain.cbSize = sizeof plain;
    plain.dwMask = CFM_BOLD | CFM_ITALIC | CFM_FACE | CFM_SIZE | CFM_CHARSET | CFM_COLOR;
    plain.dwEffects = CFE_AUTOCOLOR;
    plain.yHeight = static_cast<LONG>(TwipsFromPixels(std::abs(font.lfHeight), DpiOfWindow(richText_)));
    plain.bCharSet = font.lfCharSet;
    lstrcpynW(plain.szFaceName, font.lfFaceName, LF_FACESIZE);
    SendMessageW(richText_, EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&plain));
}

void PreviewPane::SetFont(HFONT font) {
    for (const HWND control : {tab_, text_})
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), MAKELPARAM(shown_, 0));
    if (richText_ != nullptr) SetRichTextFont();
    FitTabs();
    if (shown_) LayOutInside();
}

void PreviewPane::Place(const ::Box& area) {
    const bool appears = area.width > 0 && area.height > 0 && !shown_;
    shown_ = area.width > 0 && area.height > 0;
    SetWindowPos(tab_, nullptr, area.left, area.top, area.width, area.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | (shown_ ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    LayOutInside();
    if (appears)
        Fill();
    else
        FitBars();
}

void PreviewPane::LayOutInside() {
    RECT area;
    GetWindowRect(tab_, &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(tab_), reinterpret_cast<POINT*>(&area), 2);
    SendMessageW(tab_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    for (const HWND box : {text_, richText_, picture_.Window()}) {
        if (box == nullptr) continue;
        const bool visible = shown_ && box == ChosenBox();
        SetWindowPos(box, nullptr, area.left, area.top, std::max(area.right - area.left, 0L),
                     std::max(area.bottom - area.top, 0L),
                     SWP_NOZORDER | SWP_NOACTIVATE | (visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    }
}

PreviewTab PreviewPane::InFront() const {
    return static_cast<PreviewTab>(std::max(TabCtrl_GetCurSel(tab_), 0));
}

HWND PreviewPane::ChosenBox() const {
    switch (InFront()) {
        case PreviewTab::RichText:
            return richText_;
        case PreviewTab::Picture:
            return picture_.Window();
        default:
            return text_;
    }
}

void PreviewPane::BringToFront(PreviewTab tab) {
    if (tab == InFront()) return;
    const bool focused = GetFocus() != nullptr && GetFocus() == ChosenBox();
    TabCtrl_SetCurSel(tab_, static_cast<int>(tab));
    MakeBoxInFront();
    LayOutInside();
    if (focused) SetFocus(ChosenBox());
}

const CFormat* PreviewPane::FormatFor(PreviewTab tab) const {
    return formats_ != nullptr ? PreviewFormat(*formats_, tab) : nullptr;
}

bool PreviewPane::Wants(const MSG& message) const {
    if (message.hwnd != text_ && message.hwnd != richText_) return false;
    if (message.message != WM_KEYDOWN) return false;
    // Whoever reads a text does not mean the clip.
    if (message.wParam == VK_DELETE) return true;
    return GetKeyState(VK_CONTROL) < 0 && (message.wParam == L'C' || message.wParam == L'A');
}

void PreviewPane::TabChanged() {
    wanted_ = InFront();
    Fill();
    LayOutInside();
}

void PreviewPane::Clear() {
    hit_.reset();
    formats_ = nullptr;
    Fill();
}

void PreviewPane::Show(const ListContent& content) {
    hit_.reset();
    formats_ = content.formats;
    clipFile_ = content.clipFile;
    if (formats_ != nullptr) BringToFront(TabToShow(*formats_, wanted_));
    Fill();
}

void PreviewPane::Show(const ListContent& content, PreviewHit hit) {
    formats_ = content.formats;
    clipFile_ = content.clipFile;
    hit_ = std::move(hit);
    if (formats_ != nullptr) BringToFront(TabOfHit());
    Fill();
}

// The tab that shows the record of the hit, if one does.
PreviewTab PreviewPane::TabOfHit() const {
    if (hit_->record >= 0 && hit_->record < formats_->Count()) {
        const CFormat* const format = &formats_->Item(hit_->record + 1);
        for (const PreviewTab tab : {PreviewTab::Text, PreviewTab::RichText})
            if (PreviewFormat(*formats_, tab) == format) return tab;
    }
    return TabToShow(*formats_, wanted_);
}

// A hit far behind is shown with what stands around it.
std::size_t PreviewPane::BeginOfText(const CFormat& format) const {
    constexpr std::size_t kBeforeHit = 2000;
    const bool here = hit_ && hit_->record >= 0 && hit_->record < formats_->Count() &&
                      &formats_->Item(hit_->record + 1) == &format;
    return here && hit_->begin > kFirstPreviewBytes / 4 ? hit_->begin - kBeforeHit : 0;
}

void PreviewPane::ShowNextHit() {
    if (!hit_) return;
    DWORD begin = 0, end = 0;
    SendMessageW(ChosenBox(), EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    ShowHitFrom(end);
}

void PreviewPane::ShowHitFrom(std::size_t place) {
    const bool rich = InFront() == PreviewTab::RichText;
    if (!hit_ || (rich ? !richTextFilled_ : InFront() != PreviewTab::Text || !textFilled_)) return;
    const HWND box = ChosenBox();
    const std::u16string text = Utf16FromText(rich ? TextOfRichBox(box) : TextOfBox(box));
    WordSearch words(hit_->query, hit_->likeness);
    auto found = words.Next(text, place);
    if (!found && place > 0) found = words.Next(text, 0);
    hitIsDue_ = !found;
    if (!found) return;
    SendMessageW(box, EM_SETSEL, found->begin, static_cast<LPARAM>(found->End()));
    SendMessageW(box, EM_SCROLLCARET, 0, 0);
}

void PreviewPane::Fill() {
    ForgetRest();
    const PreviewTab tab = InFront();
    MakeBoxInFront();
    const bool something = shown_ && FormatFor(tab) != nullptr;
    const QuietScope quiet(text_);
    if (tab != PreviewTab::Text || !something || !ShowText()) EmptyText();
    if (tab != PreviewTab::RichText || !something || !ShowRichText()) EmptyRichText();
    if (tab != PreviewTab::Picture || !something || !ShowPicture()) picture_.Clear();
    FitBars();
    MarkHits();
    MarkEmptyTabs();
}

void PreviewPane::EmptyText() {
    if (std::exchange(textFilled_, false)) SetWindowTextW(text_, L"");
}

void PreviewPane::EmptyRichText() {
    if (std::exchange(richTextFilled_, false)) SetWindowTextW(richText_, L"");
}

bool PreviewPane::ShowText() {
    const CFormat* const format = FormatFor(PreviewTab::Text);
    restOfText_ = PreviewTextReader(clipFile_, *format, BeginOfText(*format));
    const auto text = restOfText_.Next(kFirstPreviewBytes);
    if (text && SetWindowTextW(text_, text->c_str())) {
        textFilled_ = true;
        if (restOfText_.HasMore()) rest_.Start(kBeforeRest);
        return true;
    }
    ForgetRest();
    EmptyText();
    ThePlatform().user.Tell(L"Textdaten konnten nicht geladen werden");
    return false;
}

bool PreviewPane::ShowRichText() {
    const CFormat* const format = FormatFor(PreviewTab::RichText);
    if (richText_ != nullptr && StreamRichText(*format, kNextPreviewBytes)) {
        if (static_cast<std::size_t>(format->DataSize) > kNextPreviewBytes) {
            restOfRichText_ = format;
            rest_.Start(kBeforeRest);
        }
        return true;
    }
    EmptyRichText();
    ThePlatform().user.Tell(L"Textdaten (RTF) konnten nicht geladen werden");
    return false;
}

bool PreviewPane::StreamRichText(const CFormat& format, std::size_t most) {
    const auto read = PreviewData(clipFile_, format).Read(0, most);
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
    const CFormat* const format = FormatFor(PreviewTab::Picture);
    const wchar_t* const failure = format->FormatId == kBitmapFormat ? L"Bitmap konnte nicht geladen werden"
                                                                     : L"DIB konnte nicht geladen werden";
    auto picture = OpenPicture(*format);
    if (picture && picture_.Show(std::move(*picture), failure)) return true;
    picture_.Clear();
    ThePlatform().user.Tell(failure);
    return false;
}

std::optional<PreviewPicture> PreviewPane::OpenPicture(const CFormat& format) const {
    PreviewData data(clipFile_, format);
    if (!IsPng(format)) return PreviewPicture::In(std::move(data));
    const auto png = data.Read(0, data.Size());
    auto decoded = png ? DecodePng(png->All()) : std::nullopt;
    return decoded ? PreviewPicture::Of(std::move(*decoded)) : std::nullopt;
}

void PreviewPane::ForgetRest() {
    rest_.Stop();
    restOfText_ = {};
    restOfRichText_ = nullptr;
}

void PreviewPane::ShowRest() {
    // Not under the hand that selects in the text.
    if (GetCapture() != nullptr) {
        rest_.Start(kBeforeRest);
    } else if (restOfText_.HasMore()) {
        if (const auto text = restOfText_.Next(kNextPreviewBytes)) AppendText(*text);
        if (restOfText_.HasMore()) rest_.Start(kBetweenPieces);
    } else if (const CFormat* const format = std::exchange(restOfRichText_, nullptr)) {
        StreamRichText(*format, kMostPreviewBytes);
        MarkHits();
    }
    if (hitIsDue_) ShowHitFrom(0);
}

// What is selected and shown stays so.
void PreviewPane::AppendText(const std::wstring& text) {
    DWORD from = 0, to = 0;
    SendMessageW(text_, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    const LRESULT top = SendMessageW(text_, EM_GETFIRSTVISIBLELINE, 0, 0);
    const int end = GetWindowTextLengthW(text_);
    const QuietScope quiet(text_);
    SendMessageW(text_, EM_SETSEL, static_cast<WPARAM>(end), end);
    SendMessageW(text_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(text_, EM_SETSEL, from, static_cast<LPARAM>(to));
    SendMessageW(text_, EM_LINESCROLL, 0, top - SendMessageW(text_, EM_GETFIRSTVISIBLELINE, 0, 0));
    FitBars();
}

// White as its neighbours: nobody takes a preview for a box to type in.
HBRUSH PreviewPane::ColourBox(HWND control, HDC dc) const {
    if (control != text_) return nullptr;
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    return GetSysColorBrush(COLOR_WINDOW);
}

bool PreviewPane::IsEmpty(PreviewTab tab) const {
    return formats_ != nullptr && FormatFor(tab) == nullptr;
}

// To who sees them their captions are grey; their texts are for who has them read aloud.
void PreviewPane::MarkEmptyTabs() {
    for (int tab = 0; tab < kTabs; ++tab) {
        const bool empty = IsEmpty(static_cast<PreviewTab>(tab));
        if (std::exchange(markedEmpty_[tab], empty) == empty) continue;
        std::wstring text = kCaptions[tab];
        if (empty) text += L" (leer)";
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text.data();
        SendMessageW(tab_, TCM_SETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
    }
    InvalidateRect(tab_, nullptr, FALSE);
}

// As wide as the widest of the captions that are drawn, whatever the tabs' own texts are.
void PreviewPane::FitTabs() {
    const HDC dc = GetDC(tab_);
    const HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(tab_, WM_GETFONT, 0, 0)));
    SIZE widest{};
    for (const wchar_t* caption : kCaptions) {
        SIZE size{};
        GetTextExtentPoint32W(dc, caption, lstrlenW(caption), &size);
        widest = {std::max(widest.cx, size.cx), std::max(widest.cy, size.cy)};
    }
    SelectObject(dc, before);
    ReleaseDC(tab_, dc);
    const UINT dpi = DpiOfWindow(tab_);
    SendMessageW(tab_, TCM_SETITEMSIZE, 0,
                 MAKELPARAM(widest.cx + Scaled(16, dpi), widest.cy + Scaled(6, dpi)));
}

void PreviewPane::DrawTab(const DRAWITEMSTRUCT& item) const {
    const bool empty = IsEmpty(static_cast<PreviewTab>(item.itemID));
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(empty ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    RECT place = item.rcItem;
    DrawTextW(item.hDC, kCaptions[item.itemID], -1, &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    const bool focused = (item.itemState & ODS_SELECTED) != 0 && GetFocus() == tab_;
    const bool hidden = (SendMessageW(tab_, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) != 0;
    if (!focused || hidden) return;
    InflateRect(&place, -3, -3);
    DrawFocusRect(item.hDC, &place);
}

// An edit box keeps bars that there is nothing to scroll with.
void PreviewPane::FitBars() {
    if (!shown_ || InFront() != PreviewTab::Text) return;
    const TextExtent text = textFilled_ ? ExtentOf(text_) : TextExtent{};
    RECT client;
    GetWindowRect(text_, &client);
    const int width = client.right - client.left - 2 * GetSystemMetrics(SM_CXEDGE);
    const int height = client.bottom - client.top - 2 * GetSystemMetrics(SM_CYEDGE);
    // Each bar takes room from the other direction.
    bool across = text.width > width;
    const bool down = text.height > height - (across ? GetSystemMetrics(SM_CYHSCROLL) : 0);
    across = text.width > width - (down ? GetSystemMetrics(SM_CXVSCROLL) : 0);
    ShowScrollBar(text_, SB_HORZ, across);
    ShowScrollBar(text_, SB_VERT, down);
}
