#pragma once

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <string>

#include "engine/tree/Node.h"
#include "engine/views/TrayRules.h"
#include "platform/win32/SystemHandles.h"

using UniqueImageList = UniqueHandle<ClosedByCall<HIMAGELIST, &ImageList_Destroy>>;

// The program's pictures, found by their keys: the node kinds, the format kinds and the tool bar's buttons.

// All node and format pictures in one list, each `pixels` wide and high.
UniqueImageList LoadListPictures(int pixels);
// The index of a picture in such a list; the one for "unknown" when no picture has that key.
int ListPictureIndex(const std::wstring& key);
int ListPictureIndex(const ImageValue& image);

// The tool bar's pictures in the order of its buttons.
UniqueImageList LoadToolBarPictures(int pixels);

// The program's icon at a size in pixels.
UniqueIcon LoadProgramIcon(int pixels);
// The one for the notification area, by what it says of the automatic capture; the caller destroys it.
UniqueIcon LoadTrayIcon(CaptureState state, int pixels);
