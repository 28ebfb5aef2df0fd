// The commands of the main window: what menus, keys and the tool bar do. When each is allowed and on which
// node it acts stands in engine/views/MainCommands.cpp.

#include <array>
#include <deque>
#include <utility>

#include "engine/flows/NodeProperties.h"
#include "engine/flows/Search.h"
#include "engine/flows/Templates.h"
#include "engine/formatsets/modFormatSet.h"
#include "engine/process/ModHotKey.h"
#include "engine/process/modHelp.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/FoundClips.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/WaitingProfiles.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "engine/views/ChooserRules.h"
#include "platform/Platform.h"
#include "platform/win32/ModalWindows.h"
#include "platform/win32/SystemHandles.h"
#include "resources/controls.h"
#include "windows/controls/Dialog.h"
#include "windows/dialogs/frmAbout.h"
#include "windows/dialogs/frmClipProp.h"
#include "windows/dialogs/frmFileSel.h"
#include "windows/dialogs/frmFirstStart.h"
#include "windows/dialogs/frmFormatSets.h"
#include "windows/dialogs/frmMoveTo.h"
#include "windows/dialogs/frmOption.h"
#include "windows/dialogs/frmProfileProp.h"
#include "windows/dialogs/frmSearch.h"
#include "windows/dialogs/frmStructProp.h"
#include "windows/main/FileCommands.h"
#include "windows/main/frmMain.h"

