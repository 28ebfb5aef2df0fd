#pragma once

#include <windows.h>

#include "platform/win32/SystemHandles.h"

// The font that the user chose for messages and dialogs, at a window's resolution (dots per inch).
LOGFONTW MessageFont(UINT dpi);

UniqueFont CreateMessageFont(UINT dpi, LONG weight = FW_NORMAL);
