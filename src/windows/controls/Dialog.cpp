#include "windows/controls/Dialog.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/Busy.h"
#include "platform/Guard.h"
#include "platform/Platform.h"
#include "platform/win32/ModalWindows.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/DialogTemplate.h"
#include "windows/controls/TextBoxes.h"

namespace {

// Posted by a dialog to itself: its controls have their places and fonts for another resolution.
constexpr UINT kScaledMessage = WM_APP;

std::vector<HWND>& ModelessWindows() {
    static std::vector<HWND> windows;
    return windows;
}

// Over its owner, as wide as it is, and wholly on the owner's monitor.
void CentreOver(HWND window, HWND owner) {
    RECT own;
    RECT around;
    GetWindowRect(window, &own);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(owner != nullptr ? owner : window, MONITOR_DEFAULTTONEAREST), &monitor);
    if (owner == nullptr || IsIconic(owner) || !IsWindowVisible(owner))
        around = monitor.rcWork;
    else
        GetWindowRect(owner, &around);

    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const LONG left = (around.left + around.right - width) / 2;
    const LONG top = (around.top + around.bottom - height) / 2;
    const RECT& work = monitor.rcWork;
    SetWindowPos(window, nullptr, std::max(work.left, std::min(left, work.right - width)),
                 std::max(work.top, std::min(top, work.bottom - height)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// For a few messages the system takes the procedure's own result; for all others what was set for the window.
bool IsAnsweredDirectly(UINT message) {
    return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) || message == WM_VKEYTOITEM ||
           message == WM_CHARTOITEM || message == WM_COMPAREITEM || message == WM_QUERYDRAGICON;
}

bool ForegroundIsOurs() {
    DWORD process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &process);
    return process == GetCurrentProcessId();
}

}  // namespace

bool Dialog::ShowModal(HWND owner, int dialogTemplate) {
    const BusyScope open(Busy::Dialog);
    kind_ = Kind::Modal;
    const std::vector<std::byte> bytes = DialogTemplateInSystemFont(dialogTemplate, owner);
    const INT_PTR result =
        bytes.empty() ? -1
                      : DialogBoxIndirectParamW(GetModuleHandleW(nullptr),
                                                reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), owner,
                                                &Dialog::Procedure, reinterpret_cast<LPARAM>(this));
    if (result == -1) ThePlatform().user.Tell(L"Das Dialogfenster konnte nicht geöffnet werden !!!");
    return result == IDOK;
}

bool Dialog::ShowUnasked(HWND owner, int dialogTemplate) {
    if (ForegroundIsOurs()) return ShowModal(owner, dialogTemplate);
    const BusyScope open(Busy::Dialog);
    kind_ = Kind::Unasked;
    if (CreateBeside(owner, dialogTemplate) == nullptr) {
        ThePlatform().user.Tell(L"Das Dialogfenster konnte nicht geöffnet werden !!!");
        return false;
    }
    EnableWindow(owner, FALSE);
    ComeUp();
    RunUntilClosed();
    return confirmed_;
}

