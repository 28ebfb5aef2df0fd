#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <map>

#include "contract/Home.h"
#include "contract/OtherProgram.h"
#include "platform/win32/SystemHandles.h"
#include "platform/win32/SystemPath.h"
#include "platform/win32/Win32Platform.h"

namespace {

constexpr const wchar_t* kWindowClass = L"ContractHome";
constexpr ULONGLONG kPumpLimit = 10'000;  // milliseconds
constexpr UINT kPollEvery = 5;            // milliseconds

std::map<HWND, Home::Procedure> windowProcedures;
std::array<Home::Procedure, 4> slotProcedures;

bool IsForTests(UINT message) {
    return (message >= WM_RENDERFORMAT && message <= WM_CHANGECBCHAIN) || message == WM_HOTKEY ||
           message == WM_CLIPBOARDUPDATE || message >= WM_APP;
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = windowProcedures.find(window);
    if (found == windowProcedures.end() || !IsForTests(message))
        return DefWindowProcW(window, message, wParam, lParam);
    return found->second(EngineWindow(window), message, static_cast<MessageParameter>(wParam), lParam);
}

template <std::size_t Slot>
LRESULT CALLBACK SlotProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsForTests(message)) return DefWindowProcW(window, message, wParam, lParam);
    return slotProcedures[Slot](EngineWindow(window), message, static_cast<MessageParameter>(wParam), lParam);
}

constexpr std::array<WNDPROC, 4> kSlots = {SlotProcedure<0>, SlotProcedure<1>, SlotProcedure<2>,
                                           SlotProcedure<3>};

void RegisterWindowClass() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kWindowClass;
    RegisterClassW(&windowClass);  // again with each home is no harm
}

void RemoveTree(const std::wstring& directory) {
    WIN32_FIND_DATAW found;
    const UniqueFind find(FindFirstFileW(SystemPath(directory + L"*").c_str(), &found));
    if (find.IsSet()) {
        do {
            const std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring path = SystemPath(directory + name);
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
                RemoveTree(directory + name + L"\\");
                continue;
            }
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(path.c_str());
        } while (FindNextFileW(find.Get(), &found));
    }
    RemoveDirectoryW(SystemPath(directory).c_str());
}

std::wstring TextOf(HWND window) {
    wchar_t text[1024];
    return std::wstring(text, static_cast<std::size_t>(GetWindowTextW(window, text, 1024)));
}

// Looks for this thread's message box whenever the box's own message loop lets the timer run.
struct BoxWatch {
    bool yes = false;
    Home::Box seen;
};
BoxWatch watch;

BOOL CALLBACK AnswerIfBox(HWND window, LPARAM) {
    wchar_t className[16];
    GetClassNameW(window, className, 16);
    if (std::wstring(className) != L"#32770" || !IsWindowVisible(window)) return TRUE;
    constexpr int kTextOfBox = 65535;
    watch.seen = {TextOf(GetDlgItem(window, kTextOfBox)), TextOf(window)};
    for (const int button : {watch.yes ? IDYES : IDNO, IDOK, IDCANCEL})
        if (GetDlgItem(window, button) != nullptr) {
            PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
            break;
        }
    return FALSE;
}

void CALLBACK LookForBox(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), AnswerIfBox, 0);
}

class WindowsHome : public Home {
 public:
    WindowsHome() : before_(UsePlatform(&ports_)) {
        RegisterWindowClass();
        wchar_t temporary[MAX_PATH];
        GetTempPathW(MAX_PATH, temporary);
        directory_ = std::wstring(temporary) + L"contract" + std::to_wstring(GetCurrentProcessId()) + L"\\";
        RemoveTree(directory_);
        CreateDirectoryW(directory_.c_str(), nullptr);
    }

    ~WindowsHome() override {
        while (!windowProcedures.empty())
            EndWindow(EngineWindow(windowProcedures.begin()->first));
        slotProcedures = {};
        RegDeleteTreeW(HKEY_CURRENT_USER, SettingsRoot().c_str());
        RemoveTree(directory_);
        UsePlatform(before_);
    }

    Platform& Ports() override { return ports_; }

    WindowHandle MakeWindow(const std::wstring& title, Procedure procedure) override {
        const HWND window = CreateWindowW(kWindowClass, title.c_str(), WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                          nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        windowProcedures[window] = std::move(procedure);
        return EngineWindow(window);
    }

    void EndWindow(WindowHandle window) override {
        windowProcedures.erase(SystemWindow(window));
        DestroyWindow(SystemWindow(window));
    }

    ProcedureAddress MakeProcedure(Procedure procedure) override {
        for (std::size_t slot = 0; slot < kSlots.size(); ++slot)
            if (!slotProcedures[slot]) {
                slotProcedures[slot] = std::move(procedure);
                return static_cast<ProcedureAddress>(reinterpret_cast<std::uintptr_t>(kSlots[slot]));
            }
        ADD_FAILURE() << "no procedure is left";
        return ProcedureAddress::None;
    }

    bool PumpUntil(const std::function<bool()>& condition) override {
        const ULONGLONG limit = GetTickCount64() + kPumpLimit;
        while (!condition()) {
            if (GetTickCount64() > limit) return false;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, kPollEvery, QS_ALLINPUT);
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
        return true;
    }

    std::wstring Directory() override { return directory_; }

    void SetReadOnly(const std::wstring& path, bool readOnly) override {
        SetFileAttributesW(SystemPath(path).c_str(),
                           readOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
    }

    WindowHandle OtherWindow() override { return EngineWindow(OtherProgram::Instance().Window()); }
    void OtherCopies(const std::vector<FormatBytes>& formats) override {
        OtherProgram::Instance().Copy(formats);
    }
    std::optional<std::string> OtherReads(FormatNumber format) override {
        return OtherProgram::Instance().Read(format);
    }
    void OtherHolds() override { OtherProgram::Instance().Hold(); }
    void OtherReleases() override { OtherProgram::Instance().Release(); }

    Box Answer(bool yes, const std::function<void()>& show) override {
        watch = {yes, {}};
        const UINT_PTR timer = SetTimer(nullptr, 0, kPollEvery, LookForBox);
        show();
        KillTimer(nullptr, timer);
        return watch.seen;
    }

    unsigned CodePage() override { return GetACP(); }

 private:
    static std::wstring SettingsRoot() {
        return L"Software\\NXClip Contract " + std::to_wstring(GetCurrentProcessId());
    }

    Win32Platform win32_;
    Win32Settings settings_{SettingsRoot()};
    // Not the user's own settings.
    Platform ports_{win32_.clipboard, win32_.memory, win32_.metafiles, win32_.files,
                    settings_,        win32_.user,   win32_.windows,   win32_.clock};
    Platform* before_;
    std::wstring directory_;
};

}  // namespace

std::unique_ptr<Home> Home::Make() {
    return std::make_unique<WindowsHome>();
}
