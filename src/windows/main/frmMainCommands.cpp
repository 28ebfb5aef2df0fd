// The commands of the main window: what menus, keys and the tool bar do. The window itself: frmMain.cpp.

#include <array>

#include "engine/clipboard/modViewerHook.h"
#include "engine/flows/Search.h"
#include "engine/process/ModHotKey.h"
#include "engine/process/modHelp.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/NodeProperties.h"
#include "engine/profiles/ProfileActions.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/Templates.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "engine/views/ChooserRules.h"
#include "platform/Platform.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Dialog.h"
#include "windows/dialogs/frmAbout.h"
#include "windows/dialogs/frmClipProp.h"
#include "windows/dialogs/frmFileSel.h"
#include "windows/dialogs/frmFirstStart.h"
#include "windows/dialogs/frmFormatSets.h"
#include "windows/dialogs/frmOption.h"
#include "windows/dialogs/frmProfileProp.h"
#include "windows/dialogs/frmSearch.h"
#include "windows/dialogs/frmStructProp.h"
#include "windows/main/frmMain.h"

namespace {

// A command without an action of its own.
void NotYet() {
    ThePlatform().user.Tell(L"Noch nicht implementiert");
}

constexpr std::array<ListMode, 4> kListModes{ListMode::Large, ListMode::Small, ListMode::List,
                                             ListMode::Details};

// The commands that act on the selected node, be it selected in the tree or in the list.
bool ActsOnNode(int command) {
    switch (command) {
        case m_edit_delete:
        case m_edit_rename:
        case m_copyToClipboard:
        case m_activate:
        case mnuFileProperties:
        case m_edit_newstruct:
            return true;
        default:
            return false;
    }
}

}  // namespace

