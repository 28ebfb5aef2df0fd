#pragma once

#include <windows.h>

#include <array>
#include <list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/clipboard/CClipBoard.h"
#include "engine/flows/CaptureWatch.h"
#include "engine/flows/ClipOperations.h"
#include "engine/flows/MainWindowHost.h"
#include "engine/flows/ProfileActions.h"
#include "engine/flows/SetClipFlow.h"
#include "engine/process/MayBegin.h"
#include "engine/profiles/ActiveContainer.h"
#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/NodeCollection.h"
#include "engine/views/HitList.h"
#include "engine/views/MainCommands.h"
#include "engine/views/StoredWindow.h"
#include "platform/Busy.h"
#include "platform/Platform.h"
#include "platform/win32/Win32User.h"
#include "windows/dialogs/frmDiagnose.h"
#include "windows/dialogs/frmErrorMsg.h"
#include "windows/dialogs/frmNotice.h"
#include "windows/main/DriveWatch.h"
#include "windows/main/LaterActions.h"
#include "windows/main/MainPanes.h"
#include "windows/main/SearchWorker.h"
#include "windows/main/TreeDrag.h"
#include "windows/main/cSysTray.h"

// The window's class, by which a second instance finds it.
inline constexpr const wchar_t* kMainWindowClass = L"NXClipMain";

// The main window: owns the tree, the panes and the menus, and ties the flows to them. It lives from its load
// to its unload, and clipboard changes are watched just as long.
//
// How its messages arrive stands in frmMain.cpp, its load and unload in frmMainLoad.cpp, what its commands do
// in frmMainCommands.cpp, the tree in frmMainTree.cpp and the list in frmMainList.cpp.
class frmMain : public MainWindowHost, private TreePane::Listener {
 public:
    // `user` shows its texts in the window's status bar while that lives; not owned.
    explicit frmMain(Win32User& user);
    ~frmMain() override;
    frmMain(const frmMain&) = delete;
    frmMain& operator=(const frmMain&) = delete;

    // Creates the window and loads it. False when there can be no window.
    bool Load();
    void Show();
    // From the end of its load to its unload.
    bool Stands() const { return loaded_; }
    // Shows the first-start dialog when it is due.
    void FirstStartAction();
    // For the moments without a message to handle and without an open dialog.
    void OnIdle();
    // For the moments in which nothing of the window is below on the stack: an end that waits begins.
    void OnRest();
    // Gives a message that the loop fetched to the window's keys; true when it was used.
    bool TranslateKey(MSG& message);

    // Lays out all controls for the splitter's left edge, in twips.
    void SizeControls(double splitterLeft) { panes_.SizeControls(splitterLeft); }
    // Makes a profile or folder the active container, null for none; a clip is ignored.
    void SetActiveContainer(Node* node);
    void SetProfileChanged(Node& node) override;
    bool SaveAllProfiles() override;
    // Shows the children, or the formats, of the selected node.
    void UpdateListview();
    // The clipboard changed while automatic capture is on.
    void UpdateClipBoard();
    // Puts the selected clip on the clipboard.
    void PrepareClipboard();
    Node* ImportProfileDirect(const std::wstring& directory);
    // The new profile's top node, or null.
    Node* BuildNewprofile(const std::wstring& name, const std::wstring& directory,
                          const std::wstring& templateFile);
    // Takes the automatic-capture flag from the tool bar's button.
    void UpdateAutoDetect();
    // Reflects the options in the tool bar, the menus and the window.
    void SetOptions();

    WindowHandle Window() override;
    NodeCollection& Nodes() override { return nodes_; }
    Node* ActiveContainer() override { return container_.Get(); }
    bool LockPressed() override;
    void Later(std::chrono::milliseconds delay, std::function<void()> action) override;
    void SelectAndShow(Node& node) override;
    void BringToFront() override;
    void EditClipProperties(Node& node, bool unasked) override;
    void Minimise() override;

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool CreateControls();
    bool CreateTray();
    void ShowSwitches();
    // The icon in the notification area says what becomes of the next copy.
    void ShowCaptureState();
    // The task bar is there, or there once more: for another resolution too.
    void OnTaskBarCreated();
    void SystemLookChanged(UINT message, WPARAM wParam, LPARAM lParam);
    void Form_Resize(WPARAM kind);
    bool IsOnlyInTray() const;
    LRESULT OnNotify(NMHDR& header);
    LRESULT OnListNotify(NMHDR& header);
    // The window back from the tray or the task bar, in front of the others, with the dialog over it, and the
    // keyboard in the pane that had it.
    void Restore();
    // Gives the keyboard to that pane, unless one has it or the window is not the active one.
    void TakeKeyboard();
    void Close();
    // F6: the keyboard goes to the next of tree, splitter, list, preview and tool bar.
    void GoToNextPane(bool back);
    void EndSession();
    // True when `who` may begin now: what has to end first has ended.
    bool Begins(Who who);
    // Closes the window as soon as nothing is under way.
    void EndAtRest();
    // True when the window must not go now: a control below on the stack would go on with itself.
    bool WaitsForAControl();
    // Ends the menu, the drag and the rename that are under way. The system's loops of the first two come
    // back when this has returned.
    void EndWhatIsOpen();
    // Closing by the window's own button or by a key leaves an icon while captures go on, if the user wants
    // it.
    bool ClosesToIcon() const;
    void CloseToIcon();
    // The child that has the keyboard, or had it when the window was last active.
    HWND FocusedPane() const;

