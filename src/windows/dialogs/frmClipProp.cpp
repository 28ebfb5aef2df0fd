#include "windows/dialogs/frmClipProp.h"

#include "engine/flows/NodeProperties.h"
#include "resources/controls.h"

void frmClipProp::OnInit() {
    const ClipProperties clip = ReadClipProperties(clip_);
    SetText(tbName, clip.name);
    SetText(tbInfo, clip.info);
    SetText(tbTime, clip.timeCaptured);
    SetText(lbFormatCount, std::to_wstring(clip.formatCount) + L" Format(e)");
    SetText(tbFile, clip.file);
    tbName_Change();
}

void frmClipProp::OnCommand(int control, int code) {
    if (control == tbName && code == EN_CHANGE)
        tbName_Change();
    else
        Dialog::OnCommand(control, code);
}

void frmClipProp::tbName_Change() {
    Enable(cb_ok, NameCanBeConfirmed(Text(tbName)));
}

void frmClipProp::OnOk() {
    if (ApplyClipProperties(tree_, clip_, Text(tbName), Text(tbInfo))) Close(true);
}
