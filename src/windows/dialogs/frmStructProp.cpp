#include "windows/dialogs/frmStructProp.h"

#include "engine/profiles/NodeProperties.h"
#include "resources/controls.h"

void frmStructProp::OnInit() {
    SetText(tbName, name_);
    SetText(tbInfo, info_);
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
    if (confirm_(Text(tbName), Text(tbInfo))) Close(true);
}
