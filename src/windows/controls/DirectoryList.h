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

    // To be called when the list's font has become another one. Whoever draws a list's lines himself says how
    // high they are; the system takes its own font's height else.
    void FitLines();

    // Where the list stands, a drive's root with "\" at its end.
    const std::wstring& Directory() const { return directory_; }
    const DirectoryContent& Content() const { return content_; }

    // Goes to a directory; one that cannot be read is told to the user, and the list goes back to drive "c:".
    void GoTo(const std::wstring& path);
    // Goes to a directory, or stays without a word and is false when it cannot be read.
    bool TryToGo(const std::wstring& path);

    // The notifications of the two boxes.
    void DriveChosen();
    // The chosen entry was activated by a double click or by Enter. False when that leads nowhere.
    bool EntryActivated();
    // The messages that a dialog gets for the list of directories, which is drawn by its owner: what lies in
    // a directory stands indented below it. True when it was one of those, with what the procedure returns.
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

 private:
    struct Entry {
        std::wstring path;
        std::size_t level = 0;  // below the drive's root
    };

    // Right opens the chosen directory, Left goes up. The result is that of WM_VKEYTOITEM.
    LRESULT KeyPressed(UINT key);
    void Draw(const DRAWITEMSTRUCT& item) const;
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
    std::vector<Entry> entries_;  // behind each line of the list
};
