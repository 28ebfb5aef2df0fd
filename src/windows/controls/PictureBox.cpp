#include "windows/controls/PictureBox.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/Guard.h"
#include "platform/HeldMessages.h"
#include "windows/controls/Readers.h"
#include "windows/controls/ScreenBitmap.h"
#include "windows/controls/WindowObject.h"

namespace {

constexpr const wchar_t* kClassName = L"NXClipPicture";

// Keeps a bitmap selected in a memory device context while it lives.
class BitmapScope {
 public:
    explicit BitmapScope(HBITMAP bitmap)
        : dc_(CreateCompatibleDC(nullptr)), before_(SelectObject(dc_, bitmap)) {}
    ~BitmapScope() {
        SelectObject(dc_, before_);
        DeleteDC(dc_);
    }
    BitmapScope(const BitmapScope&) = delete;
    BitmapScope& operator=(const BitmapScope&) = delete;
    HDC Dc() const { return dc_; }

 private:
    HDC dc_;
    HGDIOBJ before_;
};

class PaintScope {
 public:
    explicit PaintScope(HWND window) : window_(window) { BeginPaint(window, &paint_); }
    ~PaintScope() { EndPaint(window_, &paint_); }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    HDC Dc() const { return paint_.hdc; }

 private:
    HWND window_;
    PAINTSTRUCT paint_;
};

constexpr DWORD kStandardColours = 0x73524742;  // LCS_sRGB, which GCC takes for several characters

// A colour profile is named by its place in the block, which the header leaves alone here.
void ForgetProfile(std::vector<std::uint8_t>& header) {
    if (reinterpret_cast<const BITMAPINFOHEADER*>(header.data())->biSize < sizeof(BITMAPV5HEADER)) return;
    auto& info = *reinterpret_cast<BITMAPV5HEADER*>(header.data());
    info.bV5CSType = kStandardColours;
    info.bV5ProfileData = 0;
    info.bV5ProfileSize = 0;
}

std::vector<std::uint8_t> HeaderOf(const PreviewPicture& picture) {
    std::vector<std::uint8_t> header = picture.Header();
    ForgetProfile(header);
    return header;
}

// The header for some of its rows as a picture of their own. The oldest kind keeps the height in 16 bits.
std::vector<std::uint8_t> HeaderOfRows(const PreviewPicture& picture, int rows) {
    std::vector<std::uint8_t> header = HeaderOf(picture);
    if (reinterpret_cast<const BITMAPCOREHEADER*>(header.data())->bcSize == sizeof(BITMAPCOREHEADER)) {
        reinterpret_cast<BITMAPCOREHEADER*>(header.data())->bcHeight = static_cast<WORD>(rows);
        return header;
    }
    auto& info = *reinterpret_cast<BITMAPINFOHEADER*>(header.data());
    info.biHeight = picture.Layout().topDown ? -rows : rows;
    info.biSizeImage = static_cast<DWORD>(static_cast<std::size_t>(rows) * picture.Layout().rowBytes);
    return header;
}

constexpr std::chrono::milliseconds kSizingRests(100);

}  // namespace

bool PictureBox::Create(HWND parent, int control, const wchar_t* name) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSW shape{};
    shape.style = CS_HREDRAW | CS_VREDRAW;
    shape.lpfnWndProc = &PictureBox::Procedure;
    shape.hInstance = instance;
    shape.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    shape.lpszClassName = kClassName;
    RegisterClassW(&shape);
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, kClassName, name,
                              WS_CHILD | WS_TABSTOP | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0,
                              parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), instance, this);
    if (window_ == nullptr) return false;
    description_ = {name, kGraphicRole};
    TellReaders(window_, description_);
    return true;
}

bool PictureBox::Show(PreviewPicture picture, std::function<void()> lost) {
    Forget();
    picture_ = std::move(picture);
    lost_ = std::move(lost);
    size_ = {picture_.Layout().width, picture_.Layout().height};
    const bool shown = DecodeRuns() && Prepare() && IsDrawable();
    if (!shown) Forget();
    LayOut();
    return shown;
}

// Run-length coded pixels cannot be drawn without those before them.
bool PictureBox::DecodeRuns() {
    if (!IsRunLengthCoded(picture_.Layout())) return true;
    decoded_ = MakeScreenBitmap(size_.cx, size_.cy);
    if (!decoded_.IsSet()) return false;
    const BitmapScope target(decoded_.Get());
    const std::vector<std::uint8_t> header = HeaderOf(picture_);
    const bool drawn =
        StretchDIBits(target.Dc(), 0, 0, size_.cx, size_.cy, 0, 0, size_.cx, size_.cy, picture_.Runs(),
                      reinterpret_cast<const BITMAPINFO*>(header.data()), DIB_RGB_COLORS, SRCCOPY) > 0;
    picture_ = {};
    return drawn;
}

