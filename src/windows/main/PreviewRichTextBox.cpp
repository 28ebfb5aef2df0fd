#include "windows/main/PreviewRichTextBox.h"

// The rich-text box needs <windows.h> in front of it.
#include <richedit.h>
#include <richole.h>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <utility>

#include "engine/views/PreviewText.h"
#include "platform/HeldMessages.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/QuietScope.h"
#include "windows/main/PreviewMarks.h"

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

// The box counts one character for each line's end.
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

HWND MakeRichTextWindow(HWND parent, UniqueLibrary& library) {
    constexpr std::pair<const wchar_t*, const wchar_t*> kLibraries[] = {{L"Msftedit.dll", MSFTEDIT_CLASS},
                                                                        {L"Riched20.dll", RICHEDIT_CLASSW}};
    for (const auto& [file, name] : kLibraries) {
        library.Reset(LoadLibraryExW(file, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
        const HWND box = library.IsSet() ? MakePreviewChild(parent, WS_EX_CLIENTEDGE, name, kPreviewTextStyle,
                                                            tbPreviewRtf)
                                         : nullptr;
        if (box != nullptr) return box;
    }
    return nullptr;
}

// While one lives, changes to the box leave its selection and scroll position as they were.
class SameViewScope {
 public:
    explicit SameViewScope(HWND box) : box_(box), quiet_(box) {
        SendMessageW(box, WM_SETREDRAW, FALSE, 0);
        SendMessageW(box, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&chosen_));
        SendMessageW(box, EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&seen_));
    }
    ~SameViewScope() {
        SendMessageW(box_, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&chosen_));
        SendMessageW(box_, EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&seen_));
        SendMessageW(box_, WM_SETREDRAW, TRUE, 0);
    }
    SameViewScope(const SameViewScope&) = delete;
    SameViewScope& operator=(const SameViewScope&) = delete;

 private:
    HWND box_;
    QuietScope quiet_;
    CHARRANGE chosen_{};
    POINT seen_{};
};

}  // namespace

bool PreviewRichTextBox::Create(HWND parent, HFONT font) {
    const HWND box = MakeRichTextWindow(parent, library_);
    if (box == nullptr) return false;
    PutOverTab(box, L"Vorschau als RTF");
    SendMessageW(box, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    SendMessageW(box, EM_SETOLECALLBACK, 0, reinterpret_cast<LPARAM>(&TheNoObjects()));
    Attach(box);
    SetFont(font);
    return true;
}

// The font for text that names none: the box would take the system's bold bitmap font.
void PreviewRichTextBox::SetFont(HFONT pixels) {
    LOGFONTW font{};
    GetObjectW(pixels, sizeof font, &font);
    CHARFORMATW plain{};
    plain.cbSize = sizeof plain;
    plain.dwMask = CFM_BOLD | CFM_ITALIC | CFM_FACE | CFM_SIZE | CFM_CHARSET | CFM_COLOR;
    plain.dwEffects = CFE_AUTOCOLOR;
    plain.yHeight = static_cast<LONG>(TwipsFromPixels(std::abs(font.lfHeight), DpiOfWindow(Window())));
    plain.bCharSet = font.lfCharSet;
    lstrcpynW(plain.szFaceName, font.lfFaceName, LF_FACESIZE);
    SendMessageW(Window(), EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&plain));
}

bool PreviewRichTextBox::Show(PreviewData data) {
    data_ = std::move(data);
    most_ = std::min(data_.Size(), kMostPreviewBytes);
    const bool shown = Take(kNextPreviewBytes);
    if (shown)
        Filled();
    else
        Empty();
    return shown;
}

bool PreviewRichTextBox::Take(std::size_t bytes) {
    taken_ = std::min(bytes, most_);
    const auto read = data_.Read(0, taken_);
    if (!read) return false;
    std::span<const std::uint8_t> rest = RichTextOf(read->All());
    if (rest.size() < taken_) most_ = taken_;
    EDITSTREAM stream{};
    stream.dwCookie = reinterpret_cast<DWORD_PTR>(&rest);
    stream.pfnCallback = &FeedRichText;
    SendMessageW(Window(), EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    return stream.dwError == 0;
}

// What cannot be read any more is said behind what was: the file is gone, or its drive.
void PreviewRichTextBox::TakeMore(std::size_t bytes) {
    HeldMessages reading;
    const SameViewScope same(Window());
    const bool taken = Take(bytes);
    reading.Take();
    if (taken) return;
    most_ = taken_;
    SendMessageW(Window(), EM_SETSEL, static_cast<WPARAM>(-1), -1);
    SendMessageW(Window(), EM_REPLACESEL, FALSE,
                 reinterpret_cast<LPARAM>(L"\r\n[Textdaten (RTF) konnten nicht geladen werden]"));
}

void PreviewRichTextBox::ReadMore() {
    TakeMore(4 * taken_);
}

void PreviewRichTextBox::ReadRest() {
    TakeMore(most_);
}

void PreviewRichTextBox::ForgetRest() {
    data_ = {};
    taken_ = most_ = 0;
}

std::wstring PreviewRichTextBox::Text() const {
    return TextOfRichBox(Window());
}

void PreviewRichTextBox::Choose(TextPlace place) {
    SendMessageW(Window(), EM_SETSEL, place.begin, static_cast<LPARAM>(place.End()));
    SendMessageW(Window(), EM_SCROLLCARET, 0, 0);
}

std::size_t PreviewRichTextBox::EndOfChosen() const {
    CHARRANGE chosen{};
    SendMessageW(Window(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&chosen));
    return static_cast<std::size_t>(std::max(chosen.cpMax, 0L));
}

void PreviewRichTextBox::Mark(WordSearch words) {
    const SameViewScope same(Window());
    MarkRichText(Window(), Text(), words);
}
