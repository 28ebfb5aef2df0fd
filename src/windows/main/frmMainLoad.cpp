// The main window's load and unload, each in its order. It matters: a clipboard change may arrive as soon as
// the window stands in the viewer chain; what the user would miss is stored before anybody else is waited
// for, who may never answer; and what the program promised on the clipboard must be real before it leaves the
// chain.

#include <chrono>
#include <utility>

#include "engine/clipboard/modClipboard.h"
#include "engine/clipboard/modFormatDesc.h"
#include "engine/clipboard/modViewerHook.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/MayBegin.h"
#include "engine/process/ModHotKey.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileAttachment.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/WaitingProfiles.h"
#include "platform/Guard.h"
#include "platform/RuntimeError.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Dialog.h"
#include "windows/dialogs/frmMissingProfile.h"
#include "windows/main/MainPlace.h"
#include "windows/main/frmMain.h"

namespace {

// How often it is looked at whether what another program has is free: a profile, the format sets' file.
constexpr std::chrono::milliseconds kPauseBetweenLooks{3000};
// The window's place and the active container are stored when they have rested for so long.
constexpr std::chrono::milliseconds kRestOfPlaces{2000};

LRESULT CALLBACK HookThunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded<LRESULT>(0, [&] {
        return ClipboardWndProc(EngineWindow(window), message, static_cast<MessageParameter>(wParam), lParam);
    });
}

bool IsAnythingWaiting() {
    return HIWORD(GetQueueStatus(QS_ALLINPUT)) != 0;
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
    panes_.RestoreView();
    firstState_ = RestoreMainPlace(window_);
    SizeControls(ReadSplitter(panes_.SplitterLeft()));
    SetWindowTextW(window_, AppName);
    FillFormatDescriptions();
    if (!LoadFormatSets()) readsFormatSets_.PutOff(kPauseBetweenLooks);
    nodes_.Clear();
    LoadListedProfiles(cTV, [this](const std::wstring& name, const std::wstring& directory) {
        frmMissingProfile dialog(name, directory);
        dialog.ShowModal(window_, IDD_frmMissingProfile);
        return dialog.Answer();
    });
    container_.Restore();
    cSysTray1.SetInTray(Options().ShowInTray);
    // Not before there is a container: who joins the viewer chain is told of the clipboard at once.
    Options().AutoSnap = Options().AutoSnapAtStart;
    SetOptions();
    if (!hasHotKey) TellHotKeyTaken();
    removesOldDeleted_.PutOff();
}

void frmMain::Form_Unload() {
    InTurn([&] { DestroyWindow(formatQuery_.Window()); }, [&] { StoreEverything(); }, RenderAllFormats,
           ClearPendingRenderSet, [&] { panes_.ClearContent(); },
           [&] { UnregisterActivationHotKey(EngineWindow(window_)); }, [&] { ExitHook(); },
           // A last copy may have come until here. Other programs get the directories from here on.
           [&] { ::SaveAllProfiles(cTV); }, FinishSaves, [&] { Profiles().Clear(); });
}

void frmMain::StorePlaces() {
    storedSplitter_ = panes_.SplitterLeft();
    InTurn([&] { StoreMainPlace(window_); }, [&] { StoreSplitterPlace(storedSplitter_); },
           [&] { panes_.StoreView(); }, [&] { container_.Store(); });
}

void frmMain::StorePlacesSoon() {
    if (loaded_) placesRested_.PutOff(kRestOfPlaces);
}

void frmMain::StoreEverything() {
    InTurn([&] { StorePlaces(); }, SaveOptions, [&] { Profiles().SaveRegistry(); }, SaveFormatSets,
           [&] { ::SaveAllProfiles(cTV); }, [&] { KeepTreesInConflict(cTV); }, FinishSaves);
}

void frmMain::JoinViewerChain() {
    TheMainWindowHooks.procedure =
        static_cast<ProcedureAddress>(reinterpret_cast<std::uintptr_t>(&HookThunk));
    TheMainWindowHooks.updateClipBoard = [this] { UpdateClipBoard(); };
    TheMainWindowHooks.copyTold = [this] { captures_.CopyTold(); };
    TheMainWindowHooks.scheduler = this;
    TheMainWindowHooks.hotKeyAction = [this](WindowHandle) { HotKeyPressed(); };
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

// A program that only holds the file for a while must not cost the user his format sets.
void frmMain::ReadFormatSets() {
    if (!LoadFormatSetsAgain()) readsFormatSets_.PutOff(kPauseBetweenLooks);
}

void frmMain::OnIdle() {
    if (!end_) WorkWhenIdle();
    // It may have come while that was done, a drag among it.
    OnRest();
}

void frmMain::OnRest() {
    if (!end_) return;
    end_.reset();
    user_.HasLeft() ? EndSession() : Close();
}

void frmMain::WorkWhenIdle() {
    ForgetEndedEdits();
    // Not before the first picture: it takes longer than to make the window.
    drag_.Accept();
    if (!std::exchange(fieldHasTip_, true)) panes_.tbFilter.ShowTip(Options().ShowTooltips);
    // No message is left; one that was lost on its way takes no action with it.
    while (later_.NextIsDue())
        continue;
    // One file takes as long as the disk wants, so whoever comes goes first, also the next of several copies.
    while (!IsAnythingWaiting() && !captures_.MoreMayFollow() && FinishNextSave()) {
    }
    // What a capture has found out waits until somebody sits in front of the window.
    const bool somebodyIsThere = GetActiveWindow() == window_ && MayBegin(Who::BoxToldLater) == Answer::Now;
    if (somebodyIsThere && SettleConflicts(cTV, container_)) UpdateListview();
    drives_.WatchHeldProfiles(window_);
    if (panes_.SplitterLeft() != storedSplitter_) StorePlacesSoon();
    if (!lookForFreed_.IsDue() && (AnyEditedByOther() || AnyWaiting()))
        lookForFreed_.PutOff(kPauseBetweenLooks);
}

void frmMain::TakeOverFreed() {
    const bool answered = AttachAnswering(cTV, container_);
    if (!TakeOverFreedProfiles(cTV, container_) && !answered) return;
    UpdateListview();
    captures_.ReturnToRefused();
}
