#include "windows/dialogs/frmFirstStart.h"

#include "engine/formatsets/modFormatSet.h"
#include "engine/process/modOption.h"
#include "resources/controls.h"

void frmFirstStart::OnInit() {
    SetText(lbTitle, kFirstStartTitle);
    SetText(lbZusatz, kFirstStartText);
    for (int i = 0; i < kFirstStartTemplateCount; ++i)
        SetText(chkTemplate + i, kFirstStartTemplates[static_cast<std::size_t>(i)].caption);
    SetText(chkPlainProfile, kPlainProfile.caption);
    Check(chkPlainProfile, IsFreshStart());
    Check(chkRecommended, IsFreshStart());
    Check(chkDialog, FirstStartBoxChecked());
}

void frmFirstStart::OnOk() {
    choice_.plain = Checked(chkPlainProfile);
    for (int i = 0; i < kFirstStartTemplateCount; ++i)
        choice_.templates[static_cast<std::size_t>(i)] = Checked(chkTemplate + i);
    choice_.boxChecked = Checked(chkDialog);
    recommended_ = Checked(chkRecommended);
    if (recommended_) {
        SetRecommendedOptions();
        AddRecommendedFormatSets();
    }
    Close(true);
}