// Whether the system draws it at all shows at its first pixel; stretched it is drawn already.
bool PictureBox::IsDrawable() const {
    if (stretch_) return true;
    const UniqueBitmap pixel = MakeScreenBitmap(1, 1);
    const BitmapScope target(pixel.Get());
    return DrawRows(target.Dc(), {0, 0, 1, 1}, 0, 1, 0, 1);
}

bool PictureBox::Prepare() {
    if (size_.cy == 0) return true;
    RECT client{};
    GetClientRect(window_, &client);
    if (stretch_) return PrepareStretched({client.right, client.bottom});
    const LONG rows = std::min(std::max(client.bottom, 1L), size_.cy - offset_.y);
    return decoded_.IsSet() || picture_.Need(offset_.y, rows);
}

bool PictureBox::PrepareStretched(const SIZE& box) {
    const bool same = picTemp.IsSet() && stretched_.cx == box.cx && stretched_.cy == box.cy;
    if (same || box.cx == 0 || box.cy == 0) return true;
    if (!decoded_.IsSet() && !picture_.Need(0, size_.cy)) return false;
    picTemp = MakeScreenBitmap(box.cx, box.cy);
    stretched_ = box;
    if (!picTemp.IsSet()) return false;
    const BitmapScope scaled(picTemp.Get());
    SetStretchBltMode(scaled.Dc(), HALFTONE);
    SetBrushOrgEx(scaled.Dc(), 0, 0, nullptr);
    const bool drawn = DrawRows(scaled.Dc(), {0, 0, box.cx, box.cy}, 0, size_.cx, 0, size_.cy);
    picture_.LetGo();
    return drawn;
}

void PictureBox::Clear() {
    if (size_.cy == 0) return;
    Forget();
    LayOut();
}

void PictureBox::Forget() {
    picture_ = {};
    decoded_.Reset();
    picTemp.Reset();
    size_ = {};
    offset_ = {};
}

// The file is gone, or its drive.
void PictureBox::Lose() {
    Forget();
    FitBars();
    if (lost_) lost_();
}

void PictureBox::SetStretch(bool stretch) {
    stretch_ = stretch;
    picTemp.Reset();
    LayOut();
}

// No message box may open in the middle of a scroll bar's or a window frame's own loop.
void PictureBox::LayOut() {
    if (window_ == nullptr) return;
    FitBars();
    HeldMessages reading;
    const bool ready = Prepare();
    reading.Take();
    if (!ready) Lose();
    InvalidateRect(window_, nullptr, FALSE);
}

// The stretched picture that is there is stretched once more as long as the size changes.
void PictureBox::Resized() {
    if (stretch_ && picTemp.IsSet())
        sized_.Start(kSizingRests);
    else
        LayOut();
}

// Scroll bars come and go with what there is to scroll. Showing one shrinks the box, which sends WM_SIZE: the
// numbers set then are the right ones.
void PictureBox::FitBars() {
    RECT client;
    GetClientRect(window_, &client);
    for (const int bar : {SB_HORZ, SB_VERT}) {
        SCROLLINFO range{};
        range.cbSize = sizeof range;
        range.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
        const LONG whole = bar == SB_HORZ ? size_.cx : size_.cy;
        const LONG shown = bar == SB_HORZ ? client.right : client.bottom;
        if (!stretch_ && whole > shown) {
            range.nMax = whole - 1;
            range.nPage = static_cast<UINT>(std::max(shown, 0L));
        }
        LONG& offset = bar == SB_HORZ ? offset_.x : offset_.y;
        offset = stretch_ ? 0 : std::clamp(offset, 0L, std::max(whole - shown, 0L));
        range.nPos = offset;
        ShowBar(bar, range);
    }
}

// Drawing a bar is costly, and mostly nothing about it has changed.
void PictureBox::ShowBar(int bar, const SCROLLINFO& range) {
    if (std::memcmp(&bars_[bar], &range, sizeof range) == 0) return;
    // Before, since showing the bar leads here again.
    bars_[bar] = range;
    SetScrollInfo(window_, bar, &range, TRUE);
}

LRESULT CALLBACK PictureBox::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const box = ObjectOf<PictureBox>(window, message, lParam);
    if (box == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    return Guarded<LRESULT>(0, [&] { return box->Handle(window, message, wParam, lParam); });
}

