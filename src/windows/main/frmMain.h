#pragma once

#include <windows.h>

#include <memory>

#include "engine/clipboard/CClipBoard.h"
#include "engine/flows/MainWindowHost.h"
#include "engine/flows/SetClipFlow.h"
#include "engine/flows/SnapFlow.h"
#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/ClipOperations.h"
#include "engine/profiles/ProfileActions.h"
#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/NodeCollection.h"
#include "engine/views/ListUpdate.h"
#include "engine/views/MainCommands.h"
#include "engine/views/MainWindowOrder.h"
#include "platform/win32/Win32User.h"
#include "windows/controls/SystemFont.h"
#include "windows/controls/TreePane.h"
#include "windows/dialogs/frmDiagnose.h"
#include "windows/dialogs/frmErrorMsg.h"
#include "windows/main/ListPane.h"
#include "windows/main/MainToolBar.h"
#include "windows/main/PreviewPane.h"
#include "windows/main/Splitter.h"
#include "windows/main/TreeDrag.h"
#include "windows/main/cSysTray.h"

// The main window: owns the tree, the list, the bars and the menus, and ties the flows to them. It lives from
// its load to its unload, both in the order of MainWindowOrder.h, and clipboard changes are watched just as
// long.
//
// What the window looks like and how its messages arrive stands in frmMain.cpp, the steps of its load and
// unload in frmMainLoad.cpp, what its commands do in frmMainCommands.cpp, and the tree and the list in
// frmMainTree.cpp.
// How often it is looked at whether a profile that another program has is free.
inline constexpr UINT_PTR kTakeOverTimer = 0x4E58;
inline constexpr UINT kTakeOverPause = 3000;  // milliseconds

