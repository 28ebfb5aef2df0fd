#pragma once

#include <windows.h>

#include <functional>
#include <optional>

// Stands in front of a window's own procedure while both live. The common controls offer the same, but look
// up a property of the window for every message, which may be a call to another process: too costly for a
// control that gets thousands of messages. Takes the window's user data; one for each window.
class Subclass {
 public:
    // The result of a message that goes no further; none passes it on to the window's own procedure.
    using Handler = std::function<std::optional<LRESULT>(UINT message, WPARAM wParam, LPARAM lParam)>;

    Subclass() = default;
    ~Subclass() { Detach(); }
    Subclass(const Subclass&) = delete;
    Subclass& operator=(const Subclass&) = delete;

    void Attach(HWND window, Handler handler);
    void Detach();
    // What the window's own procedure makes of a message; for a handler that has to do something behind it.
    LRESULT PassOn(UINT message, WPARAM wParam, LPARAM lParam) const;

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    WNDPROC before_ = nullptr;
    Handler handler_;
};
