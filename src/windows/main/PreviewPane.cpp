#include "windows/main/PreviewPane.h"

// The tab needs <windows.h> in front of it.
#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "engine/clipboard/FormatNames.h"
#include "engine/search/WordSearch.h"
#include "engine/views/PngSize.h"
#include "platform/HeldMessages.h"
#include "platform/Text.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/PngDecoder.h"
#include "windows/controls/QuietScope.h"
#include "windows/controls/Readers.h"
#include "windows/controls/WindowFont.h"

namespace {

constexpr UINT kPngIsReady = WM_APP;
// What is decoded before anybody could notice.
constexpr std::uint64_t kMostPixelsAtOnce = 1 << 20;
constexpr std::int32_t kMostPngAtOnce = 4 << 20;  // bytes

constexpr const wchar_t* kCaptions[] = {L"Text", L"RTF", L"Bild"};

const wchar_t* FailureOf(PreviewTab tab, const CFormat& format) {
    switch (tab) {
        case PreviewTab::Text:
            return L"Textdaten konnten nicht geladen werden";
        case PreviewTab::RichText:
            return L"Textdaten (RTF) konnten nicht geladen werden";
        default:
            return format.FormatId == kBitmapFormat ? L"Bitmap konnte nicht geladen werden"
                                                    : L"DIB konnte nicht geladen werden";
    }
}

}  // namespace

bool PreviewPane::Create(HWND parent) {
    tab_ = MakePreviewChild(parent, 0, WC_TABCONTROLW, WS_CLIPSIBLINGS | TCS_OWNERDRAWFIXED | TCS_FIXEDWIDTH,
                            tabFormat);
    note_ = MakePreviewChild(parent, 0, L"STATIC", WS_CLIPSIBLINGS | SS_NOPREFIX, lblPreviewNote);
    if (tab_ == nullptr || note_ == nullptr || !text_.Create(parent)) return false;
    SetWindowLongPtrW(note_, GWL_STYLE,
                      GetWindowLongPtrW(note_, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_TABSTOP));
    NameByHiddenText(tab_, L"Vorschau");
    for (ReadingBox* const box : {static_cast<ReadingBox*>(&text_), static_cast<ReadingBox*>(&richText_)})
        box->WhenGrown([this] { TextGrew(); });
    // A window that was hidden and is shown is not told in one way only; what it shows is painted in any.
    tabMessages_.Attach(tab_, [this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_PAINT && fillIsDue_) makesUp_.Start();
        if (message != kPngIsReady) return std::nullopt;
        PngIsReady();
        return 0;
    });
    decoding_.SetListener(tab_, kPngIsReady);

    int place = 0;
    for (const wchar_t* caption : kCaptions) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(caption);
        SendMessageW(tab_, TCM_INSERTITEMW, static_cast<WPARAM>(place++), reinterpret_cast<LPARAM>(&item));
    }
    return true;
}

// Most look at texts alone.
void PreviewPane::MakeBoxInFront() {
    if (!shown_ || ChosenBox() != nullptr) return;
    if (InFront() == PreviewTab::RichText)
        richText_.Create(GetParent(tab_), reinterpret_cast<HFONT>(SendMessageW(tab_, WM_GETFONT, 0, 0)));
    else if (picture_.Create(GetParent(tab_), picPreviewDIB, L"Vorschau als Bild"))
        PutOverTab(picture_.Window(), L"Vorschau als Bild");
    LayOutInside();
}

