#pragma once

#include <windows.h>

#include <chrono>

// A window of another program, and a viewer that notes when it is told. Made before the program starts, it
// stands behind it in the chain. One at a time.
class NextViewer {
 public:
    explicit NextViewer(DWORD style = WS_POPUP) {
        told = 0;
        WNDCLASSW shape{};
        shape.lpfnWndProc = &NextViewer::Procedure;
        shape.lpszClassName = L"NextViewer";
        RegisterClassW(&shape);
        window_ = CreateWindowExW(0, shape.lpszClassName, L"", style, 0, 0, 200, 100, nullptr, nullptr,
                                  nullptr, nullptr);
        next_ = SetClipboardViewer(window_);
    }
    ~NextViewer() {
        ChangeClipboardChain(window_, next_);
        DestroyWindow(window_);
    }
    NextViewer(const NextViewer&) = delete;
    NextViewer& operator=(const NextViewer&) = delete;

    HWND Handle() const { return window_; }

    static inline int told = 0;
    static inline std::chrono::steady_clock::time_point toldAt;

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_DRAWCLIPBOARD) return DefWindowProcW(window, message, wParam, lParam);
        ++told;
        toldAt = std::chrono::steady_clock::now();
        return 0;
    }

    HWND window_ = nullptr;
    HWND next_ = nullptr;
};
