#include "engine/profiles/ProfileLock.h"

#include "platform/Paths.h"
#include "platform/Platform.h"

ProfileLock::ProfileLock(const std::wstring& directory) {
    FilePort& files = ThePlatform().files;
    const FileHandle file = files.Open(WithBackslash(directory) + L"nxclip.lck", FileUse::Lock);
    if (file != FileHandle::None)
        file_ = std::make_unique<OpenFile>(file);
    else
        heldByOther_ = files.LastError() == kErrorSharingViolation;
}
