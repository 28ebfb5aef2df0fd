#pragma once

#include <windows.h>

#include <map>
#include <string>

#include "platform/Handles.h"
#include "platform/win32/SystemHandles.h"

// Lets a profile go when the stick that it lies on is to be ejected: the file that keeps its directory would
// stand in the way. It can only be read then, until it is found free again.
class DriveWatch {
 public:
    // The window is told before a drive goes (WM_DEVICECHANGE): of each profile that is held now and lies on
    // a removable drive.
    void WatchHeldProfiles(HWND window);
    // For that message.
    void DeviceChanged(WPARAM event, LPARAM data);

 private:
    using UniqueNotification = UniqueHandle<ClosedByCall<HDEVNOTIFY, &UnregisterDeviceNotification>>;

    // What kind of drive it is takes a question to the system each time.
    struct Looked {
        std::wstring directory;
        UniqueNotification notification;  // empty unless the drive is removable
    };
    std::map<FileHandle, Looked> looked_;  // by the lock that is held
};
