#include "windows/dialogs/frmDiagnose.h"

#include "engine/clipboard/Diagnosis.h"
#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/process/modMain.h"
#include "platform/Platform.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"

namespace {
constexpr const wchar_t* kNoViewer = L"<kein Viewer>";
}

void frmDiagnose::OnInit() {
    DiagnosticsOpen = true;
    cbRefresh_Click();
}

void frmDiagnose::OnClosed() {
    DiagnosticsOpen = false;
}

void frmDiagnose::OnCommand(int control, int code) {
    if (control == cbRefresh && code == BN_CLICKED)
        cbRefresh_Click();
    else
        Dialog::OnCommand(control, code);
}

void frmDiagnose::cbRefresh_Click() {
    ClipboardPort& clipboard = ThePlatform().clipboard;
    SetText(lbFirstViewer, DescribeWindow(clipboard.FirstViewer(), kNoViewer));
    SetText(lbOwnViewer, DescribeWindow(OwnViewer, kNoViewer));
    SetText(lbNextViewer, DescribeWindow(NextViewer, kNoViewer));
    SetText(lbHookedWindow, DescribeWindow(HookedWindow, L"<unhooked>"));
    SetText(lbOriginalProc, DescribeAddress(OriginalWndProc));
    SetText(lbOwner, DescribeWindow(clipboard.Owner(), L"<unbekannt>"));
    const std::optional<FileTime> update = lastUpdate_();
    SetText(lbLastUpdate, update ? ThePlatform().clock.DateText(*update) : L"-");
    FillFormats();
}

void frmDiagnose::FillFormats() {
    const OpenClipboardScope open(EngineWindow(Window()));
    if (!open.IsOpen()) return;
    const HWND list = Control(lstClipboard);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const CFormat& format : *clipBoard_.GetClipboardFormats())
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(DescribeFormat(format).c_str()));
}
