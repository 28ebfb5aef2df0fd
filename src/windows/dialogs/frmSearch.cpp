#include "windows/dialogs/frmSearch.h"

#include "resources/controls.h"

void frmSearch::OnInit() {
    const SearchControls controls = ControlsFromCriteria(TheSearchCriteria());
    SetText(tbSearch, controls.tbSearch);
    Check(chkProfile, controls.chkProfile);
    Check(chkStruct, controls.chkStruct);
    Check(chkClip, controls.chkClip);
    Check(chkName, controls.chkName);
    Check(chkInfo, controls.chkInfo);
    Check(chkValue, controls.chkValue);
    for (int i = 0; i < 2; ++i) {
        Check(optSearchPattern + i, controls.optSearchPattern[static_cast<std::size_t>(i)]);
        Check(optUpDown + i, controls.optUpDown[static_cast<std::size_t>(i)]);
    }
    Enable(cb_ok, SearchCanBeConfirmed(controls));
}

SearchControls frmSearch::Controls() const {
    SearchControls controls;
    controls.tbSearch = Text(tbSearch);
    controls.chkProfile = Checked(chkProfile);
    controls.chkStruct = Checked(chkStruct);
    controls.chkClip = Checked(chkClip);
    controls.chkName = Checked(chkName);
    controls.chkInfo = Checked(chkInfo);
    controls.chkValue = Checked(chkValue);
    for (int i = 0; i < 2; ++i) {
        controls.optSearchPattern[static_cast<std::size_t>(i)] = Checked(optSearchPattern + i);
        controls.optUpDown[static_cast<std::size_t>(i)] = Checked(optUpDown + i);
    }
    return controls;
}

void frmSearch::OnCommand(int control, int code) {
    const bool textChanged = control == tbSearch && code == EN_CHANGE;
    const bool boxChanged = control >= chkProfile && control <= chkValue && code == BN_CLICKED;
    if (textChanged || boxChanged)
        Enable(cb_ok, SearchCanBeConfirmed(Controls()));
    else
        Dialog::OnCommand(control, code);
}

void frmSearch::OnOk() {
    TheSearchCriteria() = CriteriaFromControls(Controls());
    Close(true);
}
