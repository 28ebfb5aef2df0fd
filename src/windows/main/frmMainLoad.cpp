// The steps in which the main window loads and unloads; their order: MainWindowOrder.h.

#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFormatDesc.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/ModHotKey.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileAttachment.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/views/MainLayout.h"
#include "engine/views/StoredWindow.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Boxes.h"
#include "windows/controls/Dialog.h"
#include "windows/controls/Dpi.h"
#include "windows/main/frmMain.h"

namespace {

LRESULT CALLBACK HookThunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ClipboardWndProc(EngineWindow(window), message, static_cast<MessageParameter>(wParam), lParam);
}

}  // namespace

void frmMain::AddHotKey() {
    RegisterActivationHotKey(EngineWindow(window_));
}

void frmMain::JoinViewerChain() {
    TheMainWindowHooks.procedure =
        static_cast<ProcedureAddress>(reinterpret_cast<std::uintptr_t>(&HookThunk));
    TheMainWindowHooks.updateClipBoard = [this] { UpdateClipBoard(); };
    TheMainWindowHooks.hotKeyAction = [this](WindowHandle) { Restore(); };
    ConnectViewer(EngineWindow(window_));
}

void frmMain::ClearPreview() {
    preview_.Clear();
}

void frmMain::HideMenus() {
    // The context menus are loaded apart from the menu bar, so only the test menu is left to hide.
    if (!DebugMode) DeleteMenu(GetMenu(window_), m_test, MF_BYPOSITION);
}

void frmMain::RestoreGeometry() {
    const MainState state = ReadMainState();
    if (state == MainState::Normal) {
        const StoredPlace place = ReadMainPlace();
        RECT wanted;
        wanted.left = PixelsFromTwips(place.left, dpi_);
        wanted.top = PixelsFromTwips(place.top, dpi_);
        wanted.right = wanted.left + PixelsFromTwips(place.width, dpi_);
        wanted.bottom = wanted.top + PixelsFromTwips(place.height, dpi_);
        MONITORINFO monitor{};
        monitor.cbSize = sizeof monitor;
        GetMonitorInfoW(MonitorFromRect(&wanted, MONITOR_DEFAULTTONEAREST), &monitor);
        PlaceWindow(window_, BroughtIntoView(BoxOf(wanted), BoxOf(monitor.rcWork)));
    }
    showCommand_ = state == MainState::Maximised   ? SW_SHOWMAXIMIZED
                   : state == MainState::Minimised ? SW_SHOWMINIMIZED
                                                   : SW_SHOWNORMAL;
    splitterLeft_ = ReadSplitter(splitterLeft_);
    if (state != MainState::Minimised) SizeControls(splitterLeft_);
}

void frmMain::ShowCaption() {
    SetWindowTextW(window_, AppName);
}

void frmMain::LoadFormatTables() {
    FillFormatDescriptions();
    LoadFormatSets();
}

void frmMain::LoadProfiles() {
    nodes_.Clear();
    LoadListedProfiles(cTV);
}

void frmMain::RestoreActiveContainer() {
    container_.Restore();
}

void frmMain::MinimiseIfWanted() {
    if (Options().StartAsIcon) showCommand_ = SW_SHOWMINIMIZED;
}

void frmMain::ShowTrayIconIfWanted() {
    cSysTray1.SetInTray(Options().ShowInTray);
}

void frmMain::CloseFormatQuery() {
    if (formatQuery_.Window() != nullptr) DestroyWindow(formatQuery_.Window());
}

void frmMain::RenderWhatIsPromised() {
    RenderAllFormats();
    ClearPendingRenderSet();
}

void frmMain::RemoveHotKey() {
    UnregisterActivationHotKey(EngineWindow(window_));
}

void frmMain::LeaveViewerChain() {
    DisconnectViewer();
    UnsubclassWindow();
    TheMainWindowHooks = {};
}

void frmMain::StoreGeometry() {
    if (IsIconic(window_)) return;
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window_, &placement);
    RECT area;
    GetWindowRect(window_, &area);
    const bool maximised = IsZoomed(window_) != 0;
    // A maximised window keeps the place that it goes back to.
    if (maximised) area = placement.rcNormalPosition;
    StoreMainWindow(
        maximised ? MainState::Maximised : MainState::Normal,
        {TwipsFromPixels(area.left, dpi_), TwipsFromPixels(area.top, dpi_),
         TwipsFromPixels(area.right - area.left, dpi_), TwipsFromPixels(area.bottom - area.top, dpi_)});
}

void frmMain::StoreSplitter() {
    StoreSplitterPlace(splitterLeft_);
}

void frmMain::StoreOptions() {
    SaveOptions();
}

void frmMain::StoreActiveContainer() {
    container_.Store();
}

void frmMain::StoreProfileList() {
    Profiles().SaveRegistry();
}

void frmMain::StoreFormatSets() {
    SaveFormatSets();
}

void frmMain::SaveWhatIsLeft() {
    ::SaveAllProfiles(cTV);
    FinishSaves();
    // The directories are free for other programs from here on.
    Profiles().Clear();
}

void frmMain::OnIdle() {
    FinishSaves();
    if (std::exchange(takeOverDue_, false) && TakeOverFreedProfiles(cTV, container_))
        AfterTreeChange(nodes_.Selected());
    if (AnyEditedByOther() == takeOverTimer_) return;
    takeOverTimer_ = !takeOverTimer_;
    if (takeOverTimer_)
        SetTimer(window_, kTakeOverTimer, kTakeOverPause, nullptr);
    else
        KillTimer(window_, kTakeOverTimer);
}
