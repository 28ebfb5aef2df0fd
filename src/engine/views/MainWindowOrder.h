#pragma once

// The order in which the main window comes and goes. It matters: a clipboard change may arrive as soon as the
// window stands in the viewer chain, and what the program promised on the clipboard must be real before it
// leaves the chain.

// The steps, each done by the window itself.
class MainWindowSteps {
 public:
    virtual ~MainWindowSteps() = default;

    virtual void AddHotKey() = 0;
    virtual void JoinViewerChain() = 0;
    virtual void ClearPreview() = 0;
    // Context menus are no part of the menu bar; the test menu is there only with the debug log.
    virtual void HideMenus() = 0;
    // Reads the state; the place only in the normal one.
    virtual void RestoreGeometry() = 0;
    virtual void ShowCaption() = 0;
    virtual void LoadFormatTables() = 0;
    virtual void LoadProfiles() = 0;
    virtual void RestoreActiveContainer() = 0;
    virtual void MinimiseIfWanted() = 0;
    virtual void ShowTrayIconIfWanted() = 0;
    virtual void ApplyOptions() = 0;

    virtual void CloseFormatQuery() = 0;
    virtual void RenderWhatIsPromised() = 0;
    virtual void RemoveHotKey() = 0;
    virtual void LeaveViewerChain() = 0;
    // Place and state, unless the window is minimised.
    virtual void StoreGeometry() = 0;
    virtual void StoreSplitter() = 0;
    virtual void StoreOptions() = 0;
    virtual void StoreActiveContainer() = 0;
    virtual void StoreProfileList() = 0;
    virtual void StoreFormatSets() = 0;
    // What could not be saved when it was changed is tried once more.
    virtual void SaveWhatIsLeft() = 0;
};

void LoadMainWindow(MainWindowSteps& window);
void UnloadMainWindow(MainWindowSteps& window);
