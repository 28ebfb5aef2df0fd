#pragma once

#include <string>

#include "version.h"

// The program's version as major.minor.revision.
inline std::wstring ProgramVersion() {
    return std::to_wstring(NXCLIP_VERSION_MAJOR) + L"." + std::to_wstring(NXCLIP_VERSION_MINOR) + L"." +
           std::to_wstring(NXCLIP_VERSION_REVISION);
}
