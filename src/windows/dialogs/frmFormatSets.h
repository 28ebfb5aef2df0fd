#pragma once

#include "engine/clipboard/CClipBoard.h"
#include "engine/formatsets/FormatSetDialogModel.h"
#include "windows/controls/Dialog.h"

// The format sets: make one from what the clipboard holds, rename, delete, and choose which formats a set
// keeps. The changes are made in a copy that OK takes over.
class frmFormatSets : public Dialog {
 public:
    explicit frmFormatSets(CClipBoard& clipBoard) : clipBoard_(clipBoard) {}

 private:
    void OnInit() override;
    void OnResolution() override;
    void OnCommand(int control, int code) override;
    LRESULT OnNotify(NMHDR& header) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::FormatSets; }

    void Command1_Click();
    void cbChange_Click();
    void cbDelete_Click();
    void lstAlias_Click();
    void FillAliases();
    void FillFormats();

    CClipBoard& clipBoard_;
    FormatSetDialogModel model_;
    bool filling_ = false;  // the check marks change because the list is filled, not by the user
};
