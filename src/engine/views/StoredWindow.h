#pragma once

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

void StoreMainWindow(MainState state, const StoredPlace& place);
void StoreSplitterPlace(double left);
