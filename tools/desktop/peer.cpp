// A program that shares the clipboard with NXClip and behaves badly; its kinds stand in Peers.h.

#include <windows.h>

#include <set>
#include <string>

#include "desktop/ClipboardData.h"
#include "desktop/Peers.h"

namespace {

std::set<std::wstring> kind;
HWND next = nullptr;
bool ready = false;
int told = 0, toldOfLeavings = 0;
int number = 0;
int privateFormats = 0;
DWORD delay = 0;
bool replaces = false;

bool Is(const wchar_t* word) {
    return kind.contains(word);
}

LRESULT PassOn(UINT message, WPARAM wParam, LPARAM lParam) {
    return next != nullptr ? SendMessageW(next, message, wParam, lParam) : 0;
}

void ReadEverything(HWND window) {
    if (!OpenClipboard(window)) return;
    for (UINT format = EnumClipboardFormats(0); format != 0; format = EnumClipboardFormats(format))
        GetClipboardData(format);
    CloseClipboard();
}

LRESULT ChangeTold(HWND window, WPARAM wParam, LPARAM lParam) {
    // Joining the chain sends one that is none.
    if (!ready) return 0;
    ++told;
    if (Is(L"mute")) return 0;
    if (Is(L"reading")) ReadEverything(window);
    if (Is(L"boxing")) MessageBoxW(window, L"Die Zwischenablage wurde geändert.", L"Peer", MB_OK);
    return PassOn(WM_DRAWCLIPBOARD, wParam, lParam);
}

LRESULT ChainChanged(WPARAM wParam, LPARAM lParam) {
    ++toldOfLeavings;
    if (Is(L"mute")) return 0;
    if (Is(L"blind") || reinterpret_cast<HWND>(wParam) != next)
        return PassOn(WM_CHANGECBCHAIN, wParam, lParam);
    next = reinterpret_cast<HWND>(lParam);
    return 0;
}

UINT PrivateFormat(int index) {
    return FormatNumber(L"NXClip Peer " + std::to_wstring(index));
}

HANDLE DataFor(UINT format) {
    std::string bytes = "Kopie " + std::to_string(number);
    if (format == CF_TEXT) bytes += '\0';
    return MakeClipboardData(format, bytes);
}

void Copy(HWND window) {
    const OpenedClipboard clipboard(window);
    EmptyClipboard();
    SetClipboardData(CF_TEXT, nullptr);
    for (int i = 1; i <= privateFormats; ++i)
        SetClipboardData(PrivateFormat(i), nullptr);
}

void Hang(DWORD milliseconds) {
    Sleep(milliseconds == 0 ? INFINITE : milliseconds);
}

void Render(HWND window, UINT format) {
    if (Is(L"dying")) TerminateProcess(GetCurrentProcess(), 0);
    if (Is(L"slow")) Sleep(delay);
    if (!Is(L"empty")) SetClipboardData(format, DataFor(format));
    if (Is(L"changing") && !replaces) {
        replaces = true;
        PostMessageW(window, kPeerCopy, static_cast<WPARAM>(number + 1), MAKELPARAM(privateFormats, 0));
    }
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_DRAWCLIPBOARD:
            return ChangeTold(window, wParam, lParam);
        case WM_CHANGECBCHAIN:
            return ChainChanged(wParam, lParam);
        case WM_RENDERFORMAT:
            Render(window, static_cast<UINT>(wParam));
            return 0;
        case kPeerTold:
            return told;
        case kPeerToldOfLeavings:
            return toldOfLeavings;
        case kPeerCopy:
            number = static_cast<int>(wParam);
            privateFormats = LOWORD(lParam);
            delay = HIWORD(lParam);
            Copy(window);
            if (Is(L"hung")) PostMessageW(window, kPeerHang, delay, 0);
            return 0;
        case kPeerHang:
            Hang(static_cast<DWORD>(wParam));
            return 0;
        case kPeerLeave:
            ChangeClipboardChain(window, next);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    kind.insert(arguments + 1, arguments + count);
    WNDCLASSW shape{};
    shape.lpfnWndProc = Procedure;
    shape.lpszClassName = kPeerClass;
    RegisterClassW(&shape);
    HWND window =
        CreateWindowExW(0, kPeerClass, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    if (Is(L"viewer")) next = SetClipboardViewer(window);
    ready = true;
    SetWindowTextW(window, (L"peer " + std::to_wstring(GetCurrentProcessId())).c_str());
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
