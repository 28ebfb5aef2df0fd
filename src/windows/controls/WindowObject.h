#pragma once

#include <windows.h>

// The object that a window of the program's own was made with, as the last argument of its creation; null for
// the messages that come before it is known. Kept as the window's user data.
template <class Object>
Object* ObjectOf(HWND window, UINT message, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        void* const object = reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    }
    return reinterpret_cast<Object*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}
