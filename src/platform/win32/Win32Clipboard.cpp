#include "platform/win32/Win32Clipboard.h"

#include <string>

#include "platform/win32/SystemHandles.h"

namespace {

constexpr FormatNumber kFirstRegistered = 0xC000;
constexpr FormatNumber kLastRegistered = 0xFFFF;
// 255 characters of up to two bytes each, and the end.
constexpr int kMostNameBytes = 511;

}  // namespace

// Keeps the error code of a failed call before anything else can replace it.
bool Win32Clipboard::Noted(bool succeeded) {
    if (!succeeded) lastError_ = GetLastError();
    return succeeded;
}

bool Win32Clipboard::Open(WindowHandle owner) {
    return Noted(OpenClipboard(SystemWindow(owner)));
}

void Win32Clipboard::Close() {
    Noted(CloseClipboard());
}

bool Win32Clipboard::Empty() {
    return Noted(EmptyClipboard());
}

FormatNumber Win32Clipboard::NextFormat(FormatNumber previous) {
    const UINT next = EnumClipboardFormats(static_cast<UINT>(previous));
    Noted(next != 0);
    return static_cast<FormatNumber>(next);
}

DataHandle Win32Clipboard::Data(FormatNumber format) {
    const HANDLE data = GetClipboardData(static_cast<UINT>(format));
    if (!Noted(data != nullptr) && lastError_ == 0) lastError_ = ERROR_NOT_FOUND;
    return EngineData(data);
}

bool Win32Clipboard::Announce(FormatNumber format) {
    // The empty handle is also what a success returns, and a success may leave any error code; but not that
    // the clipboard is closed, on which another program's data of this format may stand.
    SetLastError(ERROR_SUCCESS);
    SetClipboardData(static_cast<UINT>(format), nullptr);
    return Noted(GetLastError() != ERROR_CLIPBOARD_NOT_OPEN && Holds(format));
}

bool Win32Clipboard::Put(FormatNumber format, DataHandle data) {
    if (data == DataHandle::None) {
        lastError_ = ERROR_INVALID_HANDLE;
        return false;
    }
    return Noted(SetClipboardData(static_cast<UINT>(format), SystemData(data)) != nullptr);
}

bool Win32Clipboard::Holds(FormatNumber format) {
    return IsClipboardFormatAvailable(static_cast<UINT>(format)) != FALSE;
}

FormatNumber Win32Clipboard::RegisterName(const std::string& name) {
    const UINT format = RegisterClipboardFormatA(name.c_str());
    Noted(format != 0);
    return static_cast<FormatNumber>(format);
}

std::optional<std::string> Win32Clipboard::RegisteredName(FormatNumber format, int most) {
    // Below that range the same table holds numbers as names.
    if (format < kFirstRegistered || format > kLastRegistered || most <= 0) return std::nullopt;
    // Not every system cuts a name that is too long for the buffer, so it is read whole and cut here.
    char name[kMostNameBytes + 1] = {};
    if (!Noted(GetClipboardFormatNameA(static_cast<UINT>(format), name, kMostNameBytes) > 0))
        return std::nullopt;
    return std::string(name).substr(0, static_cast<std::size_t>(most));
}

WindowHandle Win32Clipboard::Owner() {
    return EngineWindow(GetClipboardOwner());
}

std::uint32_t Win32Clipboard::SequenceNumber() {
    return GetClipboardSequenceNumber();
}

WindowHandle Win32Clipboard::FirstViewer() {
    return EngineWindow(GetClipboardViewer());
}

WindowHandle Win32Clipboard::JoinChain(WindowHandle window) {
    return EngineWindow(SetClipboardViewer(SystemWindow(window)));
}

void Win32Clipboard::LeaveChain(WindowHandle window, WindowHandle next) {
    ChangeClipboardChain(SystemWindow(window), SystemWindow(next));
}

void Win32Clipboard::Listen(WindowHandle window) {
    AddClipboardFormatListener(SystemWindow(window));
}

void Win32Clipboard::StopListening(WindowHandle window) {
    RemoveClipboardFormatListener(SystemWindow(window));
}
