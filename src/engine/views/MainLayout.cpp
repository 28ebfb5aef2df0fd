#include "engine/views/MainLayout.h"

#include <algorithm>

namespace {

int Positive(int length) {
    return std::max(0, length);
}

// The list keeps a little more than half of the height when the preview stands below it.
constexpr int kListShareOfTen = 5;

// How much of the title bar must lie on the monitor for a hand to reach it.
constexpr int kReachablePixels = 48;

}  // namespace

LayoutResult LayOutMainWindow(const LayoutInput& input) {
    LayoutResult result;
    const int top = std::min(input.toolBarHeight, input.height);
    const int bottom = std::max(top, input.height - input.statusBarHeight);
    result.toolBar = {0, 0, input.width, input.toolBarHeight};
    result.statusBar = {0, bottom, input.width, input.statusBarHeight};

    const int splitterLeft = std::clamp(input.splitterLeft, 0, Positive(input.width - input.splitterWidth));
    result.tree = {0, top, splitterLeft, bottom - top};
    result.splitter = {splitterLeft, top, input.splitterWidth, bottom - top};

    const int left = result.splitter.Right();
    const int width = Positive(input.width - left);
    const int titleHeight = std::min(input.titleHeight, bottom - top);
    const int searchWidth = std::min(input.searchWidth, width / 2);
    result.title = {left, top, width - searchWidth, titleHeight};
    result.search = {result.title.Right(), top, searchWidth, titleHeight};
    const int listTop = top + titleHeight;
    const int right = bottom - listTop;
    const int listHeight = input.previewShown ? right * kListShareOfTen / 10 : right;
    result.list = {left, listTop, width, listHeight};
    if (input.previewShown) result.formatTab = {left, result.list.Bottom(), width, right - listHeight};
    return result;
}

double ClampSplitter(double leftTwips, double windowWidthTwips) {
    // In a window too narrow for both margins the right one gives way last.
    const double most = windowWidthTwips - kSplitterMarginTwips;
    return std::min(std::max(leftTwips, kSplitterMarginTwips), std::max(most, 0.0));
}

Box WhollyInView(const Box& window, const Box& monitor) {
    Box moved = window;
    moved.width = std::min(window.width, monitor.width);
    moved.height = std::min(window.height, monitor.height);
    moved.left = std::clamp(window.left, monitor.left, monitor.Right() - moved.width);
    moved.top = std::clamp(window.top, monitor.top, monitor.Bottom() - moved.height);
    return moved;
}

Box BroughtIntoView(const Box& window, const Box& monitor) {
    const bool reachable = window.Right() >= monitor.left + kReachablePixels &&
                           window.left <= monitor.Right() - kReachablePixels && window.top >= monitor.top &&
                           window.top <= monitor.Bottom() - kReachablePixels;
    return reachable ? window : WhollyInView(window, monitor);
}
