#include "windows/dialogs/frmAbout.h"

#include <utility>

#include "platform/Platform.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/ShellOpen.h"
#include "windows/controls/Version.h"

void frmAbout::OnInit() {
    SetText(lbVersion, L"Version " + ProgramVersion());
}

void frmAbout::OnResolution() {
    UniqueIcon logo = LoadProgramIcon(Scaled(48, DpiOfWindow(Window())));
    SendMessageW(Control(imgLogo), STM_SETICON, reinterpret_cast<WPARAM>(logo.Get()), 0);
    logo_ = std::move(logo);
}

void frmAbout::OnCommand(int control, int code) {
    if (control == cbSysInfo)
        cbSysInfo_Click();
    else
        Dialog::OnCommand(control, code);
}

void frmAbout::cbSysInfo_Click() {
    if (!OpenByShell(Window(), L"msinfo32.exe"))
        ThePlatform().user.Tell(L"Die Systeminformationen konnten nicht gestartet werden !!!");
}
