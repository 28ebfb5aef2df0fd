#include "windows/controls/ScreenBitmap.h"

BITMAPINFOHEADER TopDownHeader(int width, int height) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    return header;
}

UniqueBitmap MakeScreenBitmap(int width, int height, void** pixels) {
    BITMAPINFO info{};
    info.bmiHeader = TopDownHeader(width, height);
    void* bits = nullptr;
    UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (pixels != nullptr) *pixels = bits;
    return bitmap;
}
