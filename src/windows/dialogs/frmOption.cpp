#include "windows/dialogs/frmOption.h"

// The tab control needs <windows.h> in front of it.
#include <commctrl.h>

#include "engine/process/ModHotKey.h"
#include "engine/process/modOption.h"
#include "platform/Guard.h"
#include "platform/RuntimeError.h"
#include "resources/controls.h"
#include "windows/controls/KeyFilter.h"
#include "windows/controls/Readers.h"
#include "windows/controls/Themes.h"
#include "windows/dialogs/frmFileSel.h"

namespace {

struct PageShape {
    const wchar_t* caption;
    int dialogTemplate;
    int firstControl;  // gets the focus when the page is chosen
};

constexpr std::array<PageShape, 5> kPages{{{L"Allgemein", IDD_frmOptionGeneral, chkTopWindow},
                                           {L"Clipboard", IDD_frmOptionClipboard, chkAutoSnap},
                                           {L"Formatsätze", IDD_frmOptionSets, OptFSet + 1},
                                           {L"Löschen", IDD_frmOptionDeleted, chkKeepDeleted},
                                           {L"Info", IDD_frmOptionInfo, tbInfo}}};

constexpr ReaderDescription kChooseSound{L"Sounddatei auswählen"};

// The one dialog that is open; it is modal.
frmOption* openForm = nullptr;

}  // namespace

bool frmOption::Page::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT& result) {
    if (message != WM_CTLCOLORSTATIC && message != WM_CTLCOLORDLG) return false;
    // The page stands on the tab's own background.
    SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
    result = 0;
    return false;
}

void frmOption::OnInit() {
    CreatePages();
    FilterTextBoxes();
    TellReaders(Control(cbFile), kChooseSound);
    ShowControls(ControlsFromOptions(Options()));
    // Inert, like the choice beside it: nothing reads or keeps them.
    SetText(tbPrefix, L"Clip");
    ShowPage(0, false);
    openForm = this;
    messageHook_ = SetWindowsHookExW(WH_MSGFILTER, &frmOption::LookAtMessage, nullptr, GetCurrentThreadId());
}

void frmOption::CreatePages() {
    const HWND tab = Dialog::Control(tabOptions);
    for (std::size_t i = 0; i < kPages.size(); ++i) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(kPages[i].caption);
        SendMessageW(tab, TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
    }
    RECT area;
    GetWindowRect(tab, &area);
    MapWindowPoints(HWND_DESKTOP, Window(), reinterpret_cast<POINT*>(&area), 2);
    SendMessageW(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    for (std::size_t i = 0; i < kPages.size(); ++i) {
        const HWND page = pages_[i].CreatePage(Window(), kPages[i].dialogTemplate);
        if (page == nullptr) throw RuntimeError(ErrorNumber::Internal);
        LookLikeTab(page);
        // Behind the tab in the order of the Tab key, above it on the screen.
        SetWindowPos(page, tab, area.left, area.top, area.right - area.left, area.bottom - area.top,
                     SWP_NOACTIVATE);
        SetWindowPos(tab, page, 0, 0, 0, 0, SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE);
    }
    NameByHiddenText(tab, L"Seite");
}

HWND frmOption::Control(int control) const {
    for (const Page& page : pages_)
        if (const HWND found = GetDlgItem(page.Window(), control); found != nullptr) return found;
    return Dialog::Control(control);
}

void frmOption::ShowPage(int page, bool focus) {
    TabCtrl_SetCurSel(Dialog::Control(tabOptions), page);
    for (int i = 0; i < static_cast<int>(pages_.size()); ++i)
        ShowWindow(pages_[static_cast<std::size_t>(i)].Window(), i == page ? SW_SHOW : SW_HIDE);
    if (focus) Focus(kPages[static_cast<std::size_t>(page)].firstControl);
}

LRESULT frmOption::OnNotify(NMHDR& header) {
    if (header.idFrom == tabOptions && header.code == TCN_SELCHANGE)
        ShowPage(TabCtrl_GetCurSel(header.hwndFrom), true);
    return 0;
}

bool frmOption::OnMessage(UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message == WM_DESTROY) {
        UnhookWindowsHookEx(messageHook_);
        openForm = nullptr;
        for (Page& page : pages_)
            DestroyWindow(page.Window());
    }
    return false;
}

