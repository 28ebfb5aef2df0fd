#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <span>

#include "engine/clipboard/DibLayout.h"

struct BitmapDeleter {
    using pointer = HBITMAP;
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using UniqueBitmap = std::unique_ptr<HBITMAP, BitmapDeleter>;

// The picture part of the preview: a box (picPreviewDIB) that shows an image (imgDIB) in its natural size,
// with scroll bars when that is larger than the box, or stretched to the box.
class PictureBox {
 public:
    bool Create(HWND parent, int control);
    HWND Window() const { return window_; }

    // Draws a device-independent bitmap that was checked against its block. False when the system cannot draw
    // it; the box is empty then.
    bool ShowDib(std::span<const std::uint8_t> block, const DibLayout& layout);
    void Clear();
    void SetStretch(bool stretch);

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Paint(HDC target);
    void LayOut();
    void Scroll(int bar, WPARAM request);
    void ScrollTo(int bar, int position);
    bool OnKey(WPARAM key);

    HWND window_ = nullptr;
    UniqueBitmap picTemp;  // the picture as drawn off the screen
    SIZE size_{};          // of that, pixels
    POINT offset_{};       // what stands in the box's upper left corner
    bool stretch_ = false;
};
