#include "windows/dialogs/frmDirSelect.h"

#include "engine/process/modMain.h"
#include "engine/views/ChooserRules.h"
#include "platform/Paths.h"
#include "resources/controls.h"
#include "windows/dialogs/frmTextInput.h"

void frmDirSelect::OnInit() {
    if (!title_.empty()) SetWindowTextW(Window(), title_.c_str());
    directories_.Attach(Control(cmb_drive), Control(lstDir),
                        [this] { SetText(tbDir, directories_.Directory()); });
    directories_.GoTo(IsFullPath(start_) ? start_ : AppPath);
    PostMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(lstDir)), TRUE);
}

void frmDirSelect::OnCommand(int control, int code) {
    if (control == cmb_drive && code == CBN_SELCHANGE)
        directories_.DriveChosen();
    else if (control == lstDir && code == LBN_DBLCLK)
        directories_.EntryActivated();
    else if (control == cbNew && code == BN_CLICKED)
        cbNew_Click();
    else
        Dialog::OnCommand(control, code);
}

bool frmDirSelect::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    return directories_.OnMessage(message, wParam, lParam, result);
}

void frmDirSelect::cbNew_Click() {
    frmTextInput input;
    if (!input.ShowModal(Window(), IDD_frmTextInput) || input.Text().empty()) return;
    const std::wstring made = MakeDirectoryIn(directories_.Directory(), input.Text());
    if (!made.empty()) directories_.GoTo(made);
}

bool frmDirSelect::GoToTyped() {
    const std::wstring path = TypedPath(Text(tbDir));
    const bool there = !path.empty() && directories_.TryToGo(path);
    if (!path.empty() && !there) TellNoSuchPath(path);
    if (!there) Focus(tbDir);
    return there;
}

void frmDirSelect::OnOk() {
    // Enter in the list opens the highlighted directory; only on the open one it confirms.
    if (GetFocus() == Control(lstDir) && directories_.EntryActivated()) return;
    if (Text(tbDir) != directories_.Directory() && !GoToTyped()) return;
    chosen_ = directories_.Directory();
    Close(true);
}
