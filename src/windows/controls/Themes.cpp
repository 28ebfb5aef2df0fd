#include "windows/controls/Themes.h"

// The visual styles need <windows.h> in front of them.
#include <uxtheme.h>

#include "platform/win32/LateFunction.h"

void LookLikeTab(HWND page) {
    static const auto enable =
        LateFunction<decltype(&EnableThemeDialogTexture)>(L"uxtheme.dll", "EnableThemeDialogTexture");
    if (enable != nullptr) enable(page, ETDT_ENABLETAB);
}