class frmMain : public MainWindowHost,
                private MainWindowSteps,
                private TreePane::Listener,
                private TreeDragHost {
 public:
    // `user` shows its texts in the window's status bar while that lives; not owned.
    explicit frmMain(Win32User& user);
    ~frmMain() override;
    frmMain(const frmMain&) = delete;
    frmMain& operator=(const frmMain&) = delete;

    // Creates the window and loads it. False when there can be no window.
    bool Load();
    void Show();
    // Shows the first-start dialog when it is due.
    void FirstStartAction();
    // For the moments without a message to handle and without an open dialog.
    void OnIdle();
    // Gives a message that the loop fetched to the window's keys; true when it was used.
    bool TranslateKey(MSG& message);

    // Lays out all controls for the splitter's left edge, in twips.
    void SizeControls(double splitterLeft);
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
    Node* SearchForNode(Node* start);
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
    void ScrollIntoView(Node& node) override;
    void SelectAndShow(Node& node) override;
    bool MayOpenDialog() override;
    void BringToFront() override;
    void EditClipProperties(Node& node) override;
    void Minimise() override;

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool CreateControls();
    bool CreateTray();
    void ShowTrayMenu();
    void ApplyDpi(UINT dpi);
    void Form_Resize(WPARAM kind);
    void EnforceMinimumSize();
    LRESULT OnNotify(NMHDR& header);
    void ShowContextMenu(HWND source, POINT point);
    void ShowStatus(const std::wstring& text);
    // Pops up one of the context menus at a point of the screen.
    void TrackMenu(int menu, POINT point);
    void GreyMenu(HMENU menu);
    void RefreshCommands();
    // The active container changed or got another name.
    void ShowContainer();
    // Runs a change of the tree and shows what it left behind.
    void AfterTreeChange(Node* selected);
    // The window back from the tray or the task bar, in front of the others.
    void Restore();

    // The steps of load and unload.
    void AddHotKey() override;
    void JoinViewerChain() override;
    void ClearPreview() override;
    void HideMenus() override;
    void RestoreGeometry() override;
    void ShowCaption() override;
    void LoadFormatTables() override;
    void LoadProfiles() override;
    void RestoreActiveContainer() override;
    void MinimiseIfWanted() override;
    void ShowTrayIconIfWanted() override;
    void ApplyOptions() override { SetOptions(); }
    void CloseFormatQuery() override;
    void RenderWhatIsPromised() override;
    void RemoveHotKey() override;
    void LeaveViewerChain() override;
    void StoreGeometry() override;
    void StoreSplitter() override;
    void StoreOptions() override;
    void StoreActiveContainer() override;
    void StoreProfileList() override;
    void StoreFormatSets() override;
    void SaveWhatIsLeft() override;

    // What the user does in the tree.
    void TreeSelectionChanged(Node* node) override;
    bool MayEditLabel(Node& node) override;
    bool LabelEdited(Node& node, const std::wstring& text) override;
    void DragStarted(Node& node) override;
    void NodeActivated(Node& node) override;

    // Dragging in the tree.
    Node* DraggedNodeOf(const DraggedNode& payload) override;
    bool DropsInto(Node& source, Node* target, bool move, int offset, int rowHeight) override;
    bool MayDrop(Node& source, Node* target, bool into, bool move) override;
    void DraggedOver(int y, int height) override;
    void Dropped(Node* source, Node* target, bool into, bool move) override;

    // Runs the command of a menu entry, key or tool-bar button.
    void RunCommand(int command);
    // Enter or a double click on a row of the list does what it does in the tree.
    void OpenListRow(int row);
    // The node that a row shows; null for a format.
    Node* NodeOfListRow(int row) const;
    // While the list has the focus, what is chosen there becomes the tree's selection.
    void TakeSelectionFromList();

    void NewProfile();
    void ImportProfile();
    void UnlinkProfile();
    void DeleteSelected();
    void NewFolder();
    void RenameSelected();
    void ShowProperties();
    // True when the dialog was confirmed.
    bool ShowPropertiesOf(Node& node);
    void Activate();
    void Search(bool again);
    void SetListMode(ListMode mode);
    void ShowOptions();
    void ShowFormatSets();
    void ToggleToolBar();
    void ToggleStatusBar();
    void TogglePreview();
    void ToggleStretch();
    void ToggleLock();
    void SwitchAutoDetect(bool on);
    void ShowFirstStart();
    void ShowDiagnosis();
    void ShowFormatQuery();
    void ExitHook();
    void About();

    Win32User& user_;
    HWND window_ = nullptr;
    HWND sbStatusBar_ = nullptr;
    HWND lblTitle_ = nullptr;
    HACCEL keys_ = nullptr;
    UniqueFont font_;
    UniqueFont titleFont_;
    UniqueImageList treePictures_;
    UINT dpi_ = 96;

    NodeCollection nodes_;
    CTreeViewEx cTV;
    ::ActiveContainer container_{cTV};
    ClipOperations operations_{cTV, container_};
    ProfileActions profiles_{cTV, container_};
    TreePane tvTreeView_{nodes_};
    ListPane lvListView_;
    MainToolBar tbToolBar_;
    Splitter imgSplitter_;
    PreviewPane preview_;
    ListContent content_;
    double splitterLeft_ = 1900;  // twips
    bool toolBarShown_ = true;
    bool statusBarShown_ = true;
    bool previewShown_ = true;
    bool stretched_ = false;
    int showCommand_ = 1;  // how the window is first shown, SW_SHOWNORMAL
    bool loaded_ = false;
    // While another program has a profile: the timer runs, and a look at whether it is free is due.
    bool takeOverTimer_ = false;
    bool takeOverDue_ = false;
    int menusOpen_ = 0;

    CClipBoard clipBoard_;
    SnapFlow snap_{*this, clipBoard_};
    SetClipFlow setClip_{*this, clipBoard_};
    frmDiagnose diagnosis_{clipBoard_, [this] { return snap_.LastUpdate(); }};
    frmErrorMsg formatQuery_{clipBoard_};
    UniqueIcon trayIcon_;  // goes behind the tray that shows it
    cSysTray cSysTray1;
    UINT taskBarCreated_ = 0;
};
