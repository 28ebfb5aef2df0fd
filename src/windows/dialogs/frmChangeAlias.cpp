#include "windows/dialogs/frmChangeAlias.h"

#include "engine/formatsets/FormatSetDialogModel.h"
#include "resources/controls.h"

void frmChangeAlias::OnInit() {
    SetText(txtOld, oldName_);
    SetText(txtNew, oldName_);
    Enable(cbOk, AliasCanBeConfirmed(oldName_));
    // The old name stands first in the tab order but is only there to read.
    PostMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(txtNew)), TRUE);
}

void frmChangeAlias::OnCommand(int control, int code) {
    if (control == txtNew && code == EN_CHANGE)
        Enable(cbOk, AliasCanBeConfirmed(Text(txtNew)));
    else if (control == cbHilfe)
        OnHelp();
    else
        Dialog::OnCommand(control, code);
}

void frmChangeAlias::OnOk() {
    newName_ = Text(txtNew);
    if (ConfirmAlias(newName_)) Close(true);
}
