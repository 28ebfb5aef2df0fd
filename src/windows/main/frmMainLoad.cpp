// The main window's load and unload, each in its order. It matters: a clipboard change may arrive as soon as
// the window stands in the viewer chain, and what the program promised on the clipboard must be real before
// it leaves the chain.

#include <chrono>
#include <utility>

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
#include "platform/Guard.h"
#include "platform/RuntimeError.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Dialog.h"
#include "windows/main/MainPlace.h"
#include "windows/main/frmMain.h"

namespace {

// How often it is looked at whether a profile that another program has is free.
constexpr std::chrono::milliseconds kPauseBetweenLooks{3000};

LRESULT CALLBACK HookThunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded<LRESULT>(0, [&] {
        return ClipboardWndProc(EngineWindow(window), message, static_cast<MessageParameter>(wParam), lParam);
    });
}

// One step that fails keeps no other from being done.
template <typename... Steps>
void InTurn(Steps&&... steps) {
    (Succeeds(steps), ...);
}

}  // namespace

void frmMain::Form_Load() {
    const bool hasHotKey = RegisterActivationHotKey(EngineWindow(window_));
    JoinViewerChain();
    panes_.ClearContent();
    HideTestMenu();
    firstState_ = RestoreMainPlace(window_);
    SizeControls(ReadSplitter(panes_.SplitterLeft()));
    SetWindowTextW(window_, AppName);
    FillFormatDescriptions();
    LoadFormatSets();
    nodes_.Clear();
    LoadListedProfiles(cTV);
    container_.Restore();
    cSysTray1.SetInTray(Options().ShowInTray);
    SetOptions();
    if (!hasHotKey) TellHotKeyTaken();
}

void frmMain::Form_Unload() {
    InTurn([&] { DestroyWindow(formatQuery_.Window()); }, RenderAllFormats, ClearPendingRenderSet,
           [&] { panes_.ClearContent(); }, [&] { UnregisterActivationHotKey(EngineWindow(window_)); },
           [&] { ExitHook(); }, [&] { StoreMainPlace(window_); },
           [&] { StoreSplitterPlace(panes_.SplitterLeft()); }, SaveOptions, [&] { container_.Store(); },
           [&] { Profiles().SaveRegistry(); }, SaveFormatSets, [&] { SaveWhatIsLeft(); });
}

void frmMain::JoinViewerChain() {
    TheMainWindowHooks.procedure =
        static_cast<ProcedureAddress>(reinterpret_cast<std::uintptr_t>(&HookThunk));
    TheMainWindowHooks.updateClipBoard = [this] { UpdateClipBoard(); };
    TheMainWindowHooks.copyTold = [this] { captures_.CopyTold(); };
    TheMainWindowHooks.scheduler = this;
    TheMainWindowHooks.hotKeyAction = [this](WindowHandle) { Restore(); };
    ConnectViewer(EngineWindow(window_));
}

// The context menus are loaded apart from the menu bar, so only the test menu is left to hide.
void frmMain::HideTestMenu() {
    if (!DebugMode) DeleteMenu(GetMenu(window_), m_test, MF_BYPOSITION);
}

void frmMain::ExitHook() {
    DisconnectViewer();
    UnsubclassWindow();
    TheMainWindowHooks = {};
}

void frmMain::SaveWhatIsLeft() {
    ::SaveAllProfiles(cTV);
    FinishSaves();
    // The directories are free for other programs from here on.
    Profiles().Clear();
}

void frmMain::OnIdle() {
    // Not before the first picture: it takes longer than to make the window.
    drag_.Accept();
    // No message is left; one that was lost on its way takes no action with it.
    while (later_.NextIsDue())
        continue;
    FinishSaves();
    if (!lookForFreed_.IsDue() && AnyEditedByOther()) lookForFreed_.PutOff(kPauseBetweenLooks);
}

void frmMain::TakeOverFreed() {
    if (TakeOverFreedProfiles(cTV, container_)) UpdateListview();
}
