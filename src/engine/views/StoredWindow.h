#pragma once

#include <string>
#include <vector>

// The main window's place as it is kept in the settings store, in twips (1440th of an inch).

enum class MainState : int { Normal = 0, Minimised = 1, Maximised = 2 };

struct StoredPlace {
    double left = 1000;
    double top = 1000;
    double width = 13500;
    double height = 9000;
    bool known = false;  // the store says something of it
};

// What the store says, the defaults where it says nothing or nonsense. The size is at least the window's
// smallest one.
MainState ReadMainState();
StoredPlace ReadMainPlace();
double ReadSplitter(double absent);

// What of the window is shown, and how.
struct StoredView {
    bool toolBar = true;
    bool statusBar = true;
    bool preview = true;
    bool stretch = false;
    int listMode = 3;     // as the view's menu counts them from 0; 3 are the details
    int sortColumn = -1;  // of the list, from 0; -1 for the order of the tree
    bool sortDescending = false;

    friend bool operator==(const StoredView&, const StoredView&) = default;
};
StoredView ReadView();
void StoreView(const StoredView& view);

// The widths of the list's columns, in twips, as the user made them: by the heading of the first one. Empty
// when nothing, or nothing sensible, is stored.
std::vector<int> ReadColumnWidths(const std::wstring& firstHeading);
void StoreColumnWidths(const std::wstring& firstHeading, const std::vector<int>& widths);

// All of it, or nothing: whatever fails, and wherever the process ends, the old place or the new one is read.
void StoreMainWindow(MainState state, const StoredPlace& place);
void StoreSplitterPlace(double left);
