#include "windows/main/frmMain.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "engine/process/TreeOperation.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/views/MainLayout.h"
#include "platform/Guard.h"
#include "platform/Platform.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Boxes.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Dpi.h"

namespace {

constexpr const wchar_t* kWindowClass = L"NXClipMain";
constexpr double kSplitterWidthTwips = 75;

}  // namespace

frmMain::frmMain(Win32User& user) : user_(user) {
    cTV.Bind(&nodes_);
    tvTreeView_.SetListener(this);
    container_.SetListener([this] { ShowContainer(); });
}

frmMain::~frmMain() {
    tvTreeView_.Detach();
}

bool frmMain::Load() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW shape{};
    shape.cbSize = sizeof shape;
    shape.lpfnWndProc = &frmMain::Procedure;
    shape.hInstance = instance;
    shape.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    shape.hIcon = LoadProgramIcon(GetSystemMetrics(SM_CXICON)).Release();  // the class keeps it to its end
    shape.hIconSm = LoadProgramIcon(GetSystemMetrics(SM_CXSMICON)).Release();
    shape.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    shape.lpszMenuName = MAKEINTRESOURCEW(IDM_frmMain);
    shape.lpszClassName = kWindowClass;
    RegisterClassExW(&shape);

    // The title comes with the load: a second instance must not find a window that is not ready.
    CreateWindowExW(WS_EX_CONTROLPARENT, kWindowClass, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                    CW_USEDEFAULT, 0, CW_USEDEFAULT, 0, nullptr, nullptr, instance, this);
    if (window_ == nullptr) return false;
    user_.SetMainWindow(EngineWindow(window_));
    user_.SetStatusLine([this](const std::wstring& text) { ShowStatus(text); });
    keys_ = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDA_frmMain));
    LoadMainWindow(*this);
    loaded_ = true;
    UpdateListview();
    return true;
}

LRESULT CALLBACK frmMain::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* const form = static_cast<frmMain*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(form));
        form->window_ = window;
    }
    auto* const form = reinterpret_cast<frmMain*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (form == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    return Guarded<LRESULT>(0, [&] { return form->Handle(message, wParam, lParam); });
}

LRESULT frmMain::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return CreateControls() ? 0 : -1;
        case WM_SIZE:
            Form_Resize(wParam);
            return 0;
        case WM_GETMINMAXINFO: {
            auto& limits = *reinterpret_cast<MINMAXINFO*>(lParam);
            limits.ptMinTrackSize = {PixelsFromTwips(kMinimumWidthTwips, dpi_),
                                     PixelsFromTwips(kMinimumHeightTwips, dpi_)};
            return 0;
        }
        case WM_DPICHANGED: {
            ApplyDpi(HIWORD(wParam));
            PlaceWindow(window_, BoxOf(*reinterpret_cast<RECT*>(lParam)));
            return 0;
        }
        case WM_SETCURSOR:
            if (user_.Pointer() != PointerShape::Hourglass) break;
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        case WM_SETFOCUS:
            SetFocus(tvTreeView_.Window());
            return 0;
        case WM_COMMAND:
            RunCommand(LOWORD(wParam));
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
        case WM_CONTEXTMENU:
            ShowContextMenu(reinterpret_cast<HWND>(wParam),
                            {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
            return 0;
        case WM_ENTERMENULOOP:
            ++menusOpen_;
            return 0;
        case WM_EXITMENULOOP:
            --menusOpen_;
            return 0;
        case WM_TIMER:
            // Nodes may be exchanged only where nobody works on one: in the loop.
            if (wParam == kTakeOverTimer) takeOverDue_ = true;
            break;
        case WM_INITMENUPOPUP:
            RefreshCommands();
            return 0;
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:
            if (wParam) DestroyWindow(window_);
            return 0;
        case WM_CLOSE:
            DestroyWindow(window_);
            return 0;
        case WM_DESTROY:
            if (std::exchange(loaded_, false)) UnloadMainWindow(*this);
            user_.SetStatusLine({});
            user_.SetMainWindow(WindowHandle::None);
            cSysTray1.SetInTray(false);
            StopDropping(tvTreeView_);
            tvTreeView_.Detach();
            PostQuitMessage(0);
            return 0;
        default:
            if (message == taskBarCreated_ && taskBarCreated_ != 0) cSysTray1.TaskBarCreated();
            break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

bool frmMain::CreateControls() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    if (!tbToolBar_.Create(window_, tbToolBar) || !tvTreeView_.Create(window_, tvTreeView) ||
        !lvListView_.Create(window_, lvListView) || !preview_.Create(window_))
        return false;
    sbStatusBar_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0,
                                   0, window_, reinterpret_cast<HMENU>(sbStatusBar), instance, nullptr);
    lblTitle_ = CreateWindowExW(0, L"STATIC", L"",
                                WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE, 0,
                                0, 0, 0, window_, reinterpret_cast<HMENU>(lblTitle), instance, nullptr);
    const bool splitter = imgSplitter_.Create(
        window_, imgSplitter, picSplitter,
        [this](int left) {
            RECT client;
            GetClientRect(window_, &client);
            return PixelsFromTwips(
                ClampSplitter(TwipsFromPixels(left, dpi_), TwipsFromPixels(client.right, dpi_)), dpi_);
        },
        [this](int left) { SizeControls(TwipsFromPixels(left, dpi_)); });
    if (sbStatusBar_ == nullptr || lblTitle_ == nullptr || !splitter) return false;
    ApplyDpi(DpiOfWindow(window_));
    ShowWindow(tbToolBar_.Window(), SW_SHOW);
    // Without it the tree works all the same, only not by dragging.
    AcceptDrops(tvTreeView_, *this);
    return CreateTray();
}

