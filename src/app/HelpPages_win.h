#pragma once

#include "app/modHelp.h"

// The help's HTML pages in the user's browser, for a Windows that has no help viewer any more.
class WindowsHelpPages : public HelpPages {
 public:
    bool ViewerWorks() override;
    bool OpenPage(const std::wstring& file) override;
};
