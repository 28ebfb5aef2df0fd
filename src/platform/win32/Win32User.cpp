#include "platform/win32/Win32User.h"

#include <utility>

#include "platform/Busy.h"
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

}  // namespace

int Win32User::ShowBox(const std::wstring& text, const std::wstring& title, unsigned style) {
    if (hasLeft_) return IDNO;
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
    if (tellLater_)
        tellLater_(text);
    else
        waiting_.push_back(text);
}

void Win32User::SetTeller(std::function<void(const std::wstring& text)> tellLater) {
    tellLater_ = std::move(tellLater);
    if (!tellLater_) return;
    for (const std::wstring& text : std::exchange(waiting_, {}))
        tellLater_(text);
}

bool Win32User::Ask(const std::wstring& text, const std::wstring& title, bool noIsDefault) {
    return ShowBox(text, title, MB_YESNO | MB_ICONQUESTION | (noIsDefault ? MB_DEFBUTTON2 : 0)) == IDYES;
}

void Win32User::Status(const std::wstring& text) {
    if (showStatus_) showStatus_(text);
}

PointerShape Win32User::ShowPointer(PointerShape shape) {
    if (shape != pointer_)
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
