#pragma once

#include <string>

#include "platform/FileBytes.h"

// Keeps a profile's directory for this program: a file "nxclip.lck" stands in it that nobody else can lock,
// until this program ends, however that happens. Who copies the directory may read it.
class ProfileLock {
 public:
    // Keeps nothing.
    ProfileLock() = default;
    // Takes the directory if it is free. Where no file can be made, because the directory can only be read or
    // is gone, it counts as free: whoever writes there hears why that fails.
    explicit ProfileLock(const std::wstring& directory);

    // Another program keeps the directory: what is in it may only be read.
    bool HeldByOther() const { return heldByOther_; }
    bool Held() const { return file_.IsSet(); }
    FileHandle File() const { return file_.Get(); }
    // Gives the directory up, be it for whom it may: until it is taken anew it counts as another program's.
    void LetGo() {
        file_.Reset();
        heldByOther_ = true;
    }

 private:
    FileOwner file_;
    bool heldByOther_ = false;
};

// Whether a program, be it this one, keeps the directory. Nobody is kept out by the question; what a killed
// program left of its lock goes by it.
bool IsKept(const std::wstring& directory);
