#pragma once

#include <windows.h>
// The shell needs <windows.h> in front of it.
#include <shellapi.h>

#include <string>

#include "desktop/Window.h"

// The notification area of the desktop, which the tests' own has none of: a window of the task bar's class
// gets what programs tell the shell of their icons. Windows has a task bar and keeps this to itself; under it
// the area can be used, not looked into.
class TaskBar {
 public:
    explicit TaskBar(bool takesIcons = true) : takes(takesIcons) {
        if (FindWindowW(kClass, nullptr) != nullptr) return;
        WNDCLASSW shape{};
        shape.lpfnWndProc = &TaskBar::Procedure;
        shape.lpszClassName = kClass;
        RegisterClassW(&shape);
        window_ = CreateWindowExW(0, kClass, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    ~TaskBar() { DestroyWindow(window_); }
    TaskBar(const TaskBar&) = delete;
    TaskBar& operator=(const TaskBar&) = delete;

    bool CanBeLookedInto() const { return window_ != nullptr; }

    bool takes;        // whether it takes icons
    int refused = 0;   // how often it did not
    std::wstring tip;  // that of the icon

 private:
    static constexpr const wchar_t* kClass = L"Shell_TrayWnd";

    // What the system's library sends on; what belongs to later versions follows. A newer library has the
    // icon's measures in front of the tip, an older one at the end.
    struct Notification {
        LONG window;
        UINT number, flags, callbackMessage;
        union {
            WCHAR tip[128];
            struct {
                UINT width, height, planes, bits;
                WCHAR tip[128];
            } behindIcon;
        };

        // The first two letters of a tip, read as one number, are far more than an icon is wide.
        const WCHAR* Tip() const { return behindIcon.width < 0x10000 ? behindIcon.tip : tip; }
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_COPYDATA) return DefWindowProcW(window, message, wParam, lParam);
        auto& bar = *reinterpret_cast<TaskBar*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        const auto& told =
            *static_cast<const Notification*>(reinterpret_cast<COPYDATASTRUCT*>(lParam)->lpData);
        if (!bar.takes) return ++bar.refused, FALSE;
        if ((told.flags & NIF_TIP) != 0) bar.tip = told.Tip();
        return TRUE;
    }

    HWND window_ = nullptr;
};
