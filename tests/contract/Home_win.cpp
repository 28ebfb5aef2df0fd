#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <future>
#include <map>
#include <thread>

#include "contract/Home.h"
#include "desktop/Process.h"
#include "desktop/ScratchDirectory.h"
#include "desktop/WholeFile.h"
#include "platform/win32/SystemHandles.h"
#include "platform/win32/SystemPath.h"
#include "platform/win32/Win32Platform.h"

namespace {

constexpr const wchar_t* kWindowClass = L"ContractHome";
constexpr ULONGLONG kPumpLimit = 10'000;  // milliseconds
constexpr UINT kPollEvery = 5;            // milliseconds

// In front of a metafile picture's bits: mapping mode, width, height, 0.
const std::string kPictureHeader("\x08\0\0\0\x64\0\0\0\x64\0\0\0\0\0\0\0", 16);

std::map<HWND, Home::Procedure> windowProcedures;
Home::Procedure exchangedProcedure;

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

LRESULT CALLBACK ExchangedProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsForTests(message)) return DefWindowProcW(window, message, wParam, lParam);
    return exchangedProcedure(EngineWindow(window), message, static_cast<MessageParameter>(wParam), lParam);
}

void RegisterWindowClass() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kWindowClass;
    RegisterClassW(&windowClass);  // again with each home is no harm
}

class WindowsHome : public Home {
 public:
    WindowsHome() : before_(UsePlatform(&ports_)) { RegisterWindowClass(); }

    ~WindowsHome() override {
        while (!windowProcedures.empty())
            EndWindow(EngineWindow(windowProcedures.begin()->first));
        RegDeleteTreeW(HKEY_CURRENT_USER, SettingsRoot().c_str());
        // Some of its paths are too long for those who do not ask for it.
        std::error_code ignored;
        std::filesystem::remove_all(L"\\\\?\\" + scratch_.Path().wstring(), ignored);
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
        exchangedProcedure = std::move(procedure);
        return static_cast<ProcedureAddress>(reinterpret_cast<std::uintptr_t>(ExchangedProcedure));
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

    WindowHandle OtherWindow() override { return EngineWindow(FindWindowW(L"NXClip.ClipPut", nullptr)); }
    void OtherCopies(const std::vector<FormatBytes>& formats) override {
        std::wstring command = Tool(L"clipput");
        if (std::any_of(formats.begin(), formats.end(), [](const FormatBytes& one) { return one.late; }))
            command += L" --delayed";
        for (const FormatBytes& one : formats) {
            const std::wstring file = directory_ + L"offer" + std::to_wstring(one.format);
            WriteWholeFile(file, (one.format == CF_METAFILEPICT ? kPictureHeader : "") + one.bytes);
            command += L" \"" + NameOf(one.format) + L"=" + file + L"\"";
        }
        auto next = std::make_unique<Process>(command, L"", directory_ + L"said");
        const auto hasCopied = [&] {
            DWORD owner = 0;
            GetWindowThreadProcessId(GetClipboardOwner(), &owner);
            return owner == next->Id() && GetOpenClipboardWindow() == nullptr;
        };
        EXPECT_TRUE(PumpUntil(hasCopied));
        other_ = std::move(next);
    }
    std::optional<std::string> OtherReads(FormatNumber format) override {
        const std::wstring file = directory_ + L"read";
        Process reader(Tool(L"clipget") + L" \"" + NameOf(format) + L"\" \"" + file + L"\"", L"",
                       directory_ + L"said");
        if (reader.WaitForEnd() != 0) return std::nullopt;
        return ReadWholeFile(file).substr(format == CF_METAFILEPICT ? kPictureHeader.size() : 0);
    }
    void OtherHolds() override {
        std::promise<void> holds;
        holder_ = std::jthread([&](std::stop_token stop) {
            OpenClipboard(nullptr);
            holds.set_value();
            while (!stop.stop_requested())
                Sleep(kPollEvery);
            CloseClipboard();
        });
        holds.get_future().wait();
    }
    void OtherReleases() override { holder_ = {}; }
    unsigned CodePage() override { return GetACP(); }

 private:
    // One of the small programs that stand for the rest of the world; they lie below this one.
    static std::wstring Tool(const std::wstring& name) {
        return L"\"" + (OwnDirectory() / L"desktop" / name).wstring() + L"\"";
    }
    static std::wstring NameOf(FormatNumber format) {
        wchar_t name[256];
        const int length = GetClipboardFormatNameW(static_cast<UINT>(format), name, 256);
        return length > 0 ? std::wstring(name, static_cast<std::size_t>(length)) : std::to_wstring(format);
    }
    static std::wstring SettingsRoot() {
        return L"Software\\NXClip Contract " + std::to_wstring(GetCurrentProcessId());
    }

    Win32Platform win32_;
    Win32Settings settings_{SettingsRoot()};
    // Not the user's own settings.
    Platform ports_{win32_.clipboard, win32_.memory, win32_.metafiles, win32_.files,
                    settings_,        win32_.user,   win32_.windows,   win32_.clock};
    Platform* before_;
    const ScratchDirectory scratch_;
    const std::wstring directory_ = scratch_.Path().wstring() + L"\\";
    std::unique_ptr<Process> other_;
    std::jthread holder_;
};

}  // namespace

std::unique_ptr<Home> Home::Make() {
    return std::make_unique<WindowsHome>();
}
