#include <windows.h>
// The common controls' header needs <windows.h> in front of it.
#include <commctrl.h>

#include <chrono>
#include <string>

#include "engine/flows/StartUp.h"
#include "engine/process/modHelp.h"
#include "engine/process/modMain.h"
#include "platform/Guard.h"
#include "platform/Platform.h"
#include "platform/win32/SystemHandles.h"
#include "platform/win32/Win32DirectoryAnswers.h"
#include "platform/win32/Win32Platform.h"
#include "resources/controls.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Ole.h"
#include "windows/controls/WindowsHelpPages.h"
#include "windows/dialogs/frmSplash.h"
#include "windows/main/frmMain.h"

namespace {

// The directory of the program file, without "\" at its end unless it is a drive's root.
std::wstring ProgramDirectory() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2);
    }
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

// Everything behind the program's name on the command line, as it was typed.
std::wstring Arguments(const wchar_t* arguments) {
    return arguments != nullptr ? arguments : L"";
}

class WindowsStartUp : public StartUpHost {
 public:
    explicit WindowsStartUp(frmMain& form) : form_(form) {}

    bool MainWindowStands() const { return mainWindowStands_; }

    bool OtherInstanceRuns() override {
        const HANDLE mutex = CreateMutexW(nullptr, FALSE, L"Local\\NXClip.Instance");
        const DWORD error = GetLastError();
        // The one of an instance with more rights may not even be opened.
        if (mutex == nullptr) return error == ERROR_ACCESS_DENIED;
        // Our own mutex is held until the process ends; another instance's must not be kept alive by us.
        if (error == ERROR_ALREADY_EXISTS) CloseHandle(mutex);
        return error == ERROR_ALREADY_EXISTS;
    }
    void Wait(std::chrono::milliseconds time) override { Sleep(static_cast<DWORD>(time.count())); }

    WindowHandle FindTopLevelWindow(const std::wstring& title) override {
        // The class is asked for too, since a window of the file manager bears the name of its folder.
        return EngineWindow(FindWindowW(kMainWindowClass, title.c_str()));
    }
    bool IsMinimised(WindowHandle window) override { return IsIconic(SystemWindow(window)) != 0; }
    void ShowNormal(WindowHandle window) override { ShowWindow(SystemWindow(window), SW_SHOWNORMAL); }

    void ActivateByTitle(const std::wstring& title) override {
        const HWND window = FindWindowW(kMainWindowClass, title.c_str());
        // A window that lives as an icon in the notification area is hidden.
        if (!IsWindowVisible(window)) ShowWindow(window, SW_SHOWNORMAL);
        SetForegroundWindow(GetLastActivePopup(window));
    }

    void ShowSplash() override { frmSplash().ShowModal(nullptr, IDD_frmSplash); }

    void ShowMainWindow() override {
        mainWindowStands_ = form_.Load();
        if (mainWindowStands_)
            form_.Show();
        else
            ThePlatform().user.Tell(L"Das Hauptfenster konnte nicht geöffnet werden !!!");
    }

 private:
    frmMain& form_;
    bool mainWindowStands_ = false;
};

void RunMessageLoop(frmMain& form) {
    MSG message;
    // A loop of the system's own below which the window went may have taken the message that ends this one.
    while (form.Stands()) {
        const bool arrived = PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;
        // A stream of messages must not keep the window from its end.
        Guarded([&] { arrived ? form.OnRest() : form.OnIdle(); });
        if (!form.Stands() || (!arrived && GetMessageW(&message, nullptr, 0, 0) <= 0)) break;
        if (message.message == WM_QUIT) break;
        if (TranslateModelessMessage(message) || form.TranslateKey(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t* commandLine, int) {
    Win32Platform platform;
    UsePlatform(&platform.platform);
    WindowsHelpPages helpPages;
    UseHelpPages(&helpPages);
    Win32DirectoryAnswers answers;
    UseDirectoryAnswers(&answers);

    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    // The system starts it again after an update or an installer had to end it, not after a fault of its own.
    RegisterApplicationRestart(Arguments(commandLine).c_str(), RESTART_NO_CRASH | RESTART_NO_HANG);

    const OleScope ole;
    {
        frmMain form(platform.user);
        WindowsStartUp host(form);
        if (StartUp(host, Arguments(commandLine), ProgramDirectory()) && host.MainWindowStands()) {
            form.FirstStartAction();
            RunMessageLoop(form);
        }
    }
    return 0;
}
