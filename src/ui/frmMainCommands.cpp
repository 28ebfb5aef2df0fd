// The commands of the main window: what menus, keys and the tool bar do. The window itself: frmMain.cpp.

#include <array>

#include "app/modHelp.h"
#include "app/modMain.h"
#include "app/modOption.h"
#include "clipboard/modViewerHook.h"
#include "platform/Platform.h"
#include "profiles/ProfileActions.h"
#include "resources/controls.h"
#include "tree/modProfile.h"
#include "tree/modTreeEx.h"
#include "ui/frmAbout.h"
#include "ui/frmMain.h"
#include "ui/win/Dialog.h"

namespace {

// A command without an action of its own.
void NotYet() { ThePlatform().user.Tell(L"Noch nicht implementiert"); }

constexpr std::array<ListMode, 4> kListModes{ListMode::Large, ListMode::Small, ListMode::List, ListMode::Details};

}  // namespace

void frmMain::RunCommand(int command) {
    switch (command) {
        case mnuFileNew:
        case m_pNN_NewProfil:
        case m_PPNewProfil:
        case tbbProfil:
            return NewProfile();
        case m_importProfil:
        case m_pNN_insert_profile:
        case m_PP_ImportProfil:
        case tbbImport:
            return ImportProfile();
        case m_PP_UnlinkProfil:
            return UnlinkProfile();
        case m_edit_delete:
        case m_del_profile:
        case m_structDelete:
        case m_delnode:
        case tbbDelete:
            return DeleteSelected();
        case m_edit_newstruct:
        case m_pop_newstruct:
        case m_substruct_insert:
        case m_pp_substruct_insert:
            return NewFolder();
        case m_edit_rename:
            return RenameSelected();
        case m_edit_insert:
        case m_tray_snap:
        case tbbSnap:
            return snap_.Snap();
        case m_copyToClipboard:
        case m_to_clipboard:
        case tbbCopy:
            return PrepareClipboard();
        case m_activate:
        case m_profile_active:
        case m_struct_active:
            return Activate();
        case mnuFileProperties:
        case m_pp_prop:
        case m_ps_prop:
        case m_clip_prop:
        case tbbProperties:
            return ShowProperties();
        case m_search:
            return Search(false);
        case m_searcg_again:
            return Search(true);
        case mnuViewToolbar:
            return ToggleToolBar();
        case mnuViewStatusBar:
            return ToggleStatusBar();
        case mnuListViewLarge:
        case mnuListViewSmall:
        case mnuListViewList:
        case mnuListViewDetails:
            return SetListMode(kListModes[static_cast<std::size_t>(command - mnuListViewLarge)]);
        case tbbViewLarge:
        case tbbViewSmall:
        case tbbViewList:
        case tbbViewDetails:
            return SetListMode(kListModes[static_cast<std::size_t>(command - tbbViewLarge)]);
        case mnuListViewPreview:
        case tbbViewPreview:
            return TogglePreview();
        case m_stretchmode:
            return ToggleStretch();
        case mnuViewRefresh:
            return UpdateListview();
        case mnuViewOptions:
        case tbbViewProperties:
            return ShowOptions();
        case tbbLock:
            return ToggleLock();
        case tbbAutoDetect:
        case m_reconnect:
            return UpdateAutoDetect();
        case m_tray_autosnap:
            return SwitchAutoDetect(!Options().AutoSnap);
        case m_extra_fs:
            return ShowFormatSets();
        case m_test_exithook:
            return ExitHook();
        case mnuHelpContents:
            return ShowHelp(HandleOf(window_));
        case mnuHelpSearch:
            return ShowHelpCommand(HandleOf(window_), kHelpFinder, 0);
        case m_help_keys:
            return ShowHelp(HandleOf(window_), HelpTopic::Keys);
        case mnuHelpAbout:
            return About();
        case m_tray_restore:
            return Restore();
        case mnuFileClose:
        case m_tray_quit:
            DestroyWindow(window_);
            return;
        default:
            // Below the menus stand the controls, whose notifications come here as well.
            if (command >= mnuFileNew) NotYet();
    }
}

void frmMain::PrepareClipboard() { setClip_.SetClip(); }

void frmMain::UpdateClipBoard() { snap_.UpdateClipBoard(); }

void frmMain::Activate() {
    if (Node* const node = nodes_.Selected(); IsNodeOfKind(node, kProfileKind | kStructureKind)) SetActiveContainer(node);
}

void frmMain::SetListMode(ListMode mode) {
    lvListView_.SetMode(mode);
    RefreshCommands();
}

void frmMain::ToggleToolBar() {
    toolBarShown_ = !toolBarShown_;
    ShowWindow(tbToolBar_.Window(), toolBarShown_ ? SW_SHOW : SW_HIDE);
    SizeControls(splitterLeft_);
}

void frmMain::ToggleStatusBar() {
    statusBarShown_ = !statusBarShown_;
    ShowWindow(sbStatusBar_, statusBarShown_ ? SW_SHOW : SW_HIDE);
    SizeControls(splitterLeft_);
}

void frmMain::TogglePreview() {
    previewShown_ = !previewShown_;
    SizeControls(splitterLeft_);
    RefreshCommands();
}

void frmMain::ToggleStretch() {
    stretched_ = !stretched_;
    preview_.SetStretch(stretched_);
}

void frmMain::ToggleLock() {
    Options().LockEdit = tbToolBar_.Pressed(tbbLock);
    SetOptions();
}

void frmMain::SwitchAutoDetect(bool on) {
    tbToolBar_.Press(tbbAutoDetect, on);
    UpdateAutoDetect();
}

void frmMain::UpdateAutoDetect() {
    Options().AutoSnap = tbToolBar_.Pressed(tbbAutoDetect);
    RefreshCommands();
}

void frmMain::ExitHook() {
    DisconnectViewer();
    UnsubclassWindow();
}

void frmMain::About() { frmAbout().ShowModal(window_, IDD_frmAbout); }

void frmMain::NewProfile() { NotYet(); }
void frmMain::ImportProfile() { NotYet(); }
void frmMain::UnlinkProfile() { NotYet(); }
void frmMain::DeleteSelected() { NotYet(); }
void frmMain::NewFolder() { NotYet(); }
void frmMain::ShowProperties() { NotYet(); }
void frmMain::Search(bool) { NotYet(); }
void frmMain::ShowOptions() { NotYet(); }
void frmMain::ShowFormatSets() { NotYet(); }

void frmMain::RenameSelected() {
    if (Node* const node = nodes_.Selected(); node != nullptr) tvTreeView_.EditLabel(*node);
}
