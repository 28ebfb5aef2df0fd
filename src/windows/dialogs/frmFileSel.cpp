#include "windows/dialogs/frmFileSel.h"

#include "engine/process/modMain.h"
#include "engine/views/ChooserRules.h"
#include "platform/Platform.h"
#include "resources/controls.h"

void frmFileSel::OnInit() {
    if (!title_.empty()) SetWindowTextW(Window(), title_.c_str());
    const HWND filters = Control(cmb_filter);
    for (const CFilter& filter : filters_.NewEnum())
        SendMessageW(filters, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(filter.Description.c_str()));
    SendMessageW(filters, CB_SETCURSEL, 0, 0);
    directories_.Attach(Control(cmb_drive), Control(lstDir), [this] { FillFiles(); });
    directories_.GoTo(AppPath);
}

void frmFileSel::FillFiles() {
    SetText(tbDir, directories_.Directory());
    const auto chosen = static_cast<int>(SendMessageW(Control(cmb_filter), CB_GETCURSEL, 0, 0));
    const HWND list = Control(lstFile);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& name : directories_.Content().files)
        if (chosen < 0 || MatchesPattern(name, filters_.Item(chosen + 1).Pattern))
            SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    // The only one is meant.
    if (SendMessageW(list, LB_GETCOUNT, 0, 0) == 1) SendMessageW(list, LB_SETCURSEL, 0, 0);
}

std::wstring frmFileSel::SelectedFile() const {
    const HWND list = Control(lstFile);
    const auto row = static_cast<WPARAM>(SendMessageW(list, LB_GETCURSEL, 0, 0));
    const LRESULT length = SendMessageW(list, LB_GETTEXTLEN, row, 0);
    if (length == LB_ERR) return {};
    std::wstring name(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(list, LB_GETTEXT, row, reinterpret_cast<LPARAM>(name.data()));
    name.resize(static_cast<std::size_t>(length));
    return JoinDirectory(directories_.Directory(), name);
}

void frmFileSel::OnCommand(int control, int code) {
    if (control == cmb_drive && code == CBN_SELCHANGE)
        directories_.DriveChosen();
    else if (control == cmb_filter && code == CBN_SELCHANGE)
        FillFiles();
    else if (control == lstDir && code == LBN_DBLCLK)
        directories_.EntryActivated();
    else if (control == lstFile && code == LBN_DBLCLK)
        OnOk();
    else
        Dialog::OnCommand(control, code);
}

bool frmFileSel::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    return directories_.OnMessage(message, wParam, lParam, result);
}

// A directory is opened, a file chosen.
void frmFileSel::TypedPathConfirmed() {
    const std::wstring path = TypedPath(Text(tbDir));
    if (path.empty() || directories_.TryToGo(path)) return Focus(tbDir);
    if (ThePlatform().files.Exists(path)) return Choose(path);
    TellNoSuchPath(path);
    Focus(tbDir);
}

void frmFileSel::Choose(const std::wstring& file) {
    if (file.empty()) {
        ThePlatform().user.Inform(L"Wählen Sie bitte eine Datei aus.");
        return Focus(lstFile);
    }
    chosen_ = file;
    Close(true);
}

void frmFileSel::OnOk() {
    // Enter in the list of directories opens one; only with a file chosen it confirms.
    if (GetFocus() == Control(lstDir) && directories_.EntryActivated()) return;
    if (Text(tbDir) != directories_.Directory()) return TypedPathConfirmed();
    Choose(SelectedFile());
}
