#pragma once

#include <windows.h>

#include <functional>

#include "engine/views/PreviewPicture.h"
#include "platform/win32/SystemHandles.h"
#include "windows/controls/Readers.h"
#include "windows/controls/Timer.h"

// The picture part of the preview: a box (picPreviewDIB) that shows an image (imgDIB) in its natural size,
// with scroll bars when that is larger than the box, or stretched to the box. Of a large picture no more is
// read and converted than is seen, when it is scrolled or the box grows and never while it is painted;
// stretched it is once for the box's size.
class PictureBox {
 public:
    // `name` is for who has it read aloud; a literal.
    bool Create(HWND parent, int control, const wchar_t* name);
    HWND Window() const { return window_; }

    // False when the picture cannot be read or the system cannot draw it; the box is empty then, and the
    // reason may have been told. Should more of it not be had later, the box is emptied and `lost` called.
    bool Show(PreviewPicture picture, std::function<void()> lost);
    void Clear();
    void SetStretch(bool stretch);
    // Shows the hourglass over the box, as long as a picture for it is under way.
    void ShowWaiting(bool waiting) { waiting_ = waiting; }

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Paint(HDC target);
    void PaintStretched(HDC target, const RECT& client) const;
    void PaintPart(HDC target, const RECT& client) const;
    bool DrawRows(HDC target, const RECT& to, int firstColumn, int columns, int firstRow, int rows) const;
    bool DecodeRuns();
    bool IsDrawable() const;
    // Gets ready what painting needs; false when that cannot be had.
    bool Prepare();
    bool PrepareStretched(const SIZE& box);
    void Forget();
    void Lose();
    void LayOut();
    void FitBars();
    void ShowBar(int bar, const SCROLLINFO& range);
    void Resized();
    void Scroll(int bar, WPARAM request);
    void ScrollTo(int bar, int position);
    bool OnKey(WPARAM key);

    HWND window_ = nullptr;
    ReaderDescription description_{};
    PreviewPicture picture_;
    std::function<void()> lost_;
    UniqueBitmap decoded_;  // in place of the picture's rows, for run-length coded pixels
    UniqueBitmap picTemp;   // the picture stretched to the box
    SIZE stretched_{};      // the size of that, pixels
    SCROLLINFO bars_[2]{};
    SIZE size_{};     // of the picture, pixels
    POINT offset_{};  // what stands in the box's upper left corner
    bool stretch_ = false;
    bool waiting_ = false;
    Timer sized_{[this] { LayOut(); }};
};
