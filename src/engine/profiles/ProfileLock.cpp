#include "engine/profiles/ProfileLock.h"

#include "platform/Paths.h"
#include "platform/Platform.h"

namespace {

std::wstring LockPathOf(const std::wstring& directory) {
    return WithBackslash(directory) + L"nxclip.lck";
}

}  // namespace

ProfileLock::ProfileLock(const std::wstring& directory) {
    FilePort& files = ThePlatform().files;
    file_.Reset(files.Open(LockPathOf(directory), FileUse::Lock));
    heldByOther_ = !file_.IsSet() && files.LastError() == kErrorSharingViolation;
}

bool IsKept(const std::wstring& directory) {
    return ThePlatform().files.Exists(LockPathOf(directory)) && ProfileLock(directory).HeldByOther();
}
