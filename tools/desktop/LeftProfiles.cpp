#include "desktop/LeftProfiles.h"

#include "desktop/Utf8.h"
#include "engine/profiles/DirectoryCheck.h"
#include "platform/win32/Win32Platform.h"

namespace {

namespace fs = std::filesystem;

// The machine, in force for a scope: these programs are not run by the engine.
class OnThisMachine {
 public:
    OnThisMachine() : before_(UsePlatform(&machine_.platform)) {}
    ~OnThisMachine() { UsePlatform(before_); }
    OnThisMachine(const OnThisMachine&) = delete;
    OnThisMachine& operator=(const OnThisMachine&) = delete;

 private:
    Win32Platform machine_;
    Platform* const before_;
};

// The first save of a new profile begins with its journal alone: nothing stood there yet.
bool HoldsProfile(const fs::path& directory) {
    return fs::exists(directory / L"nxclip.nxp");
}

void LookAt(const fs::path& directory, LeftProfiles& left) {
    if (!HoldsProfile(directory)) return;
    for (const Finding& finding : CheckDirectory(directory.wstring()).findings) {
        if (finding.damage == Damage::SaveBrokenOff) ++left.brokenSaves;
        if (IsLoss(finding.damage)) left.losses.push_back(Utf8(directory.wstring() + L" " + TextOf(finding)));
    }
}

}  // namespace

LeftProfiles ProfilesLeftBelow(const fs::path& directory) {
    const OnThisMachine machine;
    LeftProfiles left;
    LookAt(directory, left);
    for (const auto& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_directory()) LookAt(entry.path(), left);
    return left;
}