void Dialog::ComeUp() const {
    SetWindowPos(window_, HWND_TOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    FLASHWINFO flash{};
    flash.cbSize = sizeof flash;
    flash.hwnd = window_;
    flash.dwFlags = FLASHW_ALL | FLASHW_TIMERNOFG;
    FlashWindowEx(&flash);
    // Without a sound, somebody who does not look at the screen would not know of it.
    MessageBeep(MB_OK);
}

// The system's own loop for modal dialogs would activate the window.
void Dialog::RunUntilClosed() {
    MSG message;
    while (window_ != nullptr) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            // The program ends; its own loop is to see that, too.
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (window_ != nullptr && IsDialogMessageW(window_, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

HWND Dialog::ShowModeless(HWND owner, int dialogTemplate) {
    kind_ = Kind::Modeless;
    const HWND window = CreateBeside(owner, dialogTemplate);
    if (window != nullptr) {
        MarkAsModeless(window);
        ModelessWindows().push_back(window);
        ShowWindow(window, SW_SHOW);
    }
    return window;
}

HWND Dialog::ShowNotice(HWND owner, int dialogTemplate) {
    kind_ = Kind::Notice;
    const HWND window = CreateBeside(owner, dialogTemplate);
    if (window != nullptr) {
        MarkAsModeless(window);
        ModelessWindows().push_back(window);
        ComeUp();
    }
    return window;
}

HWND Dialog::CreatePage(HWND parent, int dialogTemplate) {
    kind_ = Kind::Page;
    return CreateBeside(parent, dialogTemplate);
}

HWND Dialog::CreateBeside(HWND owner, int dialogTemplate) {
    const std::vector<std::byte> bytes = DialogTemplateInSystemFont(dialogTemplate, owner);
    if (bytes.empty()) return nullptr;
    const HWND made = CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                                 reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), owner,
                                                 &Dialog::Procedure, reinterpret_cast<LPARAM>(this));
    // OnInit may have closed the window.
    return IsWindow(made) ? made : nullptr;
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<Dialog*>(lParam)->window_ = window;
    }
    auto* const dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (dialog == nullptr) return FALSE;
    const auto result = Guarded<std::optional<INT_PTR>>(
        std::nullopt, [&] { return dialog->Handle(message, wParam, lParam); });
    if (!result && message == WM_INITDIALOG) dialog->GiveUp();
    return result.value_or(FALSE);
}

// Half filled, it would give back what nobody has entered.
void Dialog::GiveUp() {
    if (kind_ == Kind::Modal)
        EndDialog(window_, IDCANCEL);
    else
        DestroyWindow(window_);
}

// Another dialog or a box is open over this one, and the code that opened it goes on with this one.
bool Dialog::IsCovered() const {
    return !IsWindowEnabled(GetAncestor(window_, GA_ROOT));
}

INT_PTR Dialog::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = window_;
    LRESULT result = 0;
    if (OnMessage(message, wParam, lParam, result)) {
        if (IsAnsweredDirectly(message)) return result;
        SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
        return TRUE;
    }
    switch (message) {
        case WM_INITDIALOG:
            if (kind_ != Kind::Page) CentreOver(window, GetWindow(window, GW_OWNER));
            CentreTextInBoxes(window);
            OnInit();
            OnResolution();
            // The dialog manager would give the focus to a control, and the window would be activated.
            return !LeavesTheKeyboard();
        case WM_COMMAND:
            if (HIWORD(wParam) != BN_CLICKED || !IsCovered()) OnCommand(LOWORD(wParam), HIWORD(wParam));
            return TRUE;
        case WM_NOTIFY:
            SetWindowLongPtrW(window, DWLP_MSGRESULT, OnNotify(*reinterpret_cast<NMHDR*>(lParam)));
            return TRUE;
        case WM_ENABLE:
            // A box over this one that ended below its own menu would stay, unseen, until that ends.
            if (wParam) EndMenuLoop();
            return FALSE;
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
            ForwardToChildren(window, message, wParam, lParam);
            return FALSE;
        case WM_THEMECHANGED:
            // The boxes may have other borders.
            CentreTextInBoxes(window);
            InvalidateRect(window, nullptr, TRUE);
            return FALSE;
        case WM_DPICHANGED:
            // The system places the controls when it gets the message back.
            PostMessageW(window, kScaledMessage, 0, 0);
            return FALSE;
        case kScaledMessage:
            CentreTextInBoxes(window);
            OnResolution();
            return TRUE;
        case WM_HELP:
            OnHelp();
            return TRUE;
        case WM_CLOSE:
            if (!IsCovered()) OnCancel();
            return TRUE;
        case WM_NCDESTROY:
            std::erase(ModelessWindows(), window);
            window_ = nullptr;
            OnClosed();
            return FALSE;
        default:
            return FALSE;
    }
}

void Dialog::OnCommand(int control, int code) {
    if (code != BN_CLICKED) return;
    switch (control) {
        case cb_ok:
            if (IsWindowEnabled(Control(cb_ok))) OnOk();
            break;
        case cb_cancel:
            OnCancel();
            break;
        case cb_help:
            OnHelp();
            break;
        default:
            break;
    }
}

LRESULT Dialog::OnNotify(NMHDR&) {
    return 0;
}

bool Dialog::OnMessage(UINT, WPARAM, LPARAM, LRESULT&) {
    return false;
}

void Dialog::OnHelp() {
    ShowHelp(EngineWindow(window_), Topic());
}

void Dialog::Close(bool confirmed) {
    EndMenuLoop();
    if (kind_ == Kind::Modal) {
        EndDialog(window_, confirmed ? IDOK : IDCANCEL);
        return;
    }
    confirmed_ = confirmed;
    const HWND owner = GetWindow(window_, GW_OWNER);
    // The owner is enabled before the window goes: the system brings forward an owner that can take it.
    if (kind_ == Kind::Unasked) EnableWindow(owner, TRUE);
    DestroyWindow(window_);
    // A dialog closed by a message that was sent leaves its loop waiting for one that is posted.
    if (kind_ == Kind::Unasked) PostMessageW(owner, WM_NULL, 0, 0);
}

std::wstring Dialog::Text(int control) const {
    return WindowText(Control(control));
}

void Dialog::SetText(int control, const std::wstring& text) {
    SetWindowTextW(Control(control), text.c_str());
}

bool Dialog::Checked(int control) const {
    return SendMessageW(Control(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void Dialog::Check(int control, bool checked) {
    SendMessageW(Control(control), BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

void Dialog::Enable(int control, bool enabled) {
    const HWND window = Control(control);
    // A disabled control must not keep the focus: the keyboard would be lost.
    if (!enabled && GetFocus() == window) SendMessageW(window_, WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(window, enabled);
}

void Dialog::Show(int control, bool shown) {
    ShowWindow(Control(control), shown ? SW_SHOW : SW_HIDE);
}

void Dialog::Focus(int control) {
    SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(control)), TRUE);
}

void ForwardToChildren(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) {
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        SendMessageW(child, message, wParam, lParam);
}

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

bool TranslateModelessMessage(MSG& message) {
    const std::vector<HWND> windows = ModelessWindows();
    return std::any_of(windows.begin(), windows.end(),
                       [&](HWND window) { return IsDialogMessageW(window, &message); });
}
