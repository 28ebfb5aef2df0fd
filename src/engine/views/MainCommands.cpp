#include "engine/views/MainCommands.h"

#include <algorithm>
#include <array>

#include "engine/profiles/DeletedFolder.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/WaitingProfiles.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "resources/controls.h"

namespace {

using Situation = CommandSituation;

bool Always(const Situation&, const Node*) {
    return true;
}

bool IsProfile(const Situation&, const Node* node) {
    return IsProfileNode(node);
}

// A profile that waits for its drive can be taken out as well.
bool IsListedProfile(const Situation&, const Node* node) {
    return IsProfileNode(node) || WaitingAs(node) != nullptr;
}

bool IsKnown(const Situation&, const Node* node) {
    return IsNodeOfKind(node, kProfileKind | kStructureKind | kClipKind);
}

// The snap itself says what forbids it.
bool MaySnap(const Situation& situation, const Node*) {
    const Node* const container = situation.activeContainer;
    return container != nullptr && WhyNot(TreeAction::Snap, container, situation.lockEdit) == nullptr;
}

bool IsClip(const Situation&, const Node* node) {
    return IsClipNode(node);
}

bool IsHit(const Situation& situation, const Node* node) {
    return situation.showsHits && node != nullptr;
}

bool CanTakeBack(const Situation& situation, const Node*) {
    return situation.canTakeBack;
}

bool HasDeleted(const Situation&, const Node* node) {
    const Node* const folder = IsProfileNode(node) ? DeletedFolderOf(*node) : nullptr;
    return folder != nullptr && folder->Children() > 0;
}

bool MayMove(const Situation&, const Node* node) {
    return IsNodeOfKind(node, kStructureKind | kClipKind);
}

bool IsFormatOfClip(const Situation& situation, const Node* node) {
    return situation.formatChosen && IsClipNode(node);
}

bool MayBecomeActive(const Situation& situation, const Node* node) {
    return IsNodeOfKind(node, kProfileKind | kStructureKind) && node != situation.activeContainer;
}

template <TreeAction action>
TreeAction Does(const Node*) {
    return action;
}

TreeAction Deletes(const Node* node) {
    return DeleteActionFor(*node);
}

TreeAction Edits(const Node* node) {
    return EditActionFor(*node);
}

template <int... numbers>
constexpr std::array<int, sizeof...(numbers)> kNumbers{numbers...};

using enum MainCommand;

constexpr std::array<CommandRow, kMainCommandCount> kRows{{
    {NewProfile, kNumbers<mnuFileNew, m_pNN_NewProfil, m_PPNewProfil, tbbProfil>, ActsOn::Nothing,
     Who::TreeCommand, Always, Does<TreeAction::NewProfile>},
    {ImportProfile, kNumbers<m_importProfil, m_pNN_insert_profile, m_PP_ImportProfil, tbbImport>,
     ActsOn::Nothing, Who::TreeCommand, Always, Does<TreeAction::ImportProfile>},
    {UnlinkProfile, kNumbers<m_PP_UnlinkProfil>, ActsOn::ChosenOrOpen, Who::TreeCommand, IsListedProfile,
     Does<TreeAction::UnlinkProfile>},
    {SearchLostClips, kNumbers<m_PP_lostClips>, ActsOn::ChosenOrOpen, Who::TreeCommand, IsProfile,
     Does<TreeAction::NewFolder>},
    {EmptyDeleted, kNumbers<m_PP_emptyDeleted>, ActsOn::ChosenOrOpen, Who::TreeCommand, HasDeleted,
     Does<TreeAction::DeleteFolder>},
    {Export, kNumbers<m_export, m_pp_export, m_ps_export, m_clip_export>, ActsOn::AllChosen, Who::TreeCommand,
     IsKnown},
    {Delete, kNumbers<m_edit_delete, m_del_profile, m_structDelete, m_delnode, tbbDelete>, ActsOn::AllChosen,
     Who::TreeCommand, IsKnown, Deletes},
    {UndoDelete, kNumbers<m_undo_delete>, ActsOn::Nothing, Who::TreeCommand, CanTakeBack},
    {MoveTo, kNumbers<m_move_to>, ActsOn::AllChosen, Who::TreeCommand, MayMove,
     Does<TreeAction::DragAndDrop>},
    {MarkAll, kNumbers<m_mark_all>, ActsOn::Nothing, Who::TreeCommand, Always},
    // A clip stands for the container that it lies in.
    {NewFolder, kNumbers<m_edit_newstruct, m_pop_newstruct, m_substruct_insert, m_pp_substruct_insert>,
     ActsOn::ChosenOrOpen, Who::TreeCommand, IsKnown, Does<TreeAction::NewFolder>},
    {Rename, kNumbers<m_edit_rename>, ActsOn::ChosenOrOpen, Who::TreeCommand, IsKnown, Edits},
    {Snap, kNumbers<m_edit_insert, m_tray_snap, tbbSnap>, ActsOn::Nothing, Who::CaptureCommand, MaySnap},
    {ToClipboard, kNumbers<m_copyToClipboard, m_to_clipboard, tbbCopy>, ActsOn::ChosenOrOpen,
     Who::ClipCommand, IsClip},
    {OnlyText, kNumbers<m_only_text>, ActsOn::ChosenOrOpen, Who::ClipCommand, IsClip},
    {OnlyFormat, kNumbers<m_only_format>, ActsOn::ChosenOrOpen, Who::ClipCommand, IsFormatOfClip},
    {Activate, kNumbers<m_activate, m_profile_active, m_struct_active>, ActsOn::ChosenOrOpen,
     Who::TreeCommand, MayBecomeActive},
    {Properties, kNumbers<mnuFileProperties, m_pp_prop, m_ps_prop, m_clip_prop, tbbProperties>,
     ActsOn::ChosenOrOpen, Who::TreeCommand, IsKnown, Does<TreeAction::ShowProperties>},
    {Search, kNumbers<m_search>, ActsOn::Nothing, Who::TreeCommand, Always},
    {SearchAgain, kNumbers<m_searcg_again>, ActsOn::Nothing, Who::TreeCommand, Always},
    {Filter, kNumbers<m_filter>, ActsOn::Nothing, Who::TreeCommand, Always},
    {ShowInTree, kNumbers<m_show_in_tree>, ActsOn::Chosen, Who::TreeCommand, IsHit},
    {ShowToolBar, kNumbers<mnuViewToolbar>, ActsOn::Nothing, Who::TreeCommand, Always},
    {ShowStatusBar, kNumbers<mnuViewStatusBar>, ActsOn::Nothing, Who::TreeCommand, Always},
    {LargeIcons, kNumbers<mnuListViewLarge, tbbViewLarge>, ActsOn::Nothing, Who::TreeCommand, Always},
    {SmallIcons, kNumbers<mnuListViewSmall, tbbViewSmall>, ActsOn::Nothing, Who::TreeCommand, Always},
    {PlainList, kNumbers<mnuListViewList, tbbViewList>, ActsOn::Nothing, Who::TreeCommand, Always},
    {Details, kNumbers<mnuListViewDetails, tbbViewDetails>, ActsOn::Nothing, Who::TreeCommand, Always},
    {ShowPreview, kNumbers<mnuListViewPreview, tbbViewPreview>, ActsOn::Nothing, Who::TreeCommand, Always},
    {StretchPicture, kNumbers<m_stretchmode>, ActsOn::Nothing, Who::TreeCommand, Always},
    {Refresh, kNumbers<mnuViewRefresh>, ActsOn::Nothing, Who::TreeCommand, Always},
    {Options, kNumbers<mnuViewOptions, tbbViewProperties>, ActsOn::Nothing, Who::TreeCommand, Always},
    {Lock, kNumbers<tbbLock>, ActsOn::Nothing, Who::TreeCommand, Always},
    {SwitchLock, kNumbers<m_edit_lock>, ActsOn::Nothing, Who::TreeCommand, Always},
    {TakeAutoDetect, kNumbers<tbbAutoDetect, m_reconnect>, ActsOn::Nothing, Who::TreeCommand, Always},
    {SwitchAutoDetect, kNumbers<m_tray_autosnap, m_edit_autosnap>, ActsOn::Nothing, Who::TreeCommand, Always},
    {FormatSets, kNumbers<m_extra_fs>, ActsOn::Nothing, Who::TreeCommand, Always},
    {FormatQuery, kNumbers<m_ext_act_format, m_ext_fa, m_test_askformat>, ActsOn::Nothing, Who::TreeCommand,
     Always},
    {Diagnosis, kNumbers<m_ext_diag, m_copy_info>, ActsOn::Nothing, Who::TreeCommand, Always},
    {QuickStart, kNumbers<m_quickstart>, ActsOn::Nothing, Who::TreeCommand, Always,
     Does<TreeAction::NewProfile>},
    {ExitHook, kNumbers<m_test_exithook>, ActsOn::Nothing, Who::TreeCommand, Always},
    {HelpContents, kNumbers<mnuHelpContents>, ActsOn::Nothing, Who::TreeCommand, Always},
    {HelpSearch, kNumbers<mnuHelpSearch>, ActsOn::Nothing, Who::TreeCommand, Always},
    {HelpKeys, kNumbers<m_help_keys>, ActsOn::Nothing, Who::TreeCommand, Always},
    {About, kNumbers<mnuHelpAbout>, ActsOn::Nothing, Who::TreeCommand, Always},
    {Restore, kNumbers<m_tray_restore>, ActsOn::Nothing, Who::HotKey, Always},
    {Close, kNumbers<mnuFileClose, m_tray_quit>, ActsOn::Nothing, Who::Closing, Always},
}};

constexpr bool InOrder() {
    for (int i = 0; i < kMainCommandCount; ++i)
        if (kRows[static_cast<std::size_t>(i)].command != static_cast<MainCommand>(i)) return false;
    return true;
}
static_assert(InOrder());

}  // namespace

