#include "windows/dialogs/frmAbout.h"

#include <shellapi.h>

#include "platform/Platform.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/Pictures.h"
#include "windows/controls/Version.h"

void frmAbout::OnInit() {
    SetText(lbVersion, L"Version " + ProgramVersion());
    logo_ = LoadProgramIcon(Scaled(48, DpiOfWindow(Window())));
    SendMessageW(Control(imgLogo), STM_SETICON, reinterpret_cast<WPARAM>(logo_.Get()), 0);
}

void frmAbout::OnCommand(int control, int code) {
    if (control == cbSysInfo)
        cbSysInfo_Click();
    else
        Dialog::OnCommand(control, code);
}

void frmAbout::cbSysInfo_Click() {
    // A result up to 32 is an error by the call's own rule.
    const HINSTANCE started =
        ShellExecuteW(Window(), L"open", L"msinfo32.exe", nullptr, nullptr, SW_SHOWNORMAL);
    if (reinterpret_cast<INT_PTR>(started) <= 32)
        ThePlatform().user.Tell(L"Die Systeminformationen konnten nicht gestartet werden !!!");
}
