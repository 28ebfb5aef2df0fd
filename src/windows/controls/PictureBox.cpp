#include "windows/controls/PictureBox.h"

#include <algorithm>

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

UniqueBitmap ScreenBitmap(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    return UniqueBitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
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

bool PictureBox::ShowDib(std::span<const std::uint8_t> block, const DibLayout& layout) {
    Clear();
    UniqueBitmap picture = ScreenBitmap(layout.width, layout.height);
    if (picture == nullptr) return false;
    const auto* const info = reinterpret_cast<const BITMAPINFO*>(block.data());
    {
        const BitmapScope target(picture.get());
        if (StretchDIBits(target.Dc(), 0, 0, layout.width, layout.height, 0, 0, layout.width, layout.height,
                          block.data() + layout.pixelOffset, info, DIB_RGB_COLORS, SRCCOPY) <= 0)
            return false;
    }
    picTemp = std::move(picture);
    size_ = {layout.width, layout.height};
    LayOut();
    return true;
}

void PictureBox::Clear() {
    picTemp.reset();
    size_ = {};
    offset_ = {};
    LayOut();
}

void PictureBox::SetStretch(bool stretch) {
    stretch_ = stretch;
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
        SetScrollInfo(window_, bar, &range, TRUE);
    }
    InvalidateRect(window_, nullptr, FALSE);
}

LRESULT CALLBACK PictureBox::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* const box = reinterpret_cast<PictureBox*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return box != nullptr ? box->Handle(window, message, wParam, lParam)
                          : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT PictureBox::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT paint;
            Paint(BeginPaint(window, &paint));
            EndPaint(window, &paint);
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
    const int width = stretch_ ? client.right : static_cast<int>(size_.cx);
    const int height = stretch_ ? client.bottom : static_cast<int>(size_.cy);
    if (picTemp != nullptr) {
        const BitmapScope picture(picTemp.get());
        SetStretchBltMode(target, HALFTONE);
        SetBrushOrgEx(target, 0, 0, nullptr);
        StretchBlt(target, -offset_.x, -offset_.y, width, height, picture.Dc(), 0, 0, size_.cx, size_.cy,
                   SRCCOPY);
        ExcludeClipRect(target, -offset_.x, -offset_.y, width - offset_.x, height - offset_.y);
    }
    FillRect(target, &client, GetSysColorBrush(COLOR_WINDOW));
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