LRESULT PictureBox::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            const PaintScope paint(window);
            Paint(paint.Dc());
            return 0;
        }
        case WM_ERASEBKGND:
            return 1;  // WM_PAINT draws every pixel
        case WM_SIZE:
            Resized();
            return 0;
        case WM_HSCROLL:
            Scroll(SB_HORZ, wParam);
            return 0;
        case WM_VSCROLL:
            Scroll(SB_VERT, wParam);
            return 0;
        case WM_MOUSEWHEEL:
            ScrollTo(SB_VERT, offset_.y - GET_WHEEL_DELTA_WPARAM(wParam) / 2);
            return 0;
        case WM_SETCURSOR:
            if (!waiting_ || LOWORD(lParam) != HTCLIENT) break;
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        case WM_LBUTTONDOWN:
            SetFocus(window);
            return 0;
        case WM_KEYDOWN:
            if (OnKey(wParam)) return 0;
            break;
        default:
            break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void PictureBox::Paint(HDC target) {
    RECT client;
    GetClientRect(window_, &client);
    if (size_.cy != 0) {
        if (stretch_)
            PaintStretched(target, client);
        else
            PaintPart(target, client);
    }
    FillRect(target, &client, GetSysColorBrush(COLOR_WINDOW));
}

void PictureBox::PaintStretched(HDC target, const RECT& client) const {
    if (!picTemp.IsSet()) return;
    const BitmapScope scaled(picTemp.Get());
    SetStretchBltMode(target, COLORONCOLOR);
    StretchBlt(target, 0, 0, client.right, client.bottom, scaled.Dc(), 0, 0, stretched_.cx, stretched_.cy,
               SRCCOPY);
    ExcludeClipRect(target, 0, 0, client.right, client.bottom);
}

void PictureBox::PaintPart(HDC target, const RECT& client) const {
    const RECT shown{0, 0, std::min(size_.cx - offset_.x, client.right),
                     std::min(size_.cy - offset_.y, client.bottom)};
    if (DrawRows(target, shown, static_cast<int>(offset_.x), static_cast<int>(shown.right),
                 static_cast<int>(offset_.y), static_cast<int>(shown.bottom)))
        ExcludeClipRect(target, 0, 0, shown.right, shown.bottom);
}

// Draws some rows of the picture, counted from its top, as a picture of their own: where a part of one begins
// is counted from its bottom or from its top, and systems do not agree on which.
bool PictureBox::DrawRows(HDC target, const RECT& to, int firstColumn, int columns, int firstRow,
                          int rows) const {
    if (decoded_.IsSet()) {
        const BitmapScope whole(decoded_.Get());
        return StretchBlt(target, to.left, to.top, to.right - to.left, to.bottom - to.top, whole.Dc(),
                          firstColumn, firstRow, columns, rows, SRCCOPY) != 0;
    }
    const std::uint8_t* const pixels = picture_.Rows(firstRow, rows);
    if (pixels == nullptr) return false;
    const std::vector<std::uint8_t> header = HeaderOfRows(picture_, rows);
    return StretchDIBits(target, to.left, to.top, to.right - to.left, to.bottom - to.top, firstColumn, 0,
                         columns, rows, pixels, reinterpret_cast<const BITMAPINFO*>(header.data()),
                         DIB_RGB_COLORS, SRCCOPY) > 0;
}

void PictureBox::Scroll(int bar, WPARAM request) {
    SCROLLINFO range{};
    range.cbSize = sizeof range;
    range.fMask = SIF_ALL;
    GetScrollInfo(window_, bar, &range);
    const int page = static_cast<int>(range.nPage);
    const int line = std::max(page / 10, 1);
    switch (LOWORD(request)) {
        case SB_LINEUP:
            return ScrollTo(bar, range.nPos - line);
        case SB_LINEDOWN:
            return ScrollTo(bar, range.nPos + line);
        case SB_PAGEUP:
            return ScrollTo(bar, range.nPos - page);
        case SB_PAGEDOWN:
            return ScrollTo(bar, range.nPos + page);
        case SB_TOP:
            return ScrollTo(bar, 0);
        case SB_BOTTOM:
            return ScrollTo(bar, range.nMax);
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return ScrollTo(bar, range.nTrackPos);
        default:
            return;
    }
}

void PictureBox::ScrollTo(int bar, int position) {
    (bar == SB_HORZ ? offset_.x : offset_.y) = position;
    LayOut();
}

bool PictureBox::OnKey(WPARAM key) {
    switch (key) {
        case VK_UP:
            Scroll(SB_VERT, SB_LINEUP);
            return true;
        case VK_DOWN:
            Scroll(SB_VERT, SB_LINEDOWN);
            return true;
        case VK_PRIOR:
            Scroll(SB_VERT, SB_PAGEUP);
            return true;
        case VK_NEXT:
            Scroll(SB_VERT, SB_PAGEDOWN);
            return true;
        case VK_LEFT:
            Scroll(SB_HORZ, SB_LINELEFT);
            return true;
        case VK_RIGHT:
            Scroll(SB_HORZ, SB_LINERIGHT);
            return true;
        case VK_HOME:
            Scroll(SB_VERT, SB_TOP);
            return true;
        case VK_END:
            Scroll(SB_VERT, SB_BOTTOM);
            return true;
        default:
            return false;
    }
}
