#include "windows/dialogs/frmSplash.h"

#include <utility>

#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/Version.h"

namespace {
constexpr std::chrono::milliseconds kShown(1500);
}  // namespace

void frmSplash::OnInit() {
    SetText(lbVersion, L"Version " + ProgramVersion());
    close_.Start(kShown);
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