bool frmMain::CreateTray() {
    constexpr std::int16_t kLeft = 1;
    constexpr std::int16_t kRight = 2;
    cSysTray::Events events;
    events.MouseDblClick = [this](std::int16_t button, std::int32_t) {
        if (button == kLeft) Restore();
    };
    events.MouseUp = [this](std::int16_t button, std::int32_t) {
        if (button == kRight) ShowTrayMenu();
    };
    if (!cSysTray1.Create(window_, std::move(events))) return false;
    trayIcon_ = LoadTrayIcon(GetSystemMetrics(SM_CXSMICON));
    cSysTray1.SetTrayIcon(trayIcon_.Get());
    taskBarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");
    return true;
}

void frmMain::ShowTrayMenu() {
    POINT point;
    GetCursorPos(&point);
    // Without the foreground the menu would not go away by a click beside it.
    SetForegroundWindow(window_);
    TrackMenu(IDM_tray, point);
    PostMessageW(window_, WM_NULL, 0, 0);
}

void frmMain::ApplyDpi(UINT dpi) {
    dpi_ = dpi;
    UniqueFont font = CreateMessageFont(dpi);
    UniqueFont titleFont = CreateMessageFont(dpi, FW_BOLD);
    for (const HWND control : {tvTreeView_.Window(), lvListView_.Window(), sbStatusBar_})
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    SendMessageW(lblTitle_, WM_SETFONT, reinterpret_cast<WPARAM>(titleFont.get()), TRUE);
    preview_.SetFont(font.get());
    font_ = std::move(font);
    titleFont_ = std::move(titleFont);

    UniqueImageList pictures = LoadListPictures(SystemMetricForDpi(SM_CXSMICON, dpi));
    TreeView_SetImageList(tvTreeView_.Window(), pictures.get(), TVSIL_NORMAL);
    treePictures_ = std::move(pictures);
    tbToolBar_.SetDpi(dpi);
    lvListView_.SetDpi(dpi);
}

void frmMain::Form_Resize(WPARAM kind) {
    if (kind == SIZE_MINIMIZED) {
        if (Options().ShowInTray) ShowWindow(window_, SW_HIDE);
        return;
    }
    SizeControls(splitterLeft_);
}

