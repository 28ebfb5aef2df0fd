#include "windows/dialogs/frmFirstStart.h"

#include "engine/process/modOption.h"
#include "resources/controls.h"

void frmFirstStart::OnInit() {
    SetText(lbTitle, kFirstStartTitle);
    SetText(lbZusatz, kFirstStartText);
    for (int i = 0; i < kFirstStartTemplateCount; ++i)
        SetText(chkTemplate + i, kFirstStartTemplates[static_cast<std::size_t>(i)].caption);
    Check(chkRecommended, true);
    Check(chkDialog, FirstStartBoxChecked());
}

void frmFirstStart::OnOk() {
    for (int i = 0; i < kFirstStartTemplateCount; ++i)
        templates_[static_cast<std::size_t>(i)] = Checked(chkTemplate + i);
    if (Checked(chkRecommended)) SetRecommendedOptions();
    boxChecked_ = Checked(chkDialog);
    Close(true);
}
