#include "windows/main/PreviewTextBox.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/GlobalBlock.h"
#include "engine/clipboard/modClipboard.h"
#include "platform/HeldMessages.h"
#include "platform/Platform.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/QuietScope.h"
#include "windows/controls/WindowFont.h"

namespace {

struct TextExtent {
    int width = 0;
    int height = 0;
};

LRESULT LengthOfLine(HWND box, LRESULT line) {
    const LRESULT begin = SendMessageW(box, EM_LINEINDEX, static_cast<WPARAM>(line), 0);
    return SendMessageW(box, EM_LINELENGTH, static_cast<WPARAM>(begin), 0);
}

// How much room the text of an edit box takes, in pixels. Of many lines the first count, of those the one
// with the most characters, since measuring is costly.
TextExtent ExtentOf(HWND box) {
    constexpr LRESULT kLookedAt = 500;
    const LRESULT lines = SendMessageW(box, EM_GETLINECOUNT, 0, 0);
    LRESULT longest = 0;
    LRESULT length = LengthOfLine(box, 0);
    for (LRESULT line = 1; line < std::min(lines, kLookedAt); ++line)
        if (const LRESULT other = LengthOfLine(box, line); other > length) {
            longest = line;
            length = other;
        }
    const std::wstring text = TextOfLine(box, longest);

    const WindowFont font(box);
    const TEXTMETRICW metrics = font.Metrics();
    const DWORD size =
        GetTabbedTextExtentW(font.Dc(), text.c_str(), static_cast<int>(text.size()), 0, nullptr);
    return {LOWORD(size) + 2 * metrics.tmAveCharWidth, static_cast<int>(lines * metrics.tmHeight)};
}

std::wstring TextOfBox(HWND box) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(box)), L'\0');
    // A string has room for the zero behind its last character.
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(box, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

// The menu of the box, its keys on any layout, and who sends the message.
bool Copies(UINT message, WPARAM wParam) {
    constexpr WPARAM kControlC = 3;
    if (message == WM_KEYDOWN) return wParam == VK_INSERT && GetKeyState(VK_CONTROL) < 0;
    return message == WM_COPY || (message == WM_CHAR && wParam == kControlC);
}

}  // namespace

bool PreviewTextBox::Create(HWND parent) {
    const HWND box = MakePreviewChild(parent, WS_EX_CLIENTEDGE, L"EDIT", kPreviewTextStyle, tbPreviewText);
    if (box == nullptr) return false;
    PutOverTab(box, L"Vorschau als Text");
    SendMessageW(box, EM_SETLIMITTEXT, 0, 0);
    Attach(box);
    marks_.SetBox(box);
    // The styles must be set at creation, or the bars cannot be shown later; without text they are hidden.
    SetWindowLongPtrW(box, GWL_STYLE,
                      GetWindowLongPtrW(box, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_VSCROLL | WS_HSCROLL));
    return true;
}

bool PreviewTextBox::Show(PreviewTextReader text) {
    rest_ = std::move(text);
    lines_ = {};
    const auto beginning = rest_.Next(kFirstPreviewBytes);
    const bool shown = beginning && SetWindowTextW(Window(), lines_.Append(*beginning).c_str());
    if (shown)
        Filled();
    else
        Empty();
    return shown;
}

std::wstring PreviewTextBox::Text() const {
    return lines_.Original(TextOfBox(Window()), 0);
}

void PreviewTextBox::Choose(TextPlace place) {
    SendMessageW(Window(), EM_SETSEL, lines_.ShownPlace(place.begin),
                 static_cast<LPARAM>(lines_.ShownPlace(place.End())));
    SendMessageW(Window(), EM_SCROLLCARET, 0, 0);
}

std::size_t PreviewTextBox::EndOfChosen() const {
    return lines_.OriginalPlace(Selected().to);
}

PreviewTextBox::Selection PreviewTextBox::Selected() const {
    Selection selection;
    SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&selection.from),
                 reinterpret_cast<LPARAM>(&selection.to));
    return selection;
}

std::optional<LRESULT> PreviewTextBox::OnOwnMessage(UINT message, WPARAM wParam) {
    if (Copies(message, wParam) && CopyWithoutBreaks()) return 0;
    return marks_.OnMessage(message);
}

// False when no break is selected: the box copies as well.
bool PreviewTextBox::CopyWithoutBreaks() const {
    const Selection selected = Selected();
    if (!lines_.HasBreaks(selected.from, selected.to)) return false;
    const std::wstring shown = TextOfBox(Window()).substr(selected.from, selected.to - selected.from);
    const std::wstring text = lines_.Original(shown, selected.from);
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    GlobalBlock block(size);
    if (block.Address() == nullptr) return true;
    std::memcpy(block.Address(), text.c_str(), size);
    const OpenClipboardScope open(EngineWindow(Window()));
    if (open.IsOpen() && ThePlatform().clipboard.Empty()) block.PutOnClipboard(kUnicodeFormat);
    return true;
}

// What cannot be read any more is said behind what was: the file is gone, or its drive.
std::wstring PreviewTextBox::NextPiece() {
    HeldMessages reading;
    auto piece = rest_.Next(kNextPreviewBytes);
    reading.Take();
    return piece ? std::move(*piece) : L"\r\n[Textdaten konnten nicht geladen werden]";
}

void PreviewTextBox::ReadMore() {
    Append(NextPiece());
}

void PreviewTextBox::ReadRest() {
    std::wstring all;
    while (rest_.HasMore())
        all += NextPiece();
    Append(all);
}

void PreviewTextBox::ForgetRest() {
    rest_ = {};
    lines_ = {};
}

// The selection and the scroll position stay as they are.
void PreviewTextBox::Append(const std::wstring& text) {
    const HWND box = Window();
    const Selection selected = Selected();
    const LRESULT top = SendMessageW(box, EM_GETFIRSTVISIBLELINE, 0, 0);
    const int end = GetWindowTextLengthW(box);
    const QuietScope quiet(box);
    SendMessageW(box, EM_SETSEL, static_cast<WPARAM>(end), end);
    SendMessageW(box, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(lines_.Append(text).c_str()));
    SendMessageW(box, EM_SETSEL, selected.from, static_cast<LPARAM>(selected.to));
    SendMessageW(box, EM_LINESCROLL, 0, top - SendMessageW(box, EM_GETFIRSTVISIBLELINE, 0, 0));
    FitBars();
}

// An edit box keeps bars that there is nothing to scroll with.
void PreviewTextBox::FitBars() {
    const HWND box = Window();
    const TextExtent text = IsFilled() ? ExtentOf(box) : TextExtent{};
    RECT client;
    GetWindowRect(box, &client);
    const int width = client.right - client.left - 2 * GetSystemMetrics(SM_CXEDGE);
    const int height = client.bottom - client.top - 2 * GetSystemMetrics(SM_CYEDGE);
    // Each bar takes room from the other direction.
    bool across = text.width > width;
    const bool down = text.height > height - (across ? GetSystemMetrics(SM_CYHSCROLL) : 0);
    across = text.width > width - (down ? GetSystemMetrics(SM_CXVSCROLL) : 0);
    // A box that becomes wider fits the other bar to the text that it had before.
    ShowScrollBar(box, SB_VERT, down);
    ShowScrollBar(box, SB_HORZ, across);
}
