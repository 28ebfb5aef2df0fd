#pragma once

#include "windows/controls/Dialog.h"

// What the program is, its version, and a way to the system's own information tool.
class frmAbout : public Dialog {
 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnClosed() override;
    HelpTopic Topic() const override { return HelpTopic::About; }

    void cbSysInfo_Click();

    HICON logo_ = nullptr;
};
