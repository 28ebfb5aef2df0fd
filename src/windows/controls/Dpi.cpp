#include "windows/controls/Dpi.h"

#include "platform/win32/LateFunction.h"

namespace {

// These calls came with Windows 10.
template <typename Function>
Function FindInUser32(const char* name) {
    return LateFunction<Function>(L"user32.dll", name);
}

}  // namespace

UINT DpiOfSystem() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? static_cast<UINT>(dpi) : 96;
}

UINT DpiOfWindow(HWND window) {
    static const auto getDpiForWindow = FindInUser32<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const UINT dpi = getDpiForWindow != nullptr ? getDpiForWindow(window) : 0;
    return dpi != 0 ? dpi : DpiOfSystem();
}

UINT DpiOfPrimaryMonitor() {
    // Of Windows 8.1; the first number says which kind of resolution, the window managers' own.
    static const auto ofMonitor =
        LateFunction<HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*)>(L"shcore.dll", "GetDpiForMonitor");
    UINT across = 0, down = 0;
    const HMONITOR primary = MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY);
    const bool known = ofMonitor != nullptr && SUCCEEDED(ofMonitor(primary, 0, &across, &down)) && down != 0;
    return known ? down : DpiOfSystem();
}

bool MetricsForDpi(NONCLIENTMETRICSW& metrics, UINT dpi) {
    static const auto forDpi =
        FindInUser32<BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT)>("SystemParametersInfoForDpi");
    metrics.cbSize = sizeof metrics;
    if (forDpi != nullptr && forDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) return true;
    return SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != 0;
}

int SystemMetricForDpi(int metric, UINT dpi) {
    static const auto forDpi = FindInUser32<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
    return forDpi != nullptr ? forDpi(metric, dpi) : GetSystemMetrics(metric);
}
