#include "contract/OtherProgram.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "platform/ByteBuffer.h"
#include "platform/win32/SystemHandles.h"

namespace {

constexpr const wchar_t* kRole = L"--other-program";
constexpr const wchar_t* kOtherClass = L"ContractOtherProgram";
constexpr const wchar_t* kReplyClass = L"ContractReply";
constexpr DWORD kStartLimit = 20'000;  // milliseconds

enum : ULONG_PTR { kCopy = 1, kRead, kHold, kRelease };

[[noreturn]] void GiveUp(const char* why) {
    std::fprintf(stderr, "the other program: %s (%lu)\n", why, GetLastError());
    ExitProcess(3);
}

// ---- In the other process ----

std::map<UINT, std::string> lateFormats;

void CopyAll(HWND window, ByteReader formats) {
    if (!OpenClipboard(window)) GiveUp("cannot open the clipboard to copy");
    EmptyClipboard();
    lateFormats.clear();
    while (formats.Remaining() > 0) {
        const UINT format = formats.UInt32();
        const bool late = formats.Flag();
        std::string bytes(formats.UInt32(), '\0');
        formats.Bytes(bytes.data(), bytes.size());
        if (late) lateFormats[format] = bytes;
        SetClipboardData(format, late ? nullptr : OtherData(format, bytes));
    }
    CloseClipboard();
}

void ReadOne(HWND window, HWND replyTo, UINT format) {
    if (!OpenClipboard(window)) GiveUp("cannot open the clipboard to read");
    std::optional<std::string> bytes = OtherBytes(format);
    CloseClipboard();
    if (!bytes) return;
    COPYDATASTRUCT reply = {kRead, static_cast<DWORD>(bytes->size()), bytes->data()};
    SendMessageW(replyTo, WM_COPYDATA, reinterpret_cast<WPARAM>(window), reinterpret_cast<LPARAM>(&reply));
}

LRESULT CALLBACK OtherWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_RENDERFORMAT) {
        const auto found = lateFormats.find(static_cast<UINT>(wParam));
        if (found != lateFormats.end())
            SetClipboardData(found->first, OtherData(found->first, found->second));
        return 0;
    }
    if (message != WM_COPYDATA) return DefWindowProcW(window, message, wParam, lParam);
    const auto* command = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    ByteReader bytes(command->lpData, command->cbData);
    switch (command->dwData) {
        case kCopy:
            CopyAll(window, bytes);
            break;
        case kRead:
            ReadOne(window, reinterpret_cast<HWND>(wParam), bytes.UInt32());
            break;
        case kHold:
            OpenClipboard(window);
            break;
        case kRelease:
            CloseClipboard();
            break;
        default:
            break;
    }
    return TRUE;
}

HWND MakeMessageWindow(const wchar_t* className, const std::wstring& title, WNDPROC procedure) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = className;
    RegisterClassW(&windowClass);
    return CreateWindowW(className, title.c_str(), WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                         windowClass.hInstance, nullptr);
}

// The window's title tells the two processes' windows from those of another test run.
std::wstring TitleFor(DWORD parent) {
    return L"other program of " + std::to_wstring(parent);
}

[[noreturn]] void PlayOtherProgram(DWORD parent) {
    HANDLE parentProcess = OpenProcess(SYNCHRONIZE, FALSE, parent);
    if (parentProcess == nullptr) ExitProcess(2);
    if (MakeMessageWindow(kOtherClass, TitleFor(parent), OtherWindowProcedure) == nullptr)
        GiveUp("has no window");
    while (MsgWaitForMultipleObjects(1, &parentProcess, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    ExitProcess(0);
}

// Runs before main, which belongs to the tests.
const bool kPlaysItsPart = [] {
    const std::wstring commandLine = GetCommandLineW();
    const std::size_t role = commandLine.find(kRole);
    if (role != std::wstring::npos)
        PlayOtherProgram(std::wcstoul(commandLine.c_str() + role + std::wcslen(kRole), nullptr, 10));
    return true;
}();

// ---- In the tests' process ----

std::optional<std::string> lastReply;

LRESULT CALLBACK ReplyWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_COPYDATA) return DefWindowProcW(window, message, wParam, lParam);
    const auto* reply = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    lastReply.emplace(static_cast<const char*>(reply->lpData), reply->cbData);
    return TRUE;
}

}  // namespace

OtherProgram& OtherProgram::Instance() {
    static OtherProgram instance;
    return instance;
}

OtherProgram::OtherProgram() {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring commandLine =
        L"\"" + std::wstring(program) + L"\" " + kRole + L" " + std::to_wstring(GetCurrentProcessId());
    STARTUPINFOW startUp = {};
    startUp.cb = sizeof(startUp);
    PROCESS_INFORMATION process;
    if (!CreateProcessW(program, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startUp,
                        &process))
        GiveUp("does not start");
    const ULONGLONG limit = GetTickCount64() + kStartLimit;
    const std::wstring title = TitleFor(GetCurrentProcessId());
    while ((window_ = FindWindowW(kOtherClass, title.c_str())) == nullptr) {
        const bool ended = WaitForSingleObject(process.hProcess, 5) == WAIT_OBJECT_0;
        if (ended || GetTickCount64() > limit) GiveUp("does not show its window");
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

// While the other program works, what it asks of this one's windows is answered inside this call.
void OtherProgram::Command(ULONG_PTR command, const void* bytes, std::size_t size) {
    static const HWND replyWindow = MakeMessageWindow(kReplyClass, L"", ReplyWindowProcedure);
    COPYDATASTRUCT data = {command, static_cast<DWORD>(size), const_cast<void*>(bytes)};
    lastReply.reset();
    DWORD_PTR done = 0;
    SendMessageTimeoutW(window_, WM_COPYDATA, reinterpret_cast<WPARAM>(replyWindow),
                        reinterpret_cast<LPARAM>(&data), SMTO_NORMAL, kStartLimit, &done);
    EXPECT_NE(done, 0u) << "the other program does not answer";
}

void OtherProgram::Copy(const std::vector<Home::FormatBytes>& formats) {
    ByteWriter list;
    for (const Home::FormatBytes& one : formats) {
        list.UInt32(static_cast<std::uint32_t>(one.format));
        list.Flag(one.late);
        list.UInt32(static_cast<std::uint32_t>(one.bytes.size()));
        list.Bytes(one.bytes.data(), one.bytes.size());
    }
    Command(kCopy, list.Image().data(), list.Image().size());
}

std::optional<std::string> OtherProgram::Read(FormatNumber format) {
    Command(kRead, &format, sizeof(format));
    return lastReply;
}

void OtherProgram::Hold() {
    Command(kHold, nullptr, 0);
}

void OtherProgram::Release() {
    Command(kRelease, nullptr, 0);
}
