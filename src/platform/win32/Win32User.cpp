#include "platform/win32/Win32User.h"

#include <algorithm>
#include <utility>

#include "platform/Busy.h"
#include "platform/Guard.h"
#include "platform/win32/LateFunction.h"
#include "platform/win32/ModalWindows.h"
#include "platform/win32/SystemHandles.h"
#include "platform/win32/SystemPath.h"

#include <mmsystem.h>

namespace {

unsigned IconStyle(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Information:
            return MB_ICONINFORMATION;
        case MessageIcon::Question:
            return MB_ICONQUESTION;
        case MessageIcon::Error:
            return MB_ICONERROR;
        case MessageIcon::None:
            break;
    }
    return 0;
}

// The one whose texts wait for the timer; a timer without a window knows nothing else of its maker.
Win32User* teller = nullptr;

// A function of its own: the 32-bit compiler turns no lambda into one of the system's calling convention.
void CALLBACK TimeToTell(HWND, UINT, UINT_PTR timer, DWORD) {
    // A box would break off what the mouse drags. The timer comes again.
    if (GetCapture() != nullptr) return;
    KillTimer(nullptr, timer);
    Guarded([] {
        if (teller != nullptr) teller->TellWhatWaits();
    });
}

}  // namespace

Win32User::~Win32User() {
    if (teller == this) teller = nullptr;
}

int Win32User::ShowBox(const std::wstring& text, const std::wstring& title, unsigned style) {
    const BusyScope open(Busy::Dialog);
    const HWND owner = ModalWindowOver(SystemWindow(mainWindow_));
    // Without an owner the box would not keep the user from the program's other windows.
    if (owner == nullptr) style |= MB_TASKMODAL;
    return MessageBoxW(owner, text.c_str(), (title.empty() ? title_ : title).c_str(), style);
}

void Win32User::Tell(const std::wstring& text, const std::wstring& title, MessageIcon icon) {
    ShowBox(text, title, MB_OK | IconStyle(icon));
}

void Win32User::TellLater(const std::wstring& text) {
    if (std::find(waiting_.begin(), waiting_.end(), text) != waiting_.end()) return;
    waiting_.push_back(text);
    teller = this;
    SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &TimeToTell);
}

// One box after the other: what comes to wait while one stands is told behind it.
void Win32User::TellWhatWaits() {
    if (std::exchange(telling_, true)) return;
    while (!waiting_.empty()) {
        Tell(waiting_.front(), {}, MessageIcon::Error);
        waiting_.pop_front();
    }
    telling_ = false;
}

bool Win32User::Ask(const std::wstring& text, const std::wstring& title, bool noIsDefault) {
    return ShowBox(text, title, MB_YESNO | MB_ICONQUESTION | (noIsDefault ? MB_DEFBUTTON2 : 0)) == IDYES;
}

void Win32User::Status(const std::wstring& text) {
    if (showStatus_) showStatus_(text);
}

PointerShape Win32User::ShowPointer(PointerShape shape) {
    SetCursor(LoadCursorW(nullptr, shape == PointerShape::Hourglass ? IDC_WAIT : IDC_ARROW));
    return std::exchange(pointer_, shape);
}

void Win32User::Beep() {
    MessageBeep(MB_OK);
}

bool Win32User::PlaySoundFile(const std::wstring& path) {
    // Played in the background, a missing file would count as played.
    const std::wstring file = SystemPath(path);
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return false;
    static const auto play = LateFunction<decltype(&PlaySoundW)>(L"winmm.dll", "PlaySoundW");
    return play != nullptr && play(file.c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT) != FALSE;
}
