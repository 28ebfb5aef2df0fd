#pragma once

#include <span>

#include "engine/process/MayBegin.h"
#include "engine/profiles/StructureLock.h"
#include "engine/tree/Node.h"

// The main window's commands: one row each says by which numbers it comes, on which node it acts and when it
// is allowed. What it does stands under the same name in windows/main/frmMainCommands.cpp; captions and keys
// stand in frmMain.rc and cSysTray.rc.
enum class MainCommand {
    NewProfile,
    ImportProfile,
    UnlinkProfile,
    SearchLostClips,
    EmptyDeleted,
    Export,
    Delete,
    UndoDelete,
    MoveTo,
    MarkAll,
    NewFolder,
    Rename,
    Snap,
    ToClipboard,
    OnlyText,
    OnlyFormat,
    Activate,
    Properties,
    Search,
    SearchAgain,
    Filter,
    ShowInTree,
    ShowToolBar,
    ShowStatusBar,
    LargeIcons,
    SmallIcons,
    PlainList,
    Details,
    ShowPreview,
    StretchPicture,
    Refresh,
    Options,
    Lock,
    SwitchLock,
    TakeAutoDetect,
    SwitchAutoDetect,
    FormatSets,
    FormatQuery,
    Diagnosis,
    QuickStart,
    ExitHook,
    HelpContents,
    HelpSearch,
    HelpKeys,
    About,
    Restore,
    Close,
};
inline constexpr int kMainCommandCount = static_cast<int>(MainCommand::Close) + 1;

// The node that a command acts on.
enum class ActsOn {
    Nothing,
    Chosen,        // the one chosen where the keyboard is: a row of the list, or else of the tree
    ChosenOrOpen,  // the same; without a row, the one whose content the list shows
    AllChosen,     // the chosen one, or all rows that are chosen; the others take one alone
};

// What decides whether a command makes sense now.
struct CommandSituation {
    Node* chosen = nullptr;  // null as well while the keyboard is in the list and no row is chosen
    Node* open = nullptr;    // selected in the tree
    const Node* activeContainer = nullptr;
    bool lockEdit = false;
    bool showsHits = false;      // the list shows what a search found
    bool formatChosen = false;   // the keyboard is on a row of the list that shows a format
    bool severalChosen = false;  // the keyboard is on one of several chosen rows
    bool canTakeBack = false;    // what was deleted last can be put back
};

struct CommandRow {
    MainCommand command;
    // The numbers of menu entries (a key sends its entry's), of the tray's menu and of the tool bar.
    std::span<const int> numbers;
    ActsOn actsOn;
    Who who;
    // Whether it makes sense. Asked with the node that the command would take, null for none.
    bool (*sensible)(const CommandSituation& situation, const Node* node);
    // What it does to the tree; null for a command that changes nothing there, or asks for itself.
    TreeAction (*action)(const Node* node) = nullptr;
};

// In the order of MainCommand.
std::span<const CommandRow> MainCommandRows();
// Null for a number that stands for no command.
const CommandRow* CommandRowOf(int number);

// The node that the command would take; null for none.
Node* NodeFor(const CommandRow& row, const CommandSituation& situation);
// Menu bar and tool bar are greyed by it: the command makes sense, and nothing forbids it.
bool IsAllowed(const CommandRow& row, const CommandSituation& situation);
// The same, and it may begin now: for a menu that opens over whatever is under way.
bool IsOffered(const CommandRow& row, const CommandSituation& situation);
// Nothing forbids it for this node, null for none; otherwise the user is told what does.
bool IsPermitted(const CommandRow& row, const Node* node);
