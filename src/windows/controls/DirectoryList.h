#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "windows/controls/DirectoryReader.h"

// The part that both choosers share: a combo box with the drives and a list box with the directories from the
// drive's root down to the current one and those inside it.
class DirectoryList {
 public:
    // `changed` is called after each change of the current directory.
    void Attach(HWND drives, HWND directories, std::function<void()> changed);

    // Where the list stands, a drive's root with "\" at its end.
    const std::wstring& Directory() const { return directory_; }
    const DirectoryContent& Content() const { return content_; }

    // Goes to a directory; one that cannot be read is told to the user, and the list goes back to drive "c:".
    void GoTo(const std::wstring& path);

    // The notifications of the two boxes.
    void DriveChosen();
    // The chosen entry was activated by a double click or by Enter. False when that leads nowhere.
    bool EntryActivated();
    // A key in the list of directories: Right opens the chosen one, Left goes up. The result is that of
    // WM_VKEYTOITEM.
    LRESULT KeyPressed(UINT key);

 private:
    // The directory that the list's selection names.
    std::wstring Selected() const;
    bool TryDirectory(const std::wstring& directory);
    void FillDrives();
    void FillDirectories();
    void ShowDrive();

    HWND drives_ = nullptr;
    HWND directories_ = nullptr;
    std::function<void()> changed_;
    std::wstring directory_;
    DirectoryContent content_;
    std::vector<std::wstring> entries_;  // the full path behind each line of the list
};