LRESULT CALLBACK frmOption::LookAtMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto turnsPage = [&] { return openForm->TurnPage(*reinterpret_cast<const MSG*>(lParam)); };
    if (code == MSGF_DIALOGBOX && Guarded(false, turnsPage)) return TRUE;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool frmOption::TurnPage(const MSG& message) {
    if (message.message != WM_KEYDOWN || GetKeyState(VK_CONTROL) >= 0 || !IsChild(Window(), message.hwnd))
        return false;
    const bool back = message.wParam == VK_PRIOR || (message.wParam == VK_TAB && GetKeyState(VK_SHIFT) < 0);
    if (!back && message.wParam != VK_NEXT && message.wParam != VK_TAB) return false;
    const int count = static_cast<int>(kPages.size());
    ShowPage((TabCtrl_GetCurSel(Dialog::Control(tabOptions)) + (back ? count - 1 : 1)) % count, true);
    return true;
}

void frmOption::FilterTextBoxes() {
    FilterKeys(Control(tbClipLen), {[](wchar_t key, std::size_t) { return ClipLenKeyPasses(key); }, {}});
    for (const int box : {tbDeletedDays, tbMostClips})
        FilterKeys(Control(box), {[](wchar_t key, std::size_t) { return ClipLenKeyPasses(key); }, {}});
    FilterKeys(Control(tbTextLen), {&TextLenKeyPasses, {}});
    FilterKeys(Control(tbUnknownFormatSet),
               {[](wchar_t key, std::size_t) { return UnknownFormatSetKeyPasses(key); }, {}});
    FilterKeys(Control(tbKeyActivate), {[this](wchar_t key, std::size_t) {
                                            if (const auto text = KeyActivateAfterPress(key))
                                                SetText(tbKeyActivate, *text);
                                            return false;
                                        },
                                        [this] {
                                            const std::wstring text = Text(tbKeyActivate);
                                            const std::wstring kept =
                                                KeyActivateAfterRelease(text, Options().KeyActivate);
                                            if (kept != text) SetText(tbKeyActivate, kept);
                                        }});
}

void frmOption::ShowControls(const OptionControls& controls) {
    for (const auto& [box, marked] : controls.marks)
        Check(box, marked);
    for (const auto& [box, text] : controls.texts)
        SetText(box, text);
    for (int i = 1; i <= kFormatBoxes; ++i)
        Enable(chkSaveUnknown + i, controls.formatBoxesEnabled);
}

OptionControls frmOption::ReadControls() const {
    // The options in force say which controls there are.
    OptionControls controls = ControlsFromOptions(Options());
    for (auto& [box, marked] : controls.marks)
        marked = Checked(box);
    for (auto& [box, text] : controls.texts)
        text = Text(box);
    controls.formatBoxesEnabled = IsWindowEnabled(Control(chkSaveUnknown + 1)) != 0;
    return controls;
}

void frmOption::OnCommand(int control, int code) {
    if (code == EN_KILLFOCUS)
        LeaveTextBox(control);
    else if (control == tbKeyActivate && code == EN_CHANGE)
        SetText(lbKeyHint, HotKeyHint(Text(tbKeyActivate)));
    else if (control == cbFile)
        cbFile_Click();
    else if (control == kSaveAllBox && code == BN_CLICKED)
        chkSaveAll_Click();
    else
        Dialog::OnCommand(control, code);
}

void frmOption::LeaveTextBox(int textBox) {
    const std::wstring text = Text(textBox);
    const std::wstring kept = TextAfterLeave(textBox, text, Options());
    if (kept != text) SetText(textBox, kept);
}

void frmOption::chkSaveAll_Click() {
    OptionControls controls = ReadControls();
    SaveAllClicked(controls);
    ShowControls(controls);
}

void frmOption::cbFile_Click() {
    frmFileSel dialog(L"Sounddatei auswählen", {{L"*.wav", L"Sounds (*.wav)"}});
    if (dialog.ShowModal(Window(), IDD_frmFileSel) && !dialog.File().empty())
        SetText(tbSoundFile, dialog.File());
}

void frmOption::OnOk() {
    OptionControls controls = ReadControls();
    const bool confirmed = ConfirmOptions(controls, Options());
    ShowControls(controls);
    if (confirmed) Close(true);
}
