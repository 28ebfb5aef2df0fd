#pragma once

#include "platform/win32/SystemHandles.h"
#include "windows/controls/Dialog.h"

// What the program is, its version, and a way to the system's own information tool.
class frmAbout : public Dialog {
 private:
    void OnInit() override;
    void OnResolution() override;
    void OnCommand(int control, int code) override;
    HelpTopic Topic() const override { return HelpTopic::About; }

    void cbSysInfo_Click();

    UniqueIcon logo_;
};
