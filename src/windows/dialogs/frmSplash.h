#pragma once

#include "platform/win32/SystemHandles.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Timer.h"

// The window that greets at start-up. It closes by its timer, by Escape or by a click on its close label.
class frmSplash : public Dialog {
 private:
    void OnInit() override;
    void OnResolution() override;
    void OnCommand(int control, int code) override;

    UniqueIcon logo_;
    Timer close_{[this] { Close(true); }};
};
