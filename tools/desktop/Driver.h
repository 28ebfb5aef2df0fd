#pragma once

#include <windows.h>

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "desktop/Controls.h"
#include "desktop/Process.h"
#include "desktop/ScratchDirectory.h"
#include "desktop/Wait.h"
#include "desktop/Window.h"
#include "resources/controls.h"

// A message box that the program shows.
struct Notice {
    Window window;
    std::wstring title;
    std::wstring text;
};

// The program file that is tested: NXCLIP_EXE of the environment, or NXClip.exe beside this program or one
// directory above.
std::filesystem::path ProgramFile();

// NXClip, driven from outside. A new one has no settings but those that keep start-up quiet, and a fresh
// directory with a copy of the program in it. When it goes, the program, its settings and the directory go.
class Driver {
 public:
    explicit Driver(const std::filesystem::path& program = ProgramFile());
    ~Driver();
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    // The program's directory, and the profile directory that is still to be made.
    const std::filesystem::path& Directory() const { return directory_.Path(); }
    std::filesystem::path ProfileDirectory() const { return Directory() / L"Profil"; }

    // Starts the program and waits for its main window; Launch does not wait.
    void Start(const std::wstring& arguments = L"");
    void Launch(const std::wstring& arguments = L"");
    void WaitForMain();
    // Ends the program by its menu and returns its exit code.
    DWORD Quit();
    // Quits and starts again, with settings and files as they are.
    void Restart();
    // Ends the program, whatever it is doing.
    void Kill() {
        if (process_ != nullptr) process_->Terminate();
    }
    bool Running() const { return process_ != nullptr && process_->Running(); }
    Process& Program() const { return *process_; }
    // Another one of the same program file.
    std::unique_ptr<Process> StartSecond() const;

    Window Main() const { return main_; }
    TreeControl Tree() const { return TreeControl(main_.Control(tvTreeView)); }
    ListControl List() const { return ListControl(main_.Control(lvListView)); }
    ToolBarControl ToolBar() const { return ToolBarControl(main_.Control(tbToolBar)); }
    StatusBarControl StatusBar() const { return StatusBarControl(main_.Control(sbStatusBar)); }
    TabControl FormatTab() const { return TabControl(main_.Control(tabFormat)); }
    std::wstring Title() const { return main_.TextOf(lblTitle); }

    // What a double click on the icon in the notification area does. Posted.
    void DoubleClickIcon() const;
    void Command(int number) const { main_.Command(number); }

    // Waits for a dialog of the program by its title.
    Window WaitForDialog(std::wstring_view title) const;
    // Waits until a dialog or message box has gone.
    static void WaitUntilGone(Window window);
    // Waits for a message box.
    Notice WaitForNotice() const;
    // Waits for a message box, answers it and returns its text.
    std::wstring AnswerNotice(int button = IDOK) const;
    static void Answer(const Notice& notice, int button);
    // Waits for the menu that a right click has opened.
    Window WaitForPopUpMenu() const;
    // No message box and no dialog is open.
    bool Quiet() const;

    void WaitForStatus(std::wstring_view text) const;
    // The whole tree, opened, without the selection: that also follows the focus.
    void WaitForTree(std::wstring_view outline) const;

    // By menu and dialog: a new profile in ProfileDirectory(), which becomes the active container.
    void MakeProfile(const std::wstring& name) const;
    // Presses the tool bar's button until it is as wanted.
    void SetAutoDetect(bool on) const;
    // The items of the whole tree, for WaitForNewClip.
    std::set<HTREEITEM> Items() const;
    // Waits until a clip that is not among `before` has been taken; it is selected then. Its line in the
    // tree.
    TreeLine WaitForNewClip(const std::set<HTREEITEM>& before,
                            std::chrono::milliseconds bound = kBound) const;
    // Takes the clipboard by command and waits for the clip.
    TreeLine Snap() const;
    // Puts the selected clip on the clipboard by command and waits for the success.
    void PutOnClipboard() const;
    void PutOnClipboard(std::wstring_view path) const;

 private:
    ScratchDirectory directory_;
    std::unique_ptr<Process> process_;
    Window main_;
};
