#include "windows/dialogs/frmStructProp.h"

#include "engine/flows/NodeProperties.h"
#include "resources/controls.h"

void frmStructProp::OnInit() {
    SetText(tbName, name_);
    SetText(tbInfo, info_);
    if (!confirm_)
        for (const int control : {tbName, tbInfo})
            SendMessageW(Control(control), EM_SETREADONLY, TRUE, 0);
    tbName_Change();
}

void frmStructProp::OnCommand(int control, int code) {
    if (control == tbName && code == EN_CHANGE)
        tbName_Change();
    else
        Dialog::OnCommand(control, code);
}

void frmStructProp::tbName_Change() {
    Enable(cb_ok, NameCanBeConfirmed(Text(tbName)));
}

void frmStructProp::OnOk() {
    if (!confirm_) return Close(false);
    if (confirm_(Text(tbName), Text(tbInfo))) Close(true);
}
