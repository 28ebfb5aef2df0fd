#include "windows/dialogs/frmSplash.h"

#include <utility>

#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/Version.h"

namespace {
constexpr UINT_PTR kCloseTimer = 1;
constexpr UINT kShownMilliseconds = 1500;
}  // namespace

void frmSplash::OnInit() {
    SetText(lbVersion, L"Version " + ProgramVersion());
    SetTimer(Window(), kCloseTimer, kShownMilliseconds, nullptr);
}

void frmSplash::OnResolution() {
    UniqueIcon logo = LoadProgramIcon(Scaled(64, DpiOfWindow(Window())));
    SendMessageW(Control(imgLogo), STM_SETICON, reinterpret_cast<WPARAM>(logo.Get()), 0);
    logo_ = std::move(logo);
}

void frmSplash::OnCommand(int control, int code) {
    if (control == lblClose && code == STN_CLICKED)
        Close(true);
    else
        Dialog::OnCommand(control, code);
}

bool frmSplash::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT&) {
    if (message != WM_TIMER || wParam != kCloseTimer) return false;
    Close(true);
    return true;
}
