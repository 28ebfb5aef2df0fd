#include "windows/main/DriveWatch.h"

#include <dbt.h>

#include <set>
#include <utility>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileAttachment.h"

namespace {

bool IsOnRemovableDrive(const std::wstring& directory) {
    constexpr std::size_t kDrive = 2;  // "E:"
    return directory.size() > kDrive && directory[1] == L':' &&
           GetDriveTypeW((directory.substr(0, kDrive) + L'\\').c_str()) == DRIVE_REMOVABLE;
}

HDEVNOTIFY NotificationOf(HWND window, FileHandle lock) {
    DEV_BROADCAST_HANDLE filter{};
    filter.dbch_size = sizeof filter;
    filter.dbch_devicetype = DBT_DEVTYP_HANDLE;
    filter.dbch_handle = SystemFile(lock);
    return RegisterDeviceNotificationW(window, &filter, DEVICE_NOTIFY_WINDOW_HANDLE);
}

}  // namespace

void DriveWatch::WatchHeldProfiles(HWND window) {
    std::set<FileHandle> held;
    for (const CProfile* entry : Profiles().NewEnum()) {
        const FileHandle lock = entry->File.LockFile();
        if (lock == FileHandle::None) continue;
        held.insert(lock);
        // The number of a lock that was given up may be that of another one now.
        Looked& looked = looked_[lock];
        if (std::exchange(looked.directory, entry->Directory) == entry->Directory) continue;
        const bool goes = IsOnRemovableDrive(entry->Directory);
        looked.notification.Reset(goes ? NotificationOf(window, lock) : nullptr);
    }
    std::erase_if(looked_, [&](const auto& looked) { return !held.contains(looked.first); });
}

void DriveWatch::DeviceChanged(WPARAM event, LPARAM data) {
    if (event != DBT_DEVICEQUERYREMOVE || data == 0) return;
    const auto* const device = reinterpret_cast<const DEV_BROADCAST_HANDLE*>(data);
    if (device->dbch_devicetype != DBT_DEVTYP_HANDLE) return;
    const FileHandle lock = EngineFile(device->dbch_handle);
    LetProfileGo(lock);
    looked_.erase(lock);
}