void PreviewPane::SetFont(HFONT font) {
    for (const HWND control : {tab_, note_, text_.Window()})
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), MAKELPARAM(shown_, 0));
    if (richText_.Window() != nullptr) richText_.SetFont(font);
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
    for (const HWND box : {text_.Window(), richText_.Window(), picture_.Window()}) {
        if (box == nullptr) continue;
        const bool visible = shown_ && box == ChosenBox();
        SetWindowPos(box, nullptr, area.left, area.top, std::max(area.right - area.left, 0L),
                     std::max(area.bottom - area.top, 0L),
                     SWP_NOZORDER | SWP_NOACTIVATE | (visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    }
    PlaceNote();
}

// The note stands over the box in front, which is empty then.
void PreviewPane::PlaceNote() {
    const bool visible = shown_ && GetWindowTextLengthW(note_) > 0;
    if (!visible) return void(ShowWindow(note_, SW_HIDE));
    RECT area;
    GetWindowRect(ChosenBox() != nullptr ? ChosenBox() : text_.Window(), &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(tab_), reinterpret_cast<POINT*>(&area), 2);
    const int margin = Scaled(8, DpiOfWindow(tab_));
    SetWindowPos(note_, HWND_TOP, area.left + margin, area.top + margin,
                 std::max(static_cast<int>(area.right - area.left) - 2 * margin, 0),
                 std::max(static_cast<int>(area.bottom - area.top) - 2 * margin, 0),
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void PreviewPane::Note(const std::wstring& text) {
    if (text.empty() && GetWindowTextLengthW(note_) == 0) return;
    SetWindowTextW(note_, text.c_str());
    PlaceNote();
}

PreviewTab PreviewPane::InFront() const {
    return static_cast<PreviewTab>(std::max(TabCtrl_GetCurSel(tab_), 0));
}

HWND PreviewPane::ChosenBox() const {
    switch (InFront()) {
        case PreviewTab::RichText:
            return richText_.Window();
        case PreviewTab::Picture:
            return picture_.Window();
        default:
            return text_.Window();
    }
}

ReadingBox* PreviewPane::ShownText() {
    if (InFront() == PreviewTab::Text && text_.IsFilled()) return &text_;
    if (InFront() == PreviewTab::RichText && richText_.IsFilled()) return &richText_;
    return nullptr;
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
    if (message.hwnd != text_.Window() && (message.hwnd != richText_.Window() || message.hwnd == nullptr))
        return false;
    if (message.message != WM_KEYDOWN) return false;
    // In a text box the command means the text, not the clip.
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

void PreviewPane::MarkHits() {
    hitIsDue_ = false;
    const bool plain = hit_ && ShownText() == &text_;
    text_.SetWords(plain ? std::optional(WordSearch(hit_->query, hit_->likeness)) : std::nullopt);
    if (!hit_ || ShownText() == nullptr) return;
    if (!plain) richText_.Mark(WordSearch(hit_->query, hit_->likeness));
    hitIsDue_ = !ShowHitFrom(0);
    ShownText()->ReadOn(hitIsDue_);
}

// The text is read up to the hit, wherever that stands.
void PreviewPane::TextGrew() {
    ReadingBox* const text = ShownText();
    if (!hit_ || text == nullptr) return;
    if (text == &richText_) richText_.Mark(WordSearch(hit_->query, hit_->likeness));
    if (hitIsDue_ && ShowHitFrom(0)) hitIsDue_ = false;
    text->ReadOn(hitIsDue_);
}

void PreviewPane::ShowNextHit() {
    ReadingBox* const text = ShownText();
    if (!hit_ || text == nullptr) return;
    if (ShowHitFrom(text->EndOfChosen())) return;
    text->ReadAll();
    if (!ShowHitFrom(text->EndOfChosen())) ShowHitFrom(0);
}

bool PreviewPane::ShowHitFrom(std::size_t place) {
    ReadingBox& box = *ShownText();
    const auto found = WordSearch(hit_->query, hit_->likeness).Next(Utf16FromText(box.Text()), place);
    if (found) box.Choose(*found);
    return found.has_value();
}

void PreviewPane::EndHold() {
    text_.EndHold();
    richText_.EndHold();
}

bool PreviewPane::IsSeen() const {
    return shown_ && IsWindowVisible(tab_) && !IsIconic(GetAncestor(tab_, GA_ROOT));
}

void PreviewPane::MakeUp() {
    if (fillIsDue_ && IsSeen()) Fill();
}

void PreviewPane::Fill() {
    const PreviewTab tab = InFront();
    fillIsDue_ = !IsSeen();
    if (!fillIsDue_) MakeBoxInFront();
    const CFormat* const format = fillIsDue_ ? nullptr : FormatFor(tab);
    Note({});
    decoding_.Stop();
    picture_.ShowWaiting(false);
    {
        std::optional<QuietScope> quiet;
        if (!fillIsDue_) quiet.emplace(text_.Window());
        HeldMessages reading;
        const bool shows = format != nullptr && ShowIn(tab);
        std::wstring why = format != nullptr && !shows ? FailureOf(tab, *format) : L"";
        for (const HeldMessages::Message& message : reading.Take())
            if (!why.empty()) why += L"\r\n" + message.text;
        if (!shows || tab != PreviewTab::Text) text_.Empty();
        if (!shows || tab != PreviewTab::RichText) richText_.Empty();
        if (!shows || tab != PreviewTab::Picture) picture_.Clear();
        Note(why);
        FitBars();
    }
    MarkHits();
    MarkEmptyTabs();
}

bool PreviewPane::ShowIn(PreviewTab tab) {
    const CFormat& format = *FormatFor(tab);
    if (ChosenBox() == nullptr) return false;
    switch (tab) {
        case PreviewTab::Text:
            return text_.Show(PreviewTextReader(clipFile_, format, BeginOfText(format)));
        case PreviewTab::RichText:
            return richText_.Show(PreviewData(clipFile_, format));
        default:
            if (IsPng(format)) return ShowPng(format);
            return ShowPicture(PreviewPicture::In(PreviewData(clipFile_, format)));
    }
}

bool PreviewPane::ShowPicture(std::optional<PreviewPicture> picture) {
    const auto lost = [this, why = std::wstring(FailureOf(PreviewTab::Picture,
                                                          *FormatFor(PreviewTab::Picture)))] { Note(why); };
    return picture && picture_.Show(std::move(*picture), lost);
}

bool PreviewPane::ShowPng(const CFormat& format) {
    const PreviewData data(clipFile_, format);
    const auto head = data.Read(0, kPngHead);
    const auto size = head ? SizeOfPng(head->All()) : std::nullopt;
    if (!size) return false;
    if (size->Pixels() > kMostPixelsAtOnce || format.DataSize > kMostPngAtOnce) {
        picture_.Clear();
        picture_.ShowWaiting(decoding_.Start(clipFile_, format));
        return decoding_.IsAtWork();
    }
    const auto png = data.Read(0, data.Size());
    auto decoded = png ? DecodePng(png->All()) : std::nullopt;
    return ShowPicture(decoded ? PreviewPicture::Of(std::move(*decoded)) : std::nullopt);
}

void PreviewPane::PngIsReady() {
    auto answer = decoding_.Take();
    if (!answer) return;
    picture_.ShowWaiting(false);
    if (ShowPicture(answer->dib ? PreviewPicture::Of(std::move(*answer->dib)) : std::nullopt)) return;
    picture_.Clear();
    Note(FailureOf(PreviewTab::Picture, *FormatFor(PreviewTab::Picture)));
}

// White as its neighbours: nobody takes a preview for a box to type in.
HBRUSH PreviewPane::ColourBox(HWND control, HDC dc) const {
    if (control != text_.Window() && control != note_) return nullptr;
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    return GetSysColorBrush(COLOR_WINDOW);
}

bool PreviewPane::IsEmpty(PreviewTab tab) const {
    return formats_ != nullptr && FormatFor(tab) == nullptr;
}

// Whoever sees the tabs knows the empty ones by their grey; whoever has them read aloud, by their texts.
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
        InvalidateRect(tab_, nullptr, FALSE);
    }
}

// Each tab is as wide as the widest caption that is drawn, whatever the tabs' own texts are.
void PreviewPane::FitTabs() {
    const WindowFont font(tab_);
    SIZE widest{};
    for (const wchar_t* caption : kCaptions) {
        SIZE size{};
        GetTextExtentPoint32W(font.Dc(), caption, lstrlenW(caption), &size);
        widest = {std::max(widest.cx, size.cx), std::max(widest.cy, size.cy)};
    }
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

void PreviewPane::FitBars() {
    if (shown_ && InFront() == PreviewTab::Text) text_.FitBars();
}
