#include "windows/controls/PictureBox.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/Guard.h"
#include "windows/controls/ScreenBitmap.h"

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

// The header of the same picture with other rows. The oldest kind has its height in 16 bits.
void SetRows(std::vector<std::uint8_t>& header, int rows, std::size_t rowBytes, bool topDown) {
    if (reinterpret_cast<const BITMAPCOREHEADER*>(header.data())->bcSize == sizeof(BITMAPCOREHEADER)) {
        reinterpret_cast<BITMAPCOREHEADER*>(header.data())->bcHeight = static_cast<WORD>(rows);
        return;
    }
    auto& info = *reinterpret_cast<BITMAPINFOHEADER*>(header.data());
    info.biHeight = topDown ? -rows : rows;
    info.biSizeImage = static_cast<DWORD>(static_cast<std::size_t>(rows) * rowBytes);
}

constexpr DWORD kStandardColours = 0x73524742;  // LCS_sRGB, which GCC takes for several characters

// A colour profile is named by its place in the block, which the header leaves alone here.
void ForgetProfile(std::vector<std::uint8_t>& header) {
    if (reinterpret_cast<const BITMAPINFOHEADER*>(header.data())->biSize < sizeof(BITMAPV5HEADER)) return;
    auto& info = *reinterpret_cast<BITMAPV5HEADER*>(header.data());
    info.bV5CSType = kStandardColours;
    info.bV5ProfileData = 0;
    info.bV5ProfileSize = 0;
}

}  // namespace

bool PictureBox::Create(HWND parent, int control) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSW shape{};
    shape.style = CS_HREDRAW | CS_VREDRAW;
    shape.lpfnWndProc = &PictureBox::Procedure;
    shape.hInstance = instance;
    shape.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    shape.lpszClassName = kClassName;
    RegisterClassW(&shape);
    window_ = CreateWindowExW(WS_EX_CLIENTEDGE, kClassName, L"",
                              WS_CHILD | WS_TABSTOP | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(control)), instance, this);
    return window_ != nullptr;
}

bool PictureBox::ShowDib(std::unique_ptr<std::uint8_t[]> block, const DibLayout& layout) {
    Forget();
    size_ = {layout.width, layout.height};
    const bool runs = layout.compression == BI_RLE4 || layout.compression == BI_RLE8;
    const bool drawn = runs ? DecodeRuns(block.get(), layout) : TakeBlock(std::move(block), layout);
    if (!drawn) Forget();
    LayOut();
    return drawn;
}

bool PictureBox::TakeBlock(std::unique_ptr<std::uint8_t[]> block, const DibLayout& layout) {
    header_.assign(block.get(), block.get() + layout.pixelOffset);
    ForgetProfile(header_);
    pixels_ = block.get() + layout.pixelOffset;
    rowBytes_ =
        (static_cast<std::size_t>(layout.width) * static_cast<std::size_t>(layout.bitCount) + 31) / 32 * 4;
    topDown_ = layout.topDown;
    block_ = std::move(block);
    // Whether the system draws it at all shows at its first pixel.
    const UniqueBitmap pixel = MakeScreenBitmap(1, 1);
    const BitmapScope target(pixel.Get());
    return DrawRows(target.Dc(), {0, 0, 1, 1}, 0, 1, 0, 1);
}

// Of run-length coded pixels no part can be drawn without those before it.
bool PictureBox::DecodeRuns(const std::uint8_t* block, const DibLayout& layout) {
    void* pixels = nullptr;
    decoded_ = MakeScreenBitmap(layout.width, layout.height, &pixels);
    if (!decoded_.IsSet()) return false;
    const BITMAPINFOHEADER header = TopDownHeader(layout.width, layout.height);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&header);
    header_.assign(bytes, bytes + sizeof header);
    pixels_ = static_cast<const std::uint8_t*>(pixels);
    rowBytes_ = static_cast<std::size_t>(layout.width) * 4;
    topDown_ = true;
    const BitmapScope target(decoded_.Get());
    return StretchDIBits(target.Dc(), 0, 0, layout.width, layout.height, 0, 0, layout.width, layout.height,
                         block + layout.pixelOffset, reinterpret_cast<const BITMAPINFO*>(block),
                         DIB_RGB_COLORS, SRCCOPY) > 0;
}