void frmMain::SizeControls(double splitterLeft) {
    splitterLeft_ = splitterLeft;
    RECT client;
    GetClientRect(window_, &client);
    LayoutInput input;
    input.width = client.right;
    input.height = client.bottom;
    input.toolBarHeight = toolBarShown_ ? tbToolBar_.Fit() : 0;
    if (statusBarShown_) {
        SendMessageW(sbStatusBar_, WM_SIZE, 0, 0);
        RECT bar;
        GetWindowRect(sbStatusBar_, &bar);
        input.statusBarHeight = bar.bottom - bar.top;
    }
    LOGFONTW font{};
    GetObjectW(titleFont_.get(), sizeof font, &font);
    input.titleHeight = std::abs(font.lfHeight) + Scaled(9, dpi_);
    input.splitterLeft = PixelsFromTwips(splitterLeft, dpi_);
    input.splitterWidth = PixelsFromTwips(kSplitterWidthTwips, dpi_);
    input.previewShown = previewShown_;

    const LayoutResult layout = LayOutMainWindow(input);
    PlaceWindow(tvTreeView_.Window(), layout.tree);
    PlaceWindow(imgSplitter_.Window(), layout.splitter);
    PlaceWindow(lblTitle_, layout.title);
    PlaceWindow(lvListView_.Window(), layout.list);
    preview_.Place(layout.formatTab);
}

LRESULT frmMain::OnNotify(NMHDR& header) {
    if (header.hwndFrom == tvTreeView_.Window()) {
        if (header.code == NM_RCLICK) return 0;  // the context menu comes by its own message
        return tvTreeView_.OnNotify(header);
    }
    if (header.hwndFrom == lvListView_.Window()) {
        if (header.code == LVN_ODFINDITEMW) {
            const auto& find = reinterpret_cast<NMLVFINDITEMW&>(header);
            if ((find.lvfi.flags & LVFI_STRING) == 0) return -1;
            return lvListView_.RowBeginningWith(find.lvfi.psz, std::max(find.iStart, 0));
        }
        if (header.code == LVN_GETDISPINFOW)
            lvListView_.OnGetDisplayInfo(reinterpret_cast<NMLVDISPINFOW&>(header));
        if (header.code == NM_DBLCLK || header.code == NM_RETURN) {
            const int row = lvListView_.FocusedRow();
            if (row >= 0) OpenListRow(row);
        }
        return 0;
    }
    if (preview_.IsTab(header.hwndFrom) && header.code == TCN_SELCHANGE) preview_.TabChanged();
    if (header.code == TTN_GETDISPINFOW) tbToolBar_.OnGetToolTip(reinterpret_cast<NMTTDISPINFOW&>(header));
    return 0;
}

bool frmMain::TranslateKey(MSG& message) {
    if (message.hwnd != window_ && !IsChild(window_, message.hwnd)) return false;
    // While a name is edited in place the keys belong to the edit.
    if (TreeView_GetEditControl(tvTreeView_.Window()) != nullptr) return false;
    if (preview_.Wants(message)) return false;
    if (message.message == WM_KEYDOWN && message.wParam == VK_TAB) {
        const bool back = GetKeyState(VK_SHIFT) < 0;
        SetFocus(GetNextDlgTabItem(window_, GetFocus(), back));
        return true;
    }
    return TranslateAcceleratorW(window_, keys_, &message) != 0;
}

// What the tree and the flows ask for.

void frmMain::SetActiveContainer(Node* node) {
    container_.SetActiveContainer(node);
}

void frmMain::ShowContainer() {
    SetWindowTextW(lblTitle_, container_.Title().c_str());
    RefreshCommands();
}

