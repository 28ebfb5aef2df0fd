#include "windows/dialogs/frmProgress.h"

// The common controls' header needs <windows.h> in front of it.
#include <commctrl.h>

#include "platform/Platform.h"
#include "platform/Text.h"
#include "resources/controls.h"

namespace {

// So long the window need not answer at once.
constexpr ULONGLONG kSlice = 30;  // milliseconds
// A dialog that comes and goes at once is only a flicker.
constexpr ULONGLONG kMoment = 300;  // milliseconds

// False when there is nothing left to do.
bool WorksFor(ULONGLONG milliseconds, LongWork& work) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    do {
        if (!work.Step()) return false;
    } while (GetTickCount64() < end);
    return true;
}

}  // namespace

void frmProgress::OnInit() {
    SetWindowTextW(Window(), title_.c_str());
    SendMessageW(Control(pbProgress), PBM_SETRANGE32, 0, static_cast<LPARAM>(work_.Count()));
    ShowHowFar();
    SetTimer(Window(), 1, USER_TIMER_MINIMUM, nullptr);
}

bool frmProgress::OnMessage(UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != WM_TIMER) return false;
    GoOn();
    return true;
}

// A posted message would come in front of what the user does; a timer's comes behind it.
void frmProgress::GoOn() {
    if (!WorksFor(kSlice, work_)) return Close(true);
    ShowHowFar();
}

void frmProgress::ShowHowFar() {
    const auto number = [](std::size_t count) { return NumberText(static_cast<std::int64_t>(count)); };
    SetText(lblProgress, number(work_.Done()) + L" von " + number(work_.Count()));
    SendMessageW(Control(pbProgress), PBM_SETPOS, work_.Done(), 0);
}

void frmProgress::OnCancel() {
    work_.Stop();
    Close(false);
}

bool DoLongWork(HWND owner, const std::wstring& title, LongWork& work) {
    {
        const HourglassScope hourglass(ThePlatform().user);
        if (!WorksFor(kMoment, work)) return true;
    }
    return frmProgress(title, work).ShowModal(owner, IDD_frmProgress);
}
