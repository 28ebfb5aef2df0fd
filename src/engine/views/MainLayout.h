#pragma once

// Where the main window's parts stand. All lengths of the inner window are pixels of its own resolution; the
// splitter's place is kept in twips (1440th of an inch), so that it means the same on every monitor.

struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    int Right() const { return left + width; }
    int Bottom() const { return top + height; }
    friend bool operator==(const Box&, const Box&) = default;
};

struct LayoutInput {
    int width = 0;            // inner width of the window
    int height = 0;           // inner height of the window
    int toolBarHeight = 0;    // 0 while the tool bar is hidden
    int statusBarHeight = 0;  // 0 while the status bar is hidden
    int titleHeight = 0;      // of the label above the list
    int searchWidth = 0;      // of the field beside it, which takes no more than half of the room
    int splitterLeft = 0;     // the splitter's left edge
    int splitterWidth = 0;
    bool previewShown = false;
};

struct LayoutResult {
    Box toolBar;
    Box statusBar;
    Box tree;
    Box splitter;
    Box title;
    Box search;
    Box list;
    Box formatTab;  // empty while the preview is hidden; the preview stands inside it
};

LayoutResult LayOutMainWindow(const LayoutInput& input);

// The splitter stays this far from either side.
inline constexpr double kSplitterMarginTwips = 500;
double ClampSplitter(double leftTwips, double windowWidthTwips);

// The smallest size of the window in its normal state.
inline constexpr double kMinimumWidthTwips = 5400;
inline constexpr double kMinimumHeightTwips = 650;

// `window` moved, and shrunk where it must be, so that it lies wholly on the work area `monitor`.
Box WhollyInView(const Box& window, const Box& monitor);

// `window` moved, and shrunk where it must be, so that it lies on the work area `monitor` of the nearest
// monitor; as it is when its title bar can be reached there.
Box BroughtIntoView(const Box& window, const Box& monitor);
