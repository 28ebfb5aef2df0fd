#include "windows/main/MainPlace.h"

#include "windows/controls/Boxes.h"
#include "windows/controls/Dpi.h"

namespace {

MONITORINFO MonitorOf(const RECT& area) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor;
}

// The place that a maximised window goes back to, on the screen: the system gives it seen from the work area.
RECT NormalPlaceOf(HWND window) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    RECT area = placement.rcNormalPosition;
    const MONITORINFO monitor = MonitorOf(area);
    OffsetRect(&area, monitor.rcWork.left - monitor.rcMonitor.left,
               monitor.rcWork.top - monitor.rcMonitor.top);
    return area;
}

}  // namespace

MainState RestoreMainPlace(HWND window) {
    const StoredPlace place = ReadMainPlace();
    const UINT system = DpiOfSystem();
    // The window has the resolution of the monitor on which it stands.
    SetWindowPos(window, nullptr, PixelsFromTwips(place.left, system), PixelsFromTwips(place.top, system), 0,
                 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    const UINT own = DpiOfWindow(window);
    RECT wanted;
    wanted.left = PixelsFromTwips(place.left, system);
    wanted.top = PixelsFromTwips(place.top, system);
    wanted.right = wanted.left + PixelsFromTwips(place.width, own);
    wanted.bottom = wanted.top + PixelsFromTwips(place.height, own);
    const Box work = BoxOf(MonitorOf(wanted).rcWork);
    PlaceWindow(window,
                place.known ? BroughtIntoView(BoxOf(wanted), work) : WhollyInView(BoxOf(wanted), work));
    return ReadMainState();
}

void ShowAtFirst(HWND window, MainState state, bool asIcon) {
    if (!asIcon) {
        ShowWindow(window, state == MainState::Maximised   ? SW_SHOWMAXIMIZED
                           : state == MainState::Minimised ? SW_SHOWMINIMIZED
                                                           : SW_SHOWNORMAL);
        return;
    }
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    placement.showCmd = SW_SHOWMINIMIZED;
    if (state == MainState::Maximised) placement.flags |= WPF_RESTORETOMAXIMIZED;
    SetWindowPlacement(window, &placement);
}

void StoreMainPlace(HWND window) {
    if (IsIconic(window)) return;
    const bool maximised = IsZoomed(window) != 0;
    RECT area;
    GetWindowRect(window, &area);
    if (maximised) area = NormalPlaceOf(window);
    const UINT system = DpiOfSystem();
    const UINT own = DpiOfWindow(window);
    StoreMainWindow(
        maximised ? MainState::Maximised : MainState::Normal,
        {TwipsFromPixels(area.left, system), TwipsFromPixels(area.top, system),
         TwipsFromPixels(area.right - area.left, own), TwipsFromPixels(area.bottom - area.top, own)});
}
