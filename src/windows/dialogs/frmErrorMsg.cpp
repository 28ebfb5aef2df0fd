#include "windows/dialogs/frmErrorMsg.h"

#include "engine/clipboard/Diagnosis.h"
#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/process/modMain.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"

namespace {
// Older lines go when there are more.
constexpr LRESULT kMostLines = 2000;
}  // namespace

void frmErrorMsg::OnInit() {
    RequestTrace = true;
    RequestTraceSink = [this](const std::wstring& line) { AddLine(line); };
    cbRefresh_Click();
}

void frmErrorMsg::OnClosed() {
    RequestTrace = false;
    RequestTraceSink = {};
}

void frmErrorMsg::OnCommand(int control, int code) {
    if (control == cbRefresh && code == BN_CLICKED)
        cbRefresh_Click();
    else
        Dialog::OnCommand(control, code);
}

void frmErrorMsg::cbRefresh_Click() {
    SendMessageW(Control(lstMessages), LB_RESETCONTENT, 0, 0);
    const OpenClipboardScope open(EngineWindow(Window()));
    if (!open.IsOpen()) return;
    for (const CFormat& format : *clipBoard_.GetClipboardFormats())
        AddLine(DescribeFormat(format));
}

void frmErrorMsg::AddLine(const std::wstring& line) {
    const HWND list = Control(lstMessages);
    const LRESULT added = SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    if (added >= kMostLines) SendMessageW(list, LB_DELETESTRING, 0, 0);
    // Whoever stands on a line reads it.
    if (SendMessageW(list, LB_GETCURSEL, 0, 0) != LB_ERR) return;
    SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(SendMessageW(list, LB_GETCOUNT, 0, 0) - 1), 0);
}