namespace {

// The entries of a menu as they are allowed; entries that are no commands stay as they are.
void GreyMenu(HMENU menu, const CommandSituation& situation,
              bool (*allowed)(const CommandRow& row, const CommandSituation& situation)) {
    for (const CommandRow& row : MainCommandRows()) {
        const UINT state = allowed(row, situation) ? MF_ENABLED : MF_GRAYED;
        for (const int number : row.numbers)
            EnableMenuItem(menu, static_cast<UINT>(number), MF_BYCOMMAND | state);
    }
}

void CheckEntry(HMENU menu, int number, bool checked) {
    CheckMenuItem(menu, static_cast<UINT>(number), MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

}  // namespace

frmMain::Action frmMain::ActionOf(MainCommand command) {
    using C = MainCommand;
    using Form = frmMain;
    struct Binding {
        MainCommand command;
        Action action;
    };
    static constexpr std::array<Binding, kMainCommandCount> kBindings{{
        {C::NewProfile, [](Form& form, Node*) { form.NewProfile(); }},
        {C::ImportProfile, [](Form& form, Node*) { form.ImportProfile(); }},
        {C::UnlinkProfile, [](Form& form, Node* node) { form.UnlinkProfile(node); }},
        {C::SearchLostClips, [](Form& form, Node* node) { form.SearchLostClips(node); }},
        {C::EmptyDeleted, [](Form& form, Node* node) { form.EmptyDeleted(node); }},
        {C::Export, [](Form& form, Node* node) { form.ExportNode(node); }},
        {C::Delete, [](Form& form, Node* node) { form.Delete(node); }},
        {C::UndoDelete, [](Form& form, Node*) { form.UndoDelete(); }},
        {C::MoveTo, [](Form& form, Node* node) { form.MoveTo(node); }},
        {C::MarkAll, [](Form& form, Node*) { form.MarkAll(); }},
        {C::NewFolder, [](Form& form, Node* node) { form.NewFolder(node); }},
        {C::Rename, [](Form& form, Node* node) { form.Rename(node); }},
        {C::Snap, [](Form& form, Node*) { form.captures_.Snap(); }},
        {C::ToClipboard, [](Form& form, Node* node) { form.PutOnClipboard(node); }},
        {C::OnlyText, [](Form& form, Node* node) { form.PutOnClipboard(node, IsPlainText); }},
        {C::OnlyFormat, [](Form& form, Node* node) { form.PutChosenFormatOnClipboard(node); }},
        {C::Activate, [](Form& form, Node* node) { form.SetActiveContainer(node); }},
        {C::Properties, [](Form& form, Node* node) { form.ShowProperties(node); }},
        {C::Search, [](Form& form, Node*) { form.Search(false); }},
        {C::SearchAgain, [](Form& form, Node*) { form.Search(true); }},
        {C::Filter, [](Form& form, Node*) { form.BeginSearch(); }},
        {C::ShowInTree, [](Form& form, Node* node) { form.ShowInTree(node); }},
        {C::ShowToolBar, [](Form& form, Node*) { form.panes_.ToggleToolBar(); }},
        {C::ShowStatusBar, [](Form& form, Node*) { form.panes_.ToggleStatusBar(); }},
        {C::LargeIcons, [](Form& form, Node*) { form.panes_.lvListView.SetMode(ListMode::Large); }},
        {C::SmallIcons, [](Form& form, Node*) { form.panes_.lvListView.SetMode(ListMode::Small); }},
        {C::PlainList, [](Form& form, Node*) { form.panes_.lvListView.SetMode(ListMode::List); }},
        {C::Details, [](Form& form, Node*) { form.panes_.lvListView.SetMode(ListMode::Details); }},
        {C::ShowPreview, [](Form& form, Node*) { form.panes_.TogglePreview(); }},
        {C::StretchPicture, [](Form& form, Node*) { form.panes_.ToggleStretch(); }},
        {C::Refresh, [](Form& form, Node*) { form.RefreshOrTakeMissedCopy(); }},
        {C::Options, [](Form& form, Node*) { form.ShowOptions(); }},
        {C::Lock, [](Form& form, Node*) { form.ToggleLock(); }},
        {C::SwitchLock, [](Form& form, Node*) { form.SwitchLock(); }},
        {C::TakeAutoDetect, [](Form& form, Node*) { form.UpdateAutoDetect(); }},
        {C::SwitchAutoDetect, [](Form& form, Node*) { form.SwitchAutoDetect(); }},
        {C::FormatSets, [](Form& form, Node*) { form.ShowFormatSets(); }},
        {C::FormatQuery, [](Form& form, Node*) { form.ShowFormatQuery(); }},
        {C::Diagnosis, [](Form& form, Node*) { form.ShowDiagnosis(); }},
        {C::QuickStart, [](Form& form, Node*) { form.ShowFirstStart(); }},
        {C::ExitHook, [](Form& form, Node*) { form.ExitHook(); }},
        {C::HelpContents, [](Form& form, Node*) { ShowHelp(form.Window()); }},
        {C::HelpSearch, [](Form& form, Node*) { ShowHelpCommand(form.Window(), kHelpFinder, 0); }},
        {C::HelpKeys, [](Form& form, Node*) { ShowHelp(form.Window(), HelpTopic::Keys); }},
        {C::About, [](Form& form, Node*) { frmAbout().ShowModal(form.window_, IDD_frmAbout); }},
        {C::Restore, [](Form& form, Node*) { form.Restore(); }},
        {C::Close, [](Form& form, Node*) { form.Close(); }},
    }};
    constexpr auto inOrder = [] {
        for (int i = 0; i < kMainCommandCount; ++i)
            if (kBindings[static_cast<std::size_t>(i)].command != static_cast<MainCommand>(i)) return false;
        return true;
    };
    static_assert(inOrder());
    return kBindings[static_cast<std::size_t>(command)].action;
}

CommandSituation frmMain::Situation() const {
    return {.chosen = ChosenNode(),
            .open = nodes_.Selected(),
            .activeContainer = container_.Get(),
            .lockEdit = Options().LockEdit,
            .showsHits = hits_.IsActive(),
            .formatChosen = ChosenFormat() != nullptr,
            .severalChosen = SeveralChosen(),
            .canTakeBack = operations_.CanTakeBackDeletion()};
}

void frmMain::OnCommand(int number) {
    const CommandRow* const row = CommandRowOf(number);
    // What is chosen, and where the keyboard is, may be another thing when a rename has ended.
    if (row != nullptr && row->who != Who::Closing && !Begins(row->who)) return ShowSwitches();
    RunCommand(number, Situation());
}

void frmMain::RunCommand(int number, const CommandSituation& situation) {
    const CommandRow* const row = CommandRowOf(number);
    if (row == nullptr) {
        // Below the menus stand the controls, whose notifications come here as well.
        if (number >= mnuFileNew) ThePlatform().user.Tell(L"Noch nicht implementiert");
        return;
    }
    Node* const node = NodeFor(*row, situation);
    if (!IsPermitted(*row, node)) return;
    ActionOf(row->command)(*this, node);
    // The command may have closed the window.
    if (!loaded_) return;
    RefreshCommands();
}

void frmMain::RefreshCommands() {
    const CommandSituation situation = Situation();
    const HMENU menu = GetMenu(window_);
    // Whatever is open in front of the window, it shows what it would offer without that.
    GreyMenu(menu, situation, &IsAllowed);
    CheckEntry(menu, mnuViewToolbar, panes_.ToolBarShown());
    CheckEntry(menu, mnuViewStatusBar, panes_.StatusBarShown());
    CheckEntry(menu, mnuListViewPreview, panes_.PreviewShown());
    CheckEntry(menu, m_edit_autosnap, Options().AutoSnap);
    CheckEntry(menu, m_edit_lock, Options().LockEdit);
    CheckEntry(menu, m_stretchmode, panes_.Stretched());
    const int mode = static_cast<int>(panes_.lvListView.Mode());
    CheckMenuRadioItem(menu, mnuListViewLarge, mnuListViewDetails, static_cast<UINT>(mnuListViewLarge + mode),
                       MF_BYCOMMAND);
    MainToolBar& bar = panes_.tbToolBar;
    for (const CommandRow& row : MainCommandRows())
        for (const int number : row.numbers)
            if (number >= tbbProfil) bar.Enable(number, IsAllowed(row, situation));
    bar.Press(tbbViewLarge + mode, true);
    bar.Press(tbbViewPreview, panes_.PreviewShown());
}

void frmMain::ShowContextMenu(HWND source, POINT point) {
    if (!Begins(Who::TreeCommand)) return;
    const bool byKeyboard = point.x == -1 && point.y == -1;
    Node* node = nodes_.Selected();
    Node* chosen = node;
    if (source == panes_.lvListView.Window()) {
        chosen = ChosenNode();
        if (chosen != nullptr) node = chosen;
        if (byKeyboard) point = panes_.lvListView.MenuPoint();
    } else if (source != panes_.tvTreeView.Window()) {
        return;
    } else if (byKeyboard) {
        point = panes_.tvTreeView.MenuPoint();
    } else {
        POINT inTree = point;
        ScreenToClient(source, &inTree);
        node = chosen = panes_.tvTreeView.NodeAt(inTree);
        if (node != nullptr) nodes_.Select(node);
    }
    const int menu = IsProfileNode(node) || WaitingAs(node) != nullptr ? m_popProfile
                     : IsStructureNode(node)                           ? m_popStruct
                     : IsClipNode(node)                                ? m_poptree
                                                                       : m_popNoNode;
    TrackMenu(menu, point, chosen);
}

void frmMain::ShowTrayMenu() {
    POINT point;
    GetCursorPos(&point);
    // A menu of a window that is not in front would not close by a click beside it.
    SetForegroundWindow(ModalWindowOver(window_));
    TrackMenu(IDM_tray, point, ChosenNode());
    PostMessageW(window_, WM_NULL, 0, 0);
}

void frmMain::TrackMenu(int menu, POINT point, Node* chosen) {
    CommandSituation situation = Situation();
    situation.chosen = chosen;
    situation.severalChosen = situation.severalChosen && chosen == ChosenNode();
    const HMENU loaded = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(menu));
    const HMENU popup = GetSubMenu(loaded, 0);
    GreyMenu(popup, situation, &IsOffered);
    CheckEntry(popup, m_tray_autosnap, Options().AutoSnap);
    const NodeRef chosenThen(situation.chosen);
    const NodeRef openThen(situation.open);
    const auto isGone = [](const Node* before, const NodeRef& now) {
        return before != nullptr && now.Get() == nullptr;
    };
    const int number =
        TrackPopupMenu(popup, TPM_RIGHTBUTTON | TPM_RETURNCMD, point.x, point.y, 0, window_, nullptr);
    DestroyMenu(loaded);
    if (number == 0) return;
    // Nothing else takes the place of a node that is gone.
    if (isGone(situation.chosen, chosenThen) || isGone(situation.open, openThen)) return;
    const CommandRow* const row = CommandRowOf(number);
    if (row == nullptr || row->who == Who::Closing || Begins(row->who)) RunCommand(number, situation);
}

void frmMain::PrepareClipboard() {
    PutOnClipboard(nodes_.Selected());
}

void frmMain::PutOnClipboard(const Node* clip, const FormatFilter& wanted) {
    captures_.ForgetMissed();
    setClip_.SetClip(clip, wanted);
}

void frmMain::PutChosenFormatOnClipboard(const Node* clip) {
    const CFormat* const chosen = ChosenFormat();
    if (chosen == nullptr) return;
    const std::wstring name = chosen->FormatName;
    PutOnClipboard(clip, [&](const CFormat& format) { return format.FormatName == name; });
}

void frmMain::ToggleLock() {
    Options().LockEdit = panes_.tbToolBar.Pressed(tbbLock);
    SaveOptions();
    SetOptions();
}

void frmMain::SwitchLock() {
    Options().LockEdit = !Options().LockEdit;
    SetOptions();
}

void frmMain::SwitchAutoDetect() {
    panes_.tbToolBar.Press(tbbAutoDetect, !Options().AutoSnap);
    UpdateAutoDetect();
}

void frmMain::UpdateAutoDetect() {
    Options().AutoSnap = panes_.tbToolBar.Pressed(tbbAutoDetect);
    ShowCaptureState();
    RefreshCommands();
}

void frmMain::ShowNewProfile(Node& profile, bool isFirst) {
    SelectAndShow(profile);
    if (isFirst && container_.Get() != nullptr) panes_.ShowStatus(L"Aktive Ablage: " + container_.Title());
}

void frmMain::NewProfile() {
    const bool isFirst = container_.Get() == nullptr;
    frmProfileProp dialog(cTV);
    if (!dialog.ShowModal(window_, IDD_frmProfileProp)) return;
    Node* const profile = BuildNewprofile(dialog.Name(), dialog.Directory(), dialog.TemplateFile());
    if (profile == nullptr) return;
    ProfileProperties properties = ReadProfileProperties(*profile);
    properties.info = dialog.Info();
    properties.globalFree = dialog.GlobalFree();
    const NodeRef made(profile);
    ApplyProfileProperties(cTV, *profile, properties);
    if (made.Get() != nullptr) ShowNewProfile(*made.Get(), isFirst);
}

Node* frmMain::BuildNewprofile(const std::wstring& name, const std::wstring& directory,
                               const std::wstring& templateFile) {
    return profiles_.BuildNewprofile(name, directory, templateFile);
}

void frmMain::ImportProfile() {
    frmFileSel dialog(L"Profil importieren", {{L"nxclip.nxp", L"Profile (nxclip.nxp)"}});
    if (!dialog.ShowModal(window_, IDD_frmFileSel) || dialog.File().empty()) return;
    const bool isFirst = container_.Get() == nullptr;
    if (Node* const profile = ImportProfileDirect(DirectoryOf(dialog.File())); profile != nullptr)
        ShowNewProfile(*profile, isFirst);
}

Node* frmMain::ImportProfileDirect(const std::wstring& directory) {
    return profiles_.ImportProfileDirect(directory);
}

void frmMain::UnlinkProfile(Node* profile) {
    if (profiles_.UnlinkProfile(profile)) UpdateListview();
}

void frmMain::SearchLostClips(Node* profile) {
    if (!IsProfileNode(profile)) return;
    ::SearchLostClips(cTV, *profile);
    UpdateListview();
}

void frmMain::ExportNode(Node* node) {
    if (node == nullptr) return;
    const std::wstring result = ExportByDialog(window_, TopmostOf(NodesFor(node)));
    if (!result.empty()) panes_.ShowStatus(result);
}

// The question's text does not name the node; the status bar does meanwhile.
void frmMain::Delete(Node* node) {
    if (node == nullptr) return;
    const std::vector<Node*> nodes = NodesFor(node);
    const std::wstring what = nodes.size() == 1 ? node->FullPath() : CountedText(nodes);
    panes_.ShowStatus(L"Löschen: " + what);
    panes_.DrawStatus();
    if (!operations_.Delete(nodes)) {
        panes_.ShowStatus(panes_.Content().status);
        return;
    }
    // Otherwise the neighbour is shown already, and damage in it must be told only once.
    if (hits_.IsActive() || shownNode_.Get() != nodes_.Selected() || !IsClipNode(nodes_.Selected()))
        UpdateListview();
    if (operations_.CanTakeBackDeletion())
        panes_.ShowStatus(L"Gelöscht: " + what + L". Strg+Z holt es zurück.");
}

void frmMain::EmptyDeleted(Node* profile) {
    if (IsProfileNode(profile) && operations_.EmptyDeleted(*profile)) UpdateListview();
}

void frmMain::UndoDelete() {
    const bool inTree = !KeyboardIsInList();
    const std::vector<Node*> back = operations_.TakeBackDeletion();
    if (back.empty()) return;
    Node& first = *back.front();
    if (inTree && back.size() == 1) {
        SelectAndShow(first);
    } else if (!hits_.IsActive() && first.Parent() != nodes_.Selected()) {
        SelectAndShow(*first.Parent());
    } else {
        UpdateListview();
    }
    if (!inTree) ChooseRowsOf(back);
    panes_.ShowStatus(L"Zurückgeholt nach \"" + first.Parent()->FullPath() + L"\": " + CountedText(back));
}

// The keyboard's way to file what is chosen.
void frmMain::MoveTo(Node* node) {
    if (!IsNodeOfKind(node, kStructureKind | kClipKind)) return;
    const std::vector<Node*> nodes = NodesFor(node);
    for (const Node* const chosen : nodes)
        if (!ActionAllowed(TreeAction::DragAndDrop, chosen)) return;
    std::deque<NodeRef> sources;
    for (Node* const chosen : nodes)
        sources.emplace_back(chosen);
    frmMoveTo dialog(cTV, nodes, movedTo_.Get() != nullptr ? movedTo_.Get() : node->Parent());
    if (!dialog.ShowModal(window_, IDD_frmMoveTo) || dialog.Target() == nullptr) return;
    movedTo_.Follow(dialog.Target());
    std::vector<Node*> moving;
    for (const NodeRef& source : sources)
        if (source.Get() != nullptr) moving.push_back(source.Get());
    const std::vector<Node*> placed = operations_.Drop(dialog.Target(), moving, true, !dialog.Copies());
    if (!placed.empty()) ShowPlaced(placed);
}

// Who files from the list goes on with the rows that are left.
void frmMain::ShowPlaced(::ChosenNodes placed) {
    const Node* const container = placed.front()->Parent();
    // A profile lies in none, and a list that does not show it has not changed.
    if (container == nullptr || (placed.size() == 1 && !KeyboardIsInList())) {
        SelectAndShow(*placed.front());
        return;
    }
    UpdateListview();
    panes_.ShowStatus(L"Jetzt in \"" + container->FullPath() + L"\": " + CountedText(placed));
}

void frmMain::MarkAll() {
    if (panes_.Content().nodes == nullptr) return;
    SetFocus(panes_.lvListView.Window());
    panes_.lvListView.ChooseAll();
}

void frmMain::RemoveOldDeleted() {
    if (operations_.RemoveOldDeleted(Options().DeletedDays)) UpdateListview();
}

// The list is filled again only where it shows what was removed.
void frmMain::KeepNewest() {
    Node* const container = container_.Get();
    if (container == nullptr || !Options().AutoSnap) return;
    const bool any = operations_.KeepNewest(*container, Options().MostClips);
    if (any && (hits_.IsActive() || !IsClipNode(nodes_.Selected()))) UpdateListview();
}

void frmMain::NewFolder(Node* container) {
    if (IsNodeOfKind(container, kClipKind)) container = container->Parent();
    if (container == nullptr) return;
    const NodeRef place(container);
    NodeRef folder;
    frmStructProp dialog(L"Neuer Ordner", L"", [&](const std::wstring& name, const std::wstring& info) {
        folder.Follow(::NewFolder(cTV, place.Get(), name, info));
        return folder.Get() != nullptr;
    });
    if (dialog.ShowModal(window_, IDD_frmStructProp) && folder.Get() != nullptr) SelectAndShow(*folder.Get());
}

void frmMain::Rename(Node* node) {
    if (node == nullptr) return;
    const int row = FocusedPane() == panes_.lvListView.Window() ? ListRowOf(node) : -1;
    if (row >= 0) return panes_.lvListView.EditLabel(row);
    nodes_.Select(node);
    panes_.tvTreeView.EditLabel(*node);
}

void frmMain::ShowProperties(Node* node) {
    if (!IsNodeOfKind(node, kProfileKind | kStructureKind | kClipKind) || !ShowPropertiesOf(*node)) return;
    UpdateListview();
    StorePlacesSoon();
}

// Locked, they are there to be read.
bool frmMain::ShowPropertiesOf(Node& node) {
    if (IsClipNode(&node)) return frmClipProp(cTV, node).ShowModal(window_, IDD_frmClipProp);
    if (IsProfileNode(&node)) return frmProfileProp(cTV, node).ShowModal(window_, IDD_frmProfileProp);
    const FolderProperties folder = ReadFolderProperties(node);
    const NodeRef shown(&node);
    frmStructProp::Confirm confirm = [&](const std::wstring& name, const std::wstring& info) {
        return shown.Get() == nullptr || ApplyFolderProperties(cTV, *shown.Get(), name, info);
    };
    if (LockBlocks(TreeAction::EditFolder, &node, Options().LockEdit)) confirm = {};
    return frmStructProp(folder.name, folder.info, confirm).ShowModal(window_, IDD_frmStructProp);
}

void frmMain::EditClipProperties(Node& node, bool unasked) {
    const NodeRef clip(&node);
    frmClipProp properties(cTV, node);
    const bool confirmed = unasked ? properties.ShowUnasked(window_, IDD_frmClipProp)
                                   : properties.ShowModal(window_, IDD_frmClipProp);
    if (confirmed && clip.Get() != nullptr) SelectAndShow(*clip.Get());
}

void frmMain::Search(bool again) {
    if (again && hits_.IsActive()) {
        panes_.preview.ShowNextHit();
        return;
    }
    SearchCommand(
        cTV, again, [this] { return frmSearch().ShowModal(window_, IDD_frmSearch); },
        [this](Node& found) { SelectAndShow(found); });
}

void frmMain::ShowOptions() {
    if (!frmOption().ShowModal(window_, IDD_frmOption)) return;
    ApplyStartWithWindows();
    if (!SaveOptions()) ThePlatform().user.TellLater(L"Die Optionen konnten nicht gespeichert werden !!!");
    UnregisterActivationHotKey(EngineWindow(window_));
    const bool hasHotKey = RegisterActivationHotKey(EngineWindow(window_));
    SetOptions();
    if (!hasHotKey) TellHotKeyTaken();
    if (Options().MostClips > 0 && !Options().KeepDeleted && TellsForTheFirstTime(L"LimitTold"))
        ThePlatform().user.Inform(
            L"Gelöschtes wird nicht aufgehoben: Was über die Höchstzahl der Clips hinausgeht, wird nach "
            L"einer "
            L"automatischen Erfassung endgültig gelöscht.");
}

void frmMain::TellHotKeyTaken() {
    const std::wstring text = TakenHotKeyText(Options().KeyActivate);
    ThePlatform().user.Status(text);
    // Nobody sees the status bar of a window that started in the tray.
    if (!IsWindowVisible(window_) || IsIconic(window_)) ThePlatform().user.TellLater(text);
}

void frmMain::ShowFormatSets() {
    LoadFormatSetsAgain();
    frmFormatSets(clipBoard_).ShowModal(window_, IDD_frmFormatSets);
}

void frmMain::FirstStartAction() {
    if (FirstStartPending) ShowFirstStart();
}

void frmMain::ShowFirstStart() {
    if (!ActionAllowed(TreeAction::NewProfile, nullptr)) return;
    frmFirstStart dialog;
    if (!dialog.ShowModal(window_, IDD_frmFirstStart)) return;
    SetOptions();
    if (dialog.Recommended()) SortList(kNewestFirst);
    const bool isFirst = container_.Get() == nullptr;
    if (Node* const profile = InstallFirstStartTemplates(cTV, container_, dialog.Choice());
        profile != nullptr)
        ShowNewProfile(*profile, isFirst);
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
