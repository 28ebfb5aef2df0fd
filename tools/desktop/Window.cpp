#include "desktop/Window.h"

#include <algorithm>

#include "desktop/Utf8.h"

namespace {

constexpr UINT kSendBound = 8000;

std::string Named(Window window) {
    return "window " + std::to_string(reinterpret_cast<std::uintptr_t>(window.Handle())) + " (" +
           Utf8(window.ClassName()) + ", number " + std::to_string(window.Number()) + ")";
}

BOOL CALLBACK Collect(HWND handle, LPARAM list) {
    reinterpret_cast<std::vector<Window>*>(list)->emplace_back(handle);
    return TRUE;
}

}  // namespace

DWORD Window::ProcessId() const {
    DWORD id = 0;
    GetWindowThreadProcessId(handle_, &id);
    return id;
}

GUITHREADINFO Window::Thread() const {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    const DWORD number = GetWindowThreadProcessId(handle_, nullptr);
    // Number 0 would ask for the thread in front.
    return number != 0 && GetGUIThreadInfo(number, &thread) ? thread : GUITHREADINFO{};
}

std::wstring Window::ClassName() const {
    wchar_t name[128] = L"";
    GetClassNameW(handle_, name, static_cast<int>(std::size(name)));
    return name;
}

std::wstring Window::Text() const {
    // One character more than said, so that a text that grows meanwhile is not cut in silence.
    for (LRESULT length = Send(WM_GETTEXTLENGTH);;) {
        std::wstring text(static_cast<std::size_t>(length) + 2, L'\0');
        const LRESULT copied = Send(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        if (copied <= length) {
            text.resize(static_cast<std::size_t>(std::max<LRESULT>(copied, 0)));
            return text;
        }
        length = 2 * copied;
    }
}

RECT Window::Rectangle() const {
    RECT rectangle{};
    GetWindowRect(handle_, &rectangle);
    return rectangle;
}

std::vector<Window> Window::Descendants() const {
    std::vector<Window> found;
    EnumChildWindows(handle_, Collect, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::vector<Window> Window::Children() const {
    std::vector<Window> found;
    for (HWND child = GetWindow(handle_, GW_CHILD); child != nullptr && found.size() < 1000;
         child = GetWindow(child, GW_HWNDNEXT)) {
        found.emplace_back(child);
    }
    return found;
}

Window Window::FindControl(int number) const {
    if (HWND direct = GetDlgItem(handle_, number)) return Window(direct);
    for (Window window : Descendants()) {
        if (window.Number() == number) return window;
    }
    return {};
}

Window Window::Control(int number) const {
    const Window found = FindControl(number);
    if (!found) throw DriverError("there is no control " + std::to_string(number) + " in " + Named(*this));
    return found;
}

Window Window::ControlOfClass(std::wstring_view className) const {
    const std::wstring wanted(className);
    for (Window window : Descendants()) {
        if (window.Visible() && lstrcmpiW(window.ClassName().c_str(), wanted.c_str()) == 0) return window;
    }
    throw DriverError("there is no " + Utf8(className) + " in " + Named(*this));
}

LRESULT Window::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    DWORD_PTR result = 0;
    SetLastError(0);
    if (SendMessageTimeoutW(handle_, message, wParam, lParam, SMTO_NORMAL, kSendBound, &result) == 0) {
        throw DriverError(Named(*this) + " did not answer message " + std::to_string(message) + ", error " +
                          std::to_string(GetLastError()));
    }
    return static_cast<LRESULT>(result);
}

void Window::Post(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (!PostMessageW(handle_, message, wParam, lParam)) {
        throw DriverError(Named(*this) + " does not take messages, error " + std::to_string(GetLastError()));
    }
}

void Window::Command(int number) const {
    Post(WM_COMMAND, static_cast<WPARAM>(number));
}

void Window::SetText(int control, const std::wstring& text) const {
    Control(control).Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void Window::Press(int control) const {
    const Window button = WaitFor("button " + std::to_string(control), [&] { return FindControl(control); });
    WaitFor("button " + std::to_string(control) + " to be enabled", [&] { return button.Enabled(); });
    button.Post(BM_CLICK);
}

bool Window::Checked(int control) const {
    return Control(control).Send(BM_GETCHECK) == BST_CHECKED;
}

void Window::Check(int control, bool checked) const {
    if (Checked(control) == checked) return;
    Press(control);
    WaitFor("the check mark of control " + std::to_string(control),
            [&] { return Checked(control) == checked; });
}

std::vector<Window> TopLevelWindows(DWORD processId) {
    std::vector<Window> found;
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&found));
    std::erase_if(found, [&](Window window) {
        return !window.Visible() || (processId != 0 && window.ProcessId() != processId);
    });
    return found;
}

RemoteMemory::RemoteMemory(Window window, std::size_t size) : size_(size) {
    process_ =
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, window.ProcessId());
    if (process_ != nullptr) {
        address_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    }
    if (address_ == nullptr) {
        const DWORD error = GetLastError();
        if (process_ != nullptr) CloseHandle(process_);
        throw DriverError("no memory in the program of " + Named(window) + ", error " +
                          std::to_string(error));
    }
}

RemoteMemory::~RemoteMemory() {
    VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
    CloseHandle(process_);
}

void RemoteMemory::Write(const void* from, std::size_t size, std::size_t offset) {
    SIZE_T written = 0;
    if (offset + size > size_ ||
        !WriteProcessMemory(process_, static_cast<char*>(address_) + offset, from, size, &written)) {
        throw DriverError("cannot write into the other program");
    }
}

void RemoteMemory::Read(void* to, std::size_t size, std::size_t offset) const {
    SIZE_T read = 0;
    if (offset + size > size_ ||
        !ReadProcessMemory(process_, static_cast<char*>(address_) + offset, to, size, &read)) {
        throw DriverError("cannot read from the other program");
    }
}

std::wstring RemoteMemory::GetText(std::size_t offset, std::size_t maxCharacters) const {
    std::wstring text(maxCharacters, L'\0');
    Read(text.data(), maxCharacters * sizeof(wchar_t), offset);
    text.resize(wcsnlen(text.c_str(), maxCharacters));
    return text;
}
