#include "windows/controls/Subclass.h"

#include <utility>

#include "platform/Guard.h"

void Subclass::Attach(HWND window, Handler handler) {
    Detach();
    window_ = window;
    handler_ = std::move(handler);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    before_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Subclass::Procedure)));
}

void Subclass::Detach() {
    const HWND window = std::exchange(window_, nullptr);
    if (window != nullptr) SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before_));
}

LRESULT Subclass::PassOn(UINT message, WPARAM wParam, LPARAM lParam) const {
    return CallWindowProcW(before_, window_, message, wParam, lParam);
}

LRESULT CALLBACK Subclass::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<Subclass*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const WNDPROC before = self->before_;
    if (message == WM_NCDESTROY) {
        self->Detach();
    } else {
        // The control gets the message although the handler failed: a control that is never drawn is asked to
        // draw for ever.
        const auto result = Guarded<std::optional<LRESULT>>(
            std::nullopt, [&] { return self->handler_(message, wParam, lParam); });
        if (result) return *result;
    }
    return CallWindowProcW(before, window, message, wParam, lParam);
}
