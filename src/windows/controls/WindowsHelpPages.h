#pragma once

#include "engine/process/modHelp.h"

// The help's HTML pages in the user's browser, for systems without the help viewer.
class WindowsHelpPages : public HelpPages {
 public:
    bool ViewerWorks() override;
    bool OpenPage(const std::wstring& file) override;
};