void frmMain::RunCommand(int command) {
    if (ActsOnNode(command)) TakeSelectionFromList();
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
        case m_ext_act_format:
        case m_ext_fa:
        case m_test_askformat:
            return ShowFormatQuery();
        case m_ext_diag:
        case m_copy_info:
            return ShowDiagnosis();
        case m_quickstart:
            return ShowFirstStart();
        case m_test_exithook:
            return ExitHook();
        case mnuHelpContents:
            return ShowHelp(EngineWindow(window_));
        case mnuHelpSearch:
            return ShowHelpCommand(EngineWindow(window_), kHelpFinder, 0);
        case m_help_keys:
            return ShowHelp(EngineWindow(window_), HelpTopic::Keys);
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

void frmMain::PrepareClipboard() {
    setClip_.SetClip();
}

void frmMain::UpdateClipBoard() {
    snap_.UpdateClipBoard();
}

void frmMain::Activate() {
    if (Node* const node = nodes_.Selected(); IsNodeOfKind(node, kProfileKind | kStructureKind))
        SetActiveContainer(node);
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

void frmMain::About() {
    frmAbout().ShowModal(window_, IDD_frmAbout);
}

// Whatever changed the tree has told it to the screen; the list and the title follow here.
void frmMain::AfterTreeChange(Node* selected) {
    if (selected != nullptr)
        SelectAndShow(*selected);
    else
        UpdateListview();
}

void frmMain::NewProfile() {
    if (!ActionAllowed(TreeAction::NewProfile, nullptr)) return;
    frmProfileProp dialog(cTV);
    if (!dialog.ShowModal(window_, IDD_frmProfileProp)) return;
    Node* const profile = BuildNewprofile(dialog.Name(), dialog.Directory(), dialog.TemplateFile());
    if (profile == nullptr) return;
    ProfileProperties properties = ReadProfileProperties(*profile);
    properties.info = dialog.Info();
    properties.globalFree = dialog.GlobalFree();
    ApplyProfileProperties(cTV, *profile, properties);
    AfterTreeChange(profile);
}

Node* frmMain::BuildNewprofile(const std::wstring& name, const std::wstring& directory,
                               const std::wstring& templateFile) {
    return profiles_.BuildNewprofile(name, directory, templateFile);
}

void frmMain::ImportProfile() {
    if (!ActionAllowed(TreeAction::ImportProfile, nullptr)) return;
    frmFileSel dialog(L"Profil importieren", {{L"nxclip.nxp", L"Profile (nxclip.nxp)"}});
    if (!dialog.ShowModal(window_, IDD_frmFileSel) || dialog.File().empty()) return;
    if (Node* const profile = ImportProfileDirect(DirectoryOf(dialog.File())); profile != nullptr)
        AfterTreeChange(profile);
}

Node* frmMain::ImportProfileDirect(const std::wstring& directory) {
    return profiles_.ImportProfileDirect(directory);
}

void frmMain::UnlinkProfile() {
    Node* const profile = nodes_.Selected();
    if (!ActionAllowed(TreeAction::UnlinkProfile, profile)) return;
    if (profiles_.UnlinkProfile(profile)) AfterTreeChange(nodes_.Selected());
}

void frmMain::DeleteSelected() {
    if (Node* const node = nodes_.Selected(); node != nullptr && operations_.Delete(node))
        AfterTreeChange(nodes_.Selected());
}

void frmMain::NewFolder() {
    Node* container = nodes_.Selected();
    if (IsNodeOfKind(container, kClipKind)) container = container->Parent();
    if (container == nullptr || !ActionAllowed(TreeAction::NewFolder, container)) return;
    Node* folder = nullptr;
    frmStructProp dialog(L"Neuer Ordner", L"", [&](const std::wstring& name, const std::wstring& info) {
        folder = ::NewFolder(cTV, container, name, info);
        return folder != nullptr;
    });
    if (dialog.ShowModal(window_, IDD_frmStructProp)) AfterTreeChange(folder);
}

void frmMain::ShowProperties() {
    Node* const node = nodes_.Selected();
    if (!IsNodeOfKind(node, kProfileKind | kStructureKind | kClipKind)) return;
    if (ShowPropertiesOf(*node)) AfterTreeChange(node);
}

bool frmMain::ShowPropertiesOf(Node& node) {
    if (IsClipNode(&node)) return frmClipProp(cTV, node).ShowModal(window_, IDD_frmClipProp);
    if (IsProfileNode(&node)) return frmProfileProp(cTV, node).ShowModal(window_, IDD_frmProfileProp);
    const FolderProperties folder = ReadFolderProperties(node);
    frmStructProp::Confirm confirm = [&](const std::wstring& name, const std::wstring& info) {
        return ApplyFolderProperties(cTV, node, name, info);
    };
    if (LockBlocks(TreeAction::EditFolder, &node, Options().LockEdit)) confirm = {};
    return frmStructProp(folder.name, folder.info, confirm).ShowModal(window_, IDD_frmStructProp);
}

void frmMain::EditClipProperties(Node& node, bool unasked) {
    const NodeRef clip(&node);
    frmClipProp properties(cTV, node);
    const bool confirmed = unasked ? properties.ShowUnasked(window_, IDD_frmClipProp)
                                   : properties.ShowModal(window_, IDD_frmClipProp);
    if (confirmed && clip.Get() != nullptr) AfterTreeChange(clip.Get());
}

void frmMain::Search(bool again) {
    SearchCommand(
        cTV, again, [this] { return frmSearch().ShowModal(window_, IDD_frmSearch); },
        [this](Node& found) { SelectAndShow(found); });
}

void frmMain::ShowOptions() {
    if (!frmOption().ShowModal(window_, IDD_frmOption)) return;
    UnregisterActivationHotKey(EngineWindow(window_));
    RegisterActivationHotKey(EngineWindow(window_));
    SetOptions();
}

void frmMain::ShowFormatSets() {
    frmFormatSets(clipBoard_).ShowModal(window_, IDD_frmFormatSets);
}

void frmMain::FirstStartAction() {
    if (FirstStartPending) ShowFirstStart();
}

void frmMain::ShowFirstStart() {
    frmFirstStart dialog;
    if (!dialog.ShowModal(window_, IDD_frmFirstStart)) return;
    if (Node* const profile =
            InstallFirstStartTemplates(cTV, container_, dialog.Templates(), dialog.BoxChecked());
        profile != nullptr)
        AfterTreeChange(profile);
}

void frmMain::ShowDiagnosis() {
    if (diagnosis_.Window() == nullptr)
        diagnosis_.ShowModeless(window_, IDD_frmDiagnose);
    else
        SetForegroundWindow(diagnosis_.Window());
}

void frmMain::ShowFormatQuery() {
    if (formatQuery_.Window() == nullptr)
        formatQuery_.ShowModeless(window_, IDD_frmErrorMsg);
    else
        SetForegroundWindow(formatQuery_.Window());
}

Node* frmMain::SearchForNode(Node* start) {
    return ::SearchForNode(cTV, TheSearchCriteria(), start);
}

void frmMain::RenameSelected() {
    if (Node* const node = nodes_.Selected(); node != nullptr) tvTreeView_.EditLabel(*node);
}