    // frmMainLoad.cpp
    void Form_Load();
    void Form_Unload();
    void JoinViewerChain();
    void HideTestMenu();
    void StorePlaces();
    void WorkWhenIdle();
    void StorePlacesSoon();
    void StoreEverything();
    void ReadFormatSets();
    void ExitHook();

    // frmMainCommands.cpp
    using Action = void (*)(frmMain& form, Node* node);
    static Action ActionOf(MainCommand command);
    CommandSituation Situation() const;
    void OnCommand(int number);
    // Runs the command with this number for the node that the situation gives it.
    void RunCommand(int number, const CommandSituation& situation);
    void RefreshCommands();
    void ShowContextMenu(HWND source, POINT point);
    void ShowTrayMenu();
    // Pops up a menu at a point of the screen and runs what was chosen for the node that it was opened for.
    void TrackMenu(int menu, POINT point, Node* chosen);
    // A profile that was made or attached is shown; the first one is the container of what is captured now.
    void ShowNewProfile(Node& profile, bool isFirst);
    void NewProfile();
    void ImportProfile();
    void UnlinkProfile(Node* profile);
    void SearchLostClips(Node* profile);
    void ExportNode(Node* node);
    void Delete(Node* node);
    void EmptyDeleted(Node* profile);
    void UndoDelete();
    void MoveTo(Node* node);
    void MarkAll();
    void RemoveOldDeleted();
    void KeepNewest();
    void NewFolder(Node* container);
    void Rename(Node* node);
    // Null, or any node that is no clip, does nothing.
    void PutOnClipboard(const Node* clip, const FormatFilter& wanted = {});
    void PutChosenFormatOnClipboard(const Node* clip);
    void ShowProperties(Node* node);
    // True when the dialog was confirmed.
    bool ShowPropertiesOf(Node& node);
    void Search(bool again);
    void ShowOptions();
    void TellHotKeyTaken();
    // As its button stands, and to the other side.
    void ToggleLock();
    void SwitchLock();
    void SwitchAutoDetect();
    void ShowFormatSets();
    void ShowFirstStart();
    void ShowDiagnosis();
    void ShowFormatQuery();

    // frmMainTree.cpp: what the user does in the tree.
    void TreeSelectionChanged(Node* node) override;
    bool MayEditLabel(Node& node) override;
    bool LabelEdited(Node& node, const std::wstring& text) override;
    void DragStarted(Node& node) override;
    void NodeActivated(Node& node) override;
    // From another program, which waits meanwhile: they are taken later.
    void FilesDropped(Node& container, std::vector<std::wstring> paths);
    void ImportDropped();

    // frmMainList.cpp: what the user does in the list.
    // Enter or a double click on a row: a clip goes on the clipboard, if the user wants that; everything else
    // is opened, its first row chosen.
    void UseListRow(int row);
    void OpenListRow(int row);
    // The one that is left is the chosen row then.
    void OpenFolderAbove();
    // A name is edited in its row. The first is false where it may not be.
    bool BeginListEdit(int row);
    void ShowInListEdit(const std::wstring& text) const;
    void EndListEdit(bool confirmed);
    // Renames by the edit that has ended, if one has.
    void TakeListName();
    void EndListEditNow();
    void ForgetEndedEdits();
    void RenameEdited(const std::wstring& text);
    // What the hot key does: the window comes back, and with it, if the user wants that, the newest clip of
    // the active container under the cursor.
    void HotKeyPressed();
    void ShowNewestClip();
    // The node that a row shows; null for a format.
    Node* NodeOfListRow(int row) const;
    // The row that shows a node; -1 for none.
    int ListRowOf(const Node* node) const;
    // The node that is chosen where the keyboard is, in the list or in the tree; null for none.
    Node* ChosenNode() const;
    // All of them: of several rows that are chosen each one, in the order of the list.
    std::vector<Node*> ChosenNodes() const;
    bool SeveralChosen() const;
    // The node that a command was given, or all that are chosen when it is one of them.
    std::vector<Node*> NodesFor(Node* node) const;
    bool KeyboardIsInList() const;
    void ChooseRowsOf(::ChosenNodes nodes);
    void ShowPlaced(::ChosenNodes placed);
    void DragFromList();
    void ShowHowMany();
    // The format of the open clip that is chosen in the list, while the keyboard is there; null for none.
    const CFormat* ChosenFormat() const;
    void ListRowChosen();
    // The preview shows the chosen row's clip; without one, what the open node gives.
    void PreviewChosenRow();
    void KeepListRow(int row);
    void SortList(const ListOrder& order);
    void SortHits(const ListOrder& order);