std::span<const CommandRow> MainCommandRows() {
    return kRows;
}

const CommandRow* CommandRowOf(int number) {
    const auto row = std::find_if(kRows.begin(), kRows.end(), [=](const CommandRow& known) {
        return std::find(known.numbers.begin(), known.numbers.end(), number) != known.numbers.end();
    });
    return row != kRows.end() ? &*row : nullptr;
}

Node* NodeFor(const CommandRow& row, const CommandSituation& situation) {
    if (row.actsOn == ActsOn::Nothing) return nullptr;
    if (row.actsOn == ActsOn::ChosenOrOpen && situation.chosen == nullptr) return situation.open;
    return situation.chosen;
}

bool IsAllowed(const CommandRow& row, const CommandSituation& situation) {
    const Node* const node = NodeFor(row, situation);
    const bool takesOne = row.actsOn == ActsOn::Chosen || row.actsOn == ActsOn::ChosenOrOpen;
    if (situation.severalChosen && takesOne) return false;
    return row.sensible(situation, node) &&
           (row.action == nullptr || WhyNot(row.action(node), node, situation.lockEdit) == nullptr);
}

bool IsOffered(const CommandRow& row, const CommandSituation& situation) {
    return MayBegin(row.who) <= Answer::EndsIt && IsAllowed(row, situation);
}

bool IsPermitted(const CommandRow& row, const Node* node) {
    // A command that makes no sense now need not be forbidden.
    if (row.action == nullptr || (row.actsOn != ActsOn::Nothing && !IsKnown({}, node))) return true;
    return ActionAllowed(row.action(node), node);
}
