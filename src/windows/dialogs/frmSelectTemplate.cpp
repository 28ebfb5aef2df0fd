#include "windows/dialogs/frmSelectTemplate.h"

#include <utility>

#include "engine/flows/Templates.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"

void frmSelectTemplate::OnInit() {
    tvTreeView_.Attach(Control(tvTreeView));
    files_ = TemplateFiles();
    for (const std::wstring& file : files_)
        SendMessageW(Control(lstTemplate), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(file.c_str()));
    SendMessageW(Control(lstTemplate), LB_SETCURSEL, 0, 0);
    lstTemplate_Click();
}

void frmSelectTemplate::OnResolution() {
    UniqueImageList pictures = LoadListPictures(SystemMetricForDpi(SM_CXSMICON, DpiOfWindow(Window())));
    TreeView_SetImageList(tvTreeView_.Window(), pictures.Get(), TVSIL_NORMAL);
    pictures_ = std::move(pictures);
}

std::wstring frmSelectTemplate::Selected() const {
    const auto row = static_cast<std::size_t>(SendMessageW(Control(lstTemplate), LB_GETCURSEL, 0, 0));
    return row < files_.size() ? TemplateDirectory() + files_[row] : std::wstring();
}

void frmSelectTemplate::lstTemplate_Click() {
    const std::wstring file = Selected();
    Enable(cb_ok, !file.empty());
    if (file.empty()) return;
    preview_ = LoadTemplatePreview(tree_, file);
    SetText(lbName, preview_.name);
    SetText(lbInfo, preview_.info);
}

void frmSelectTemplate::OnCommand(int control, int code) {
    if (control == lstTemplate && code == LBN_SELCHANGE)
        lstTemplate_Click();
    else if (control == lstTemplate && code == LBN_DBLCLK)
        OnOk();
    else
        Dialog::OnCommand(control, code);
}

LRESULT frmSelectTemplate::OnNotify(NMHDR& header) {
    return header.idFrom == tvTreeView ? tvTreeView_.OnNotify(header) : 0;
}

bool frmSelectTemplate::OnMessage(UINT message, WPARAM, LPARAM, LRESULT&) {
    // The control tells of the end of its items while the nodes still live.
    if (message == WM_DESTROY) {
        nodes_.Clear();
        tvTreeView_.Detach();
    }
    return false;
}

void frmSelectTemplate::OnOk() {
    chosen_ = Selected();
    if (!chosen_.empty()) Close(true);
}
