#include "engine/views/MainWindowOrder.h"

void LoadMainWindow(MainWindowSteps& window) {
    window.AddHotKey();
    window.JoinViewerChain();
    window.ClearPreview();
    window.HideMenus();
    window.RestoreGeometry();
    window.ShowCaption();
    window.LoadFormatTables();
    window.LoadProfiles();
    window.RestoreActiveContainer();
    window.MinimiseIfWanted();
    window.ShowTrayIconIfWanted();
    window.ApplyOptions();
}

void UnloadMainWindow(MainWindowSteps& window) {
    window.CloseFormatQuery();
    window.RenderWhatIsPromised();
    window.ClearPreview();
    window.RemoveHotKey();
    window.LeaveViewerChain();
    window.StoreGeometry();
    window.StoreSplitter();
    window.StoreOptions();
    window.StoreActiveContainer();
    window.StoreProfileList();
    window.StoreFormatSets();
    window.SaveWhatIsLeft();
}
