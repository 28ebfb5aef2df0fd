#include "engine/profiles/ProfileLock.h"

#include "platform/Paths.h"
#include "platform/Platform.h"

ProfileLock::ProfileLock(const std::wstring& directory) {
    FilePort& files = ThePlatform().files;
    file_.Reset(files.Open(WithBackslash(directory) + L"nxclip.lck", FileUse::Lock));
    heldByOther_ = !file_.IsSet() && files.LastError() == kErrorSharingViolation;
}
