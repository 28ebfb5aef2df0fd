#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "engine/clipboard/DibLayout.h"
#include "platform/win32/SystemHandles.h"

// The picture part of the preview: a box (picPreviewDIB) that shows an image (imgDIB) in its natural size,
// with scroll bars when that is larger than the box, or stretched to the box. It is drawn from its block: of
// a large picture no more is converted than is seen, and stretched it is once for the box's size.
class PictureBox {
 public:
    bool Create(HWND parent, int control);
    HWND Window() const { return window_; }

    // Shows a device-independent bitmap that was checked against its block. False when the system cannot draw
    // it; the box is empty then.
    bool ShowDib(std::unique_ptr<std::uint8_t[]> block, const DibLayout& layout);
    void Clear();
    void SetStretch(bool stretch);

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Paint(HDC target);
    void PaintStretched(HDC target, const RECT& client);
    void PaintPart(HDC target, const RECT& client) const;
    bool DrawRows(HDC target, const RECT& to, int firstColumn, int columns, int firstRow, int rows) const;
    bool TakeBlock(std::unique_ptr<std::uint8_t[]> block, const DibLayout& layout);
    bool DecodeRuns(const std::uint8_t* block, const DibLayout& layout);
    void Forget();
    void LayOut();
    void ShowBar(int bar, const SCROLLINFO& range);
    void Scroll(int bar, WPARAM request);
    void ScrollTo(int bar, int position);
    bool OnKey(WPARAM key);

    HWND window_ = nullptr;
    std::unique_ptr<std::uint8_t[]> block_;
    UniqueBitmap decoded_;              // in place of the block, for run-length coded pixels
    std::vector<std::uint8_t> header_;  // the bitmap's header with its colours
    const std::uint8_t* pixels_ = nullptr;
    std::size_t rowBytes_ = 0;
    bool topDown_ = false;
    UniqueBitmap picTemp;  // the picture stretched to the box
    SIZE stretched_{};     // the size of that, pixels
    SCROLLINFO bars_[2]{};
    SIZE size_{};     // of the picture, pixels
    POINT offset_{};  // what stands in the box's upper left corner
    bool stretch_ = false;
};
