#pragma once

#include "engine/tree/CTreeViewEx.h"
#include "windows/controls/Dialog.h"

// The properties of a clip: its name and info text to edit, the rest to read.
class frmClipProp : public Dialog {
 public:
    // Neither is owned; both outlive the dialog.
    frmClipProp(CTreeViewEx& tree, Node& clip) : tree_(tree), clip_(clip) {}

 private:
    void OnInit() override;
    void OnCommand(int control, int code) override;
    void OnOk() override;
    HelpTopic Topic() const override { return HelpTopic::ClipProperties; }

    void tbName_Change();

    CTreeViewEx& tree_;
    Node& clip_;
};