void frmMain::GreyMenu(HMENU menu) {
    const CommandState can = CommandsFor(nodes_.Selected(), container_.Get(), Options().LockEdit);
    const auto enable = [&](bool enabled, std::initializer_list<int> entries) {
        for (const int entry : entries)
            EnableMenuItem(menu, static_cast<UINT>(entry), MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
    };
    enable(can.snap, {m_edit_insert, m_tray_snap});
    enable(can.toClipboard, {m_copyToClipboard, m_to_clipboard});
    enable(can.remove, {m_edit_delete, m_del_profile, m_structDelete, m_delnode});
    enable(can.rename, {m_edit_rename});
    enable(can.properties, {mnuFileProperties, m_pp_prop, m_ps_prop, m_clip_prop});
    enable(can.newFolder, {m_edit_newstruct, m_pop_newstruct, m_substruct_insert, m_pp_substruct_insert});
    enable(can.newProfile, {mnuFileNew, m_pNN_NewProfil, m_PPNewProfil});
    enable(can.importProfile, {m_importProfil, m_pNN_insert_profile, m_PP_ImportProfil});
    enable(can.unlinkProfile, {m_PP_UnlinkProfil});
    enable(can.activate, {m_activate, m_profile_active, m_struct_active});
}

void frmMain::RefreshCommands() {
    const CommandState can = CommandsFor(nodes_.Selected(), container_.Get(), Options().LockEdit);
    const HMENU menu = GetMenu(window_);
    const auto check = [&](bool checked, int entry) {
        CheckMenuItem(menu, static_cast<UINT>(entry), MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
    };
    GreyMenu(menu);
    check(toolBarShown_, mnuViewToolbar);
    check(statusBarShown_, mnuViewStatusBar);
    check(previewShown_, mnuListViewPreview);
    check(stretched_, m_stretchmode);
    const int mode = static_cast<int>(lvListView_.Mode());
    CheckMenuRadioItem(menu, mnuListViewLarge, mnuListViewDetails, static_cast<UINT>(mnuListViewLarge + mode),
                       MF_BYCOMMAND);

    tbToolBar_.Enable(tbbSnap, can.snap);
    tbToolBar_.Enable(tbbCopy, can.toClipboard);
    tbToolBar_.Enable(tbbDelete, can.remove);
    tbToolBar_.Enable(tbbProperties, can.properties);
    tbToolBar_.Enable(tbbProfil, can.newProfile);
    tbToolBar_.Enable(tbbImport, can.newProfile);
    tbToolBar_.Press(tbbViewLarge + mode, true);
    tbToolBar_.Press(tbbViewPreview, previewShown_);
}

void frmMain::SetOptions() {
    tbToolBar_.Press(tbbAutoDetect, Options().AutoSnap);
    tbToolBar_.Press(tbbLock, Options().LockEdit);
    tbToolBar_.ShowToolTips(Options().ShowTooltips);
    SetTopless(EngineWindow(window_), Options().TopWindow);
    cSysTray1.SetInTray(Options().ShowInTray);
    // Without its icon in the notification area a hidden window could not be reached any more.
    if (loaded_ && !Options().ShowInTray && !IsWindowVisible(window_)) ShowWindow(window_, SW_SHOWMINIMIZED);
    RefreshCommands();
}

void frmMain::ShowStatus(const std::wstring& text) {
    SendMessageW(sbStatusBar_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
    // Long work shows its progress here without a message loop of its own.
    UpdateWindow(sbStatusBar_);
}

void frmMain::Show() {
    ShowWindow(window_, showCommand_);
    UpdateWindow(window_);
}

void frmMain::Restore() {
    ShowWindow(window_, SW_SHOW);
    if (IsIconic(window_)) ShowWindow(window_, SW_RESTORE);
    SetForegroundWindow(window_);
}

void frmMain::Minimise() {
    ShowWindow(window_, SW_MINIMIZE);
}

bool frmMain::MayOpenDialog() {
    return !ModalDialogOpen && !TreeOperationUnderWay() && menusOpen_ == 0 && IsWindowEnabled(window_);
}

void frmMain::BringToFront() {
    Restore();
}

WindowHandle frmMain::Window() {
    return EngineWindow(window_);
}

bool frmMain::LockPressed() {
    return tbToolBar_.Pressed(tbbLock);
}

void frmMain::ScrollIntoView(Node& node) {
    tvTreeView_.EnsureVisible(node);
}

void frmMain::SelectAndShow(Node& node) {
    if (nodes_.Selected() == &node)
        UpdateListview();
    else
        nodes_.Select(&node);
}

void frmMain::SetProfileChanged(Node& node) {
    ::SetProfileChanged(&node);
}

bool frmMain::SaveAllProfiles() {
    return ::SaveAllProfiles(cTV);
}
