#include "windows/dialogs/frmFormatSets.h"

// The list control needs <windows.h> in front of it.
#include <commctrl.h>

#include "engine/clipboard/modClipboard.h"
#include "platform/SetWhile.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Dpi.h"
#include "windows/controls/ToolTips.h"
#include "windows/dialogs/frmChangeAlias.h"

namespace {

constexpr UINT kCheckedState = 2;
constexpr UINT kUncheckedState = 1;

}  // namespace

void frmFormatSets::OnInit() {
    const HWND formats = Control(lstFormat);
    ListView_SetExtendedListViewStyle(formats, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    LVCOLUMNW column{};
    SendMessageW(formats, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    ShowToolTips(Window(), {{Command1, L"Neuen Formatsatz aus Clipboardformat anlegen"},
                            {cbChange, L"Alias des Formatsatzes ändern"},
                            {cbDelete, L"Formatsatz löschen"}});
    FillAliases();
}

void frmFormatSets::OnResolution() {
    RECT area;
    GetClientRect(Control(lstFormat), &area);
    const int bar = SystemMetricForDpi(SM_CXVSCROLL, DpiOfWindow(Window()));
    ListView_SetColumnWidth(Control(lstFormat), 0, area.right - bar);
}

void frmFormatSets::OnCommand(int control, int code) {
    if (control == lstAlias && code == LBN_SELCHANGE)
        lstAlias_Click();
    else if (control == lstAlias && code == LBN_DBLCLK)
        cbChange_Click();
    else if (control == Command1)
        Command1_Click();
    else if (control == cbChange)
        cbChange_Click();
    else if (control == cbDelete)
        cbDelete_Click();
    else if (control == cbHilfe)
        OnHelp();
    else
        Dialog::OnCommand(control, code);
}

LRESULT frmFormatSets::OnNotify(NMHDR& header) {
    if (header.idFrom != lstFormat || header.code != LVN_ITEMCHANGED || filling_) return 0;
    const auto& change = reinterpret_cast<NMLISTVIEW&>(header);
    const UINT before = (change.uOldState & LVIS_STATEIMAGEMASK) >> 12;
    const UINT now = (change.uNewState & LVIS_STATEIMAGEMASK) >> 12;
    if (now != 0 && now != before)
        model_.SetEntrySave(static_cast<std::size_t>(change.iItem), now == kCheckedState);
    return 0;
}

void frmFormatSets::FillAliases() {
    const HWND list = Control(lstAlias);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& alias : model_.Aliases())
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(alias.c_str()));
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(model_.Selected() - 1), 0);
    FillFormats();
}

void frmFormatSets::FillFormats() {
    const SetWhile filling(filling_);
    const HWND list = Control(lstFormat);
    ListView_DeleteAllItems(list);
    int row = 0;
    for (const FormatSetEntry& entry : model_.Entries()) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = const_cast<wchar_t*>(entry.Name.c_str());
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        ListView_SetItemState(list, row, INDEXTOSTATEIMAGEMASK(entry.Save ? kCheckedState : kUncheckedState),
                              LVIS_STATEIMAGEMASK);
        ++row;
    }
    Enable(cbChange, model_.Selected() > 0);
    Enable(cbDelete, model_.Selected() > 0);
}

void frmFormatSets::lstAlias_Click() {
    model_.Select(static_cast<int>(SendMessageW(Control(lstAlias), LB_GETCURSEL, 0, 0)) + 1);
    FillFormats();
}

void frmFormatSets::Command1_Click() {
    std::shared_ptr<CFormats> formats;
    {
        const OpenClipboardScope clipboard(EngineWindow(Window()));
        if (clipboard.IsOpen()) formats = clipBoard_.GetClipboardFormats();
    }
    if (!model_.AddFromClipboard(formats.get())) return;
    FillAliases();
    cbChange_Click();
}

void frmFormatSets::cbChange_Click() {
    if (model_.Selected() == 0) return;
    frmChangeAlias dialog(model_.SelectedName());
    if (dialog.ShowModal(Window(), IDD_frmChangeAlias) && model_.Rename(dialog.NewName())) FillAliases();
}

void frmFormatSets::cbDelete_Click() {
    if (model_.Delete()) FillAliases();
}

void frmFormatSets::OnOk() {
    model_.Confirm();
    Close(true);
}