void PictureBox::Clear() {
    if (pixels_ == nullptr) return;
    Forget();
    LayOut();
}

void PictureBox::Forget() {
    block_.reset();
    decoded_.Reset();
    picTemp.Reset();
    pixels_ = nullptr;
    size_ = {};
    offset_ = {};
}

void PictureBox::SetStretch(bool stretch) {
    stretch_ = stretch;
    picTemp.Reset();
    LayOut();
}

// Scroll bars come and go with what there is to scroll. Showing one shrinks the box, which sends WM_SIZE: the
// numbers set then are the right ones.
void PictureBox::LayOut() {
    if (window_ == nullptr) return;
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
    InvalidateRect(window_, nullptr, FALSE);
}

// To draw a bar is dear, and most of the time nothing about it is new.
void PictureBox::ShowBar(int bar, const SCROLLINFO& range) {
    if (std::memcmp(&bars_[bar], &range, sizeof range) == 0) return;
    // Before, since showing the bar leads here again.
    bars_[bar] = range;
    SetScrollInfo(window_, bar, &range, TRUE);
}

LRESULT CALLBACK PictureBox::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* const box = reinterpret_cast<PictureBox*>(GetWindowLongPtrW(window, GWLP_USERDATA));
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
            LayOut();
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
    if (pixels_ != nullptr && client.right > 0 && client.bottom > 0) {
        if (stretch_)
            PaintStretched(target, client);
        else
            PaintPart(target, client);
    }
    FillRect(target, &client, GetSysColorBrush(COLOR_WINDOW));
}

void PictureBox::PaintStretched(HDC target, const RECT& client) {
    if (!picTemp.IsSet() || stretched_.cx != client.right || stretched_.cy != client.bottom) {
        picTemp = MakeScreenBitmap(client.right, client.bottom);
        if (!picTemp.IsSet()) return;
        stretched_ = {client.right, client.bottom};
        const BitmapScope scaled(picTemp.Get());
        SetStretchBltMode(scaled.Dc(), HALFTONE);
        SetBrushOrgEx(scaled.Dc(), 0, 0, nullptr);
        DrawRows(scaled.Dc(), client, 0, static_cast<int>(size_.cx), 0, static_cast<int>(size_.cy));
    }
    const BitmapScope scaled(picTemp.Get());
    BitBlt(target, 0, 0, client.right, client.bottom, scaled.Dc(), 0, 0, SRCCOPY);
    ExcludeClipRect(target, 0, 0, client.right, client.bottom);
}

void PictureBox::PaintPart(HDC target, const RECT& client) const {
    const RECT shown{0, 0, std::min(size_.cx - offset_.x, client.right),
                     std::min(size_.cy - offset_.y, client.bottom)};
    DrawRows(target, shown, static_cast<int>(offset_.x), static_cast<int>(shown.right),
             static_cast<int>(offset_.y), static_cast<int>(shown.bottom));
    ExcludeClipRect(target, 0, 0, shown.right, shown.bottom);
}

// Draws some rows of the picture, counted from its top, as a picture of their own: where a part of one begins
// is counted from its bottom or from its top, and systems do not agree on which.
bool PictureBox::DrawRows(HDC target, const RECT& to, int firstColumn, int columns, int firstRow,
                          int rows) const {
    std::vector<std::uint8_t> header = header_;
    SetRows(header, rows, rowBytes_, topDown_);
    const int above = topDown_ ? firstRow : static_cast<int>(size_.cy) - firstRow - rows;
    return StretchDIBits(target, to.left, to.top, to.right - to.left, to.bottom - to.top, firstColumn, 0,
                         columns, rows, pixels_ + static_cast<std::size_t>(above) * rowBytes_,
                         reinterpret_cast<const BITMAPINFO*>(header.data()), DIB_RGB_COLORS, SRCCOPY) > 0;
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
