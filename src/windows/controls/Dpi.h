#pragma once

#include <windows.h>

// Resolutions in dots per inch. Windows before version 10 has one for all monitors; these ask for the
// window's own where the system knows it.
UINT DpiOfWindow(HWND window);
UINT DpiOfSystem();
// The notification area is on the primary monitor.
UINT DpiOfPrimaryMonitor();

// SystemParametersInfo and GetSystemMetrics for one resolution.
bool MetricsForDpi(NONCLIENTMETRICSW& metrics, UINT dpi);
int SystemMetricForDpi(int metric, UINT dpi);

// Lengths drawn for 96 dots per inch.
inline int Scaled(int pixelsAt96, UINT dpi) {
    return MulDiv(pixelsAt96, static_cast<int>(dpi), 96);
}

// A twip is the 1440th part of an inch.
inline int PixelsFromTwips(double twips, UINT dpi) {
    const double pixels = twips * dpi / 1440.0;
    return static_cast<int>(pixels < 0 ? pixels - 0.5 : pixels + 0.5);
}
inline double TwipsFromPixels(int pixels, UINT dpi) {
    return pixels * 1440.0 / dpi;
}
