#include "engine/views/MainCommands.h"

#include <algorithm>
#include <array>

#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "resources/controls.h"

namespace {

using Situation = CommandSituation;

bool Always(const Situation&, const Node*) {
    return true;
}

bool Unlocked(const Situation& situation, TreeAction action, const Node* node) {
    return !LockBlocks(action, node, situation.lockEdit);
}

bool MayAddProfile(const Situation& situation, const Node*) {
    return Unlocked(situation, TreeAction::NewProfile, nullptr);
}

bool MayImport(const Situation& situation, const Node*) {
    return Unlocked(situation, TreeAction::ImportProfile, nullptr);
}

bool MayUnlink(const Situation& situation, const Node* node) {
    return IsProfileNode(node) && Unlocked(situation, TreeAction::UnlinkProfile, node);
}

bool IsKnown(const Situation&, const Node* node) {
    return IsNodeOfKind(node, kProfileKind | kStructureKind | kClipKind);
}

bool MayDelete(const Situation& situation, const Node* node) {
    return IsKnown(situation, node) && Unlocked(situation, DeleteActionFor(*node), node);
}

bool MayEdit(const Situation& situation, const Node* node) {
    return IsKnown(situation, node) && Unlocked(situation, EditActionFor(*node), node);
}

// A clip stands for the container that it lies in.
bool MayAddFolder(const Situation& situation, const Node* node) {
    return IsKnown(situation, node) && Unlocked(situation, TreeAction::NewFolder, node);
}

bool MaySnap(const Situation& situation, const Node*) {
    const Node* const container = situation.activeContainer;
    return container != nullptr && Unlocked(situation, TreeAction::Snap, container);
}

bool IsClip(const Situation&, const Node* node) {
    return IsClipNode(node);
}

bool MayBecomeActive(const Situation& situation, const Node* node) {
    return IsNodeOfKind(node, kProfileKind | kStructureKind) && node != situation.activeContainer;
}

template <int... numbers>
constexpr std::array<int, sizeof...(numbers)> kNumbers{numbers...};

using enum MainCommand;

constexpr std::array<CommandRow, kMainCommandCount> kRows{{
    {NewProfile, kNumbers<mnuFileNew, m_pNN_NewProfil, m_PPNewProfil, tbbProfil>, ActsOn::Nothing,
     MayAddProfile},
    {ImportProfile, kNumbers<m_importProfil, m_pNN_insert_profile, m_PP_ImportProfil, tbbImport>,
     ActsOn::Nothing, MayImport},
    {UnlinkProfile, kNumbers<m_PP_UnlinkProfil>, ActsOn::ChosenOrOpen, MayUnlink},
    {Delete, kNumbers<m_edit_delete, m_del_profile, m_structDelete, m_delnode, tbbDelete>, ActsOn::Chosen,
     MayDelete},
    {NewFolder, kNumbers<m_edit_newstruct, m_pop_newstruct, m_substruct_insert, m_pp_substruct_insert>,
     ActsOn::ChosenOrOpen, MayAddFolder},
    {Rename, kNumbers<m_edit_rename>, ActsOn::ChosenOrOpen, MayEdit},
    {Snap, kNumbers<m_edit_insert, m_tray_snap, tbbSnap>, ActsOn::Nothing, MaySnap},
    {ToClipboard, kNumbers<m_copyToClipboard, m_to_clipboard, tbbCopy>, ActsOn::ChosenOrOpen, IsClip},
    {Activate, kNumbers<m_activate, m_profile_active, m_struct_active>, ActsOn::ChosenOrOpen,
     MayBecomeActive},
    {Properties, kNumbers<mnuFileProperties, m_pp_prop, m_ps_prop, m_clip_prop, tbbProperties>,
     ActsOn::ChosenOrOpen, IsKnown},
    {Search, kNumbers<m_search>, ActsOn::Nothing, Always},
    {SearchAgain, kNumbers<m_searcg_again>, ActsOn::Nothing, Always},
    {ShowToolBar, kNumbers<mnuViewToolbar>, ActsOn::Nothing, Always},
    {ShowStatusBar, kNumbers<mnuViewStatusBar>, ActsOn::Nothing, Always},
    {LargeIcons, kNumbers<mnuListViewLarge, tbbViewLarge>, ActsOn::Nothing, Always},
    {SmallIcons, kNumbers<mnuListViewSmall, tbbViewSmall>, ActsOn::Nothing, Always},
    {PlainList, kNumbers<mnuListViewList, tbbViewList>, ActsOn::Nothing, Always},
    {Details, kNumbers<mnuListViewDetails, tbbViewDetails>, ActsOn::Nothing, Always},
    {ShowPreview, kNumbers<mnuListViewPreview, tbbViewPreview>, ActsOn::Nothing, Always},
    {StretchPicture, kNumbers<m_stretchmode>, ActsOn::Nothing, Always},
    {Refresh, kNumbers<mnuViewRefresh>, ActsOn::Nothing, Always},
    {Options, kNumbers<mnuViewOptions, tbbViewProperties>, ActsOn::Nothing, Always},
    {Lock, kNumbers<tbbLock>, ActsOn::Nothing, Always},
    {TakeAutoDetect, kNumbers<tbbAutoDetect, m_reconnect>, ActsOn::Nothing, Always},
    {SwitchAutoDetect, kNumbers<m_tray_autosnap>, ActsOn::Nothing, Always},
    {FormatSets, kNumbers<m_extra_fs>, ActsOn::Nothing, Always},
    {FormatQuery, kNumbers<m_ext_act_format, m_ext_fa, m_test_askformat>, ActsOn::Nothing, Always},
    {Diagnosis, kNumbers<m_ext_diag, m_copy_info>, ActsOn::Nothing, Always},
    {QuickStart, kNumbers<m_quickstart>, ActsOn::Nothing, MayAddProfile},
    {ExitHook, kNumbers<m_test_exithook>, ActsOn::Nothing, Always},
    {HelpContents, kNumbers<mnuHelpContents>, ActsOn::Nothing, Always},
    {HelpSearch, kNumbers<mnuHelpSearch>, ActsOn::Nothing, Always},
    {HelpKeys, kNumbers<m_help_keys>, ActsOn::Nothing, Always},
    {About, kNumbers<mnuHelpAbout>, ActsOn::Nothing, Always},
    {Restore, kNumbers<m_tray_restore>, ActsOn::Nothing, Always},
    {Close, kNumbers<mnuFileClose, m_tray_quit>, ActsOn::Nothing, Always},
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
    if (situation.dialogOpen) return row.command == MainCommand::Restore;
    return row.allowed(situation, NodeFor(row, situation));
}
