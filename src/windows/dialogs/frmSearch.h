#pragma once

#include "engine/flows/Search.h"
#include "windows/controls/Dialog.h"

// Asks what to search for. OK takes the criteria over for the whole run.
class frmSearch : public Dialog {
 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::Search; }

    SearchControls Controls() const;
};
