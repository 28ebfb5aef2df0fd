#include "windows/dialogs/frmMissingProfile.h"

#include "resources/controls.h"
#include "windows/dialogs/frmDirSelect.h"

void frmMissingProfile::OnInit() {
    SetText(lbMissing, L"Profil \"" + name_ + L"\" konnte nicht geladen werden. Das Verzeichnis");
    SetText(tbDir, directory_);
}

void frmMissingProfile::OnCommand(int control, int code) {
    if (control == cbWhere && code == BN_CLICKED) {
        cbWhere_Click();
    } else if (control == cbTakeOut && code == BN_CLICKED) {
        answer_.choice = MissingProfileAnswer::Choice::TakeOut;
        Close(true);
    } else {
        Dialog::OnCommand(control, code);
    }
}

void frmMissingProfile::cbWhere_Click() {
    frmDirSelect dialog(L"Wo liegt es jetzt?", directory_);
    if (!dialog.ShowModal(Window(), IDD_frmDirSelect) || dialog.Directory().empty()) return;
    answer_ = {MissingProfileAnswer::Choice::Moved, dialog.Directory()};
    Close(true);
}