    void ShowContainer();

    // frmMainSearch.cpp: the search over the list.
    // The node below which is searched; null for everywhere.
    Node* SearchScope() const;
    void ShowSearchHint();
    void BeginSearch();
    void FilterChanged();
    void SearchBehindTheKeys();
    void SearchForTyped();
    void SearchFor(Node* below);
    // For the end of the search: the list as it was.
    void RememberList();
    void EndSearch();
    bool LeavesSearch() const;
    void ShowHits();
    void ShowInOrder();
    // After a change of the tree.
    void UpdateHits();
    void ReadContents();
    void StartReading();
    void ContentsAreRead();
    void TakeSearchNews();
    void LookAtDrive();
    void ShowInTree(Node* node);
    PreviewHit HitOfRow(int row) const;
    // Letters typed in the list lead to a row or, where none begins with them, begin a search.
    int FindListRow(const NMLVFINDITEMW& find);
    // True for a key of the search that was used.
    bool TranslateSearchKey(const MSG& message);

    // Nothing that was posted is left: menus and dialogs have closed, their commands are done.
    void WhenQuiet();
    void RefreshOrTakeMissedCopy();
    void TakeOverFreed();

    Win32User& user_;
    HWND window_ = nullptr;
    HACCEL keys_ = nullptr;
    HWND lastFocus_ = nullptr;

    NodeCollection nodes_;
    CTreeViewEx cTV;
    ::ActiveContainer container_{cTV};
    ClipOperations operations_{cTV, container_};
    ProfileActions profiles_{cTV, container_};
    MainPanes panes_{nodes_};
    TreeDrag drag_{panes_.tvTreeView, cTV, operations_, [this](::ChosenNodes placed) { ShowPlaced(placed); },
                   [this](Node& container, std::vector<std::wstring> paths) {
                       FilesDropped(container, std::move(paths));
                   }};
    struct DroppedFiles {
        DroppedFiles(Node& into, std::vector<std::wstring> all) : container(&into), paths(std::move(all)) {}
        NodeRef container;
        std::vector<std::wstring> paths;
    };
    std::list<DroppedFiles> dropped_;  // that are still to be taken
    NodeRef shownNode_;                // whose content the list shows
    NodeRef listNode_;                 // of the chosen row
    bool fieldHasTip_ = false;
    bool several_ = false;  // the status bar says how many rows are chosen
    NodeRef movedTo_;       // where the user sent something last
    bool filling_ = false;
    NodeRef editedNode_;  // whose name is edited in the list
    std::optional<BusyScope> listEdit_;
    std::optional<std::wstring> listName_;  // was typed and is still to be taken over

    HitList hits_{nodes_, ThePlatform().clock};
    SearchWorker searchWorker_;
    NodeRef searchedOpen_;  // below which the search began
    NodeRef openBefore_;    // the tree's selection before it, and the list's row and place
    int rowBefore_ = -1;
    int topRowBefore_ = 0;
    bool searchesEverywhere_ = false;
    bool keepsSearch_ = false;  // what is selected in the tree is not the user's choice

    MainState firstState_ = MainState::Normal;
    bool loaded_ = false;
    std::optional<BusyScope> menu_;
    int menuLoops_ = 0;  // of the menus that are open
    Timer quiet_{[this] { WhenQuiet(); }};
    LaterActions later_;
    double storedSplitter_ = 0;
    Once takesListName_{*this, [this] { TakeListName(); }, Who::TypedName};
    Once placesRested_{*this, [this] { StorePlaces(); }};
    Once lookForFreed_{*this, [this] { TakeOverFreed(); }};
    Once searching_{*this, [this] { SearchBehindTheKeys(); }};
    Once reading_{*this, [this] { StartReading(); }};
    Once looksAtDrive_{*this, [this] { LookAtDrive(); }};
    Once previewing_{*this, [this] { PreviewChosenRow(); }};
    Once readsFormatSets_{*this, [this] { ReadFormatSets(); }};
    Once importing_{*this, [this] { ImportDropped(); }};
    std::optional<BusyScope> end_;  // the window goes at rest
    Once keepsNewest_{*this, [this] { KeepNewest(); }};
    Once removesOldDeleted_{*this, [this] { RemoveOldDeleted(); }};
    frmNotice notice_{[this] { telling_.PutOff(); }};
    Once telling_{*this, [this] { notice_.ShowNext(window_); }, Who::BoxToldLater};

    CClipBoard clipBoard_;
    CaptureWatch captures_{*this, clipBoard_};
    SetClipFlow setClip_{*this, clipBoard_};
    frmDiagnose diagnosis_{clipBoard_, [this] { return captures_.LastUpdate(); }};
    frmErrorMsg formatQuery_{clipBoard_};
    std::array<UniqueIcon, 4>
        trayIcons_;  // by CaptureState, loaded when first shown; they go behind the tray
    std::optional<CaptureState> shownState_;
    cSysTray cSysTray1;
    UINT taskBarCreated_ = 0;
    DriveWatch drives_;
};
