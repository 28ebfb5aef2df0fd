#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "desktop/Wait.h"

// A window of another program. A handle and nothing more: it may be gone at any time, and then every question
// to it is a DriverError. Whatever is sent is bounded, so a program that hangs fails its test and no more.
class Window {
 public:
    Window() = default;
    explicit Window(HWND handle) : handle_(handle) {}

    HWND Handle() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }
    friend bool operator==(Window, Window) = default;

    bool Exists() const { return IsWindow(handle_) != FALSE; }
    bool Visible() const { return IsWindowVisible(handle_) != FALSE; }
    bool Enabled() const { return IsWindowEnabled(handle_) != FALSE; }
    bool Minimised() const { return IsIconic(handle_) != FALSE; }
    bool HasStyle(LONG_PTR style) const { return (GetWindowLongPtrW(handle_, GWL_STYLE) & style) == style; }
    int Number() const { return GetDlgCtrlID(handle_); }
    DWORD ProcessId() const;
    // What its thread is at: who has the keyboard and the mouse, whether a menu is open. All empty when the
    // thread cannot be asked.
    GUITHREADINFO Thread() const;
    std::wstring ClassName() const;
    std::wstring Text() const;
    // In pixels of the screen.
    RECT Rectangle() const;

    // The control with this number, however deep in the window it stands (a tab's page is a window of its
    // own). `FindControl` gives an empty window when there is none.
    Window Control(int number) const;
    Window FindControl(int number) const;
    // All windows inside, in the order of the tabulator key.
    std::vector<Window> Descendants() const;
    std::vector<Window> Children() const;
    // The first visible window inside of the class; without regard to case.
    Window ControlOfClass(std::wstring_view className) const;

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // For messages that may make the other side wait for an answer: returns at once.
    void Post(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // What a menu entry, a key or a tool bar button would do. Posted.
    void Command(int number) const;
    void Close() const { Post(WM_CLOSE); }

    // Controls of this window.
    std::wstring TextOf(int control) const { return Control(control).Text(); }
    void SetText(int control, const std::wstring& text) const;
    // Presses a button once it is enabled. Posted.
    void Press(int control) const;
    bool Checked(int control) const;
    // Clicks a check box or an option button until it is as wanted.
    void Check(int control, bool checked) const;

 private:
    HWND handle_ = nullptr;
};

// All visible top-level windows; of one program when `processId` is not 0.
std::vector<Window> TopLevelWindows(DWORD processId = 0);

// A number of bytes inside the program of a window, for messages whose arguments are addresses. The programs
// must be of one word size.
class RemoteMemory {
 public:
    RemoteMemory(Window window, std::size_t size);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    void* Address() const { return address_; }
    LPARAM Parameter() const { return reinterpret_cast<LPARAM>(address_); }
    template <class T>
    void Put(const T& value, std::size_t offset = 0) {
        Write(&value, sizeof value, offset);
    }
    template <class T>
    T Get(std::size_t offset = 0) const {
        T value;
        Read(&value, sizeof value, offset);
        return value;
    }
    std::wstring GetText(std::size_t offset, std::size_t maxCharacters) const;

 private:
    void Write(const void* from, std::size_t size, std::size_t offset);
    void Read(void* to, std::size_t size, std::size_t offset) const;

    HANDLE process_ = nullptr;
    void* address_ = nullptr;
    std::size_t size_ = 0;
};
