#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "desktop/ClipFile.h"
#include "desktop/ClipboardData.h"
#include "desktop/Driver.h"
#include "desktop/Input.h"
#include "desktop/LeftProfiles.h"
#include "desktop/Settings.h"
#include "desktop/Utf8.h"

// A test of the finished program: a driver, not started yet, and what most tests begin with.
class ProgramTest : public testing::Test {
 protected:
    explicit ProgramTest(const std::filesystem::path& program = ProgramFile()) : nxclip_(program) {}
    // However the test has ended the program, and if it has not: nothing is lost on the disk.
    void TearDown() override {
        nxclip_.Kill();
        const auto left = leavesWhole_ ? ProfilesLeftBelow(nxclip_.Directory()) : LeftProfiles();
        EXPECT_EQ(left.losses, std::vector<std::string>());
    }
    // The program with a profile "Profil" as its active container.
    void StartWithProfile() {
        nxclip_.Start();
        nxclip_.MakeProfile(L"Profil");
    }
    // And a clip in it of what `offers` puts on the clipboard.
    TreeLine SnapOf(const std::vector<ClipboardOffer>& offers) {
        PutFormats(offers);
        return nxclip_.Snap();
    }
    std::filesystem::path ClipFileAt(int number) const {
        return nxclip_.ProfileDirectory() / (L"C" + std::to_wstring(number) + L".nxc");
    }
    // The whole tree, opened, without the selection: that also follows the focus.
    std::wstring TreeOutline() const {
        nxclip_.Tree().ExpandAll();
        return nxclip_.Tree().Outline(false);
    }
    // By menu and dialog, below what is selected.
    void MakeFolder(const std::wstring& name) {
        nxclip_.Command(m_edit_newstruct);
        const Window dialog = nxclip_.WaitForDialog(L"Ordner-Eigenschaften");
        dialog.SetText(tbName, name);
        dialog.Press(cb_ok);
        Driver::WaitUntilGone(dialog);
    }

    // The program's control that has the keyboard.
    Window Focus() const {
        // A thread remembers its focus while another program has the keyboard.
        const DWORD thread = GetWindowThreadProcessId(nxclip_.Main().Handle(), nullptr);
        if (GetWindowThreadProcessId(GetForegroundWindow(), nullptr) != thread) return Window();
        return Window(nxclip_.Main().Thread().hwndFocus);
    }
    // The main window is in front, and what brought it there has come to its end: until then the focus moves.
    void WaitForFront() const {
        const Window main = nxclip_.Main();
        WaitFor("the window in front", [&] {
            return main.Visible() && !main.Minimised() && GetForegroundWindow() == main.Handle();
        });
        main.Send(WM_NULL);
    }
    // The row of the list that is chosen, or -1.
    int ChosenRow() const {
        return static_cast<int>(
            nxclip_.List().window().Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    // "Profil" with three clips "eins", "zwei", "drei"; the profile is open and the list shows them.
    void StartWithList() {
        StartWithProfile();
        for (const char* text : {"eins", "zwei", "drei"})
            SnapOf({{Private(), text}, {CF_TEXT, text + std::string(1, '\0')}});
        nxclip_.Tree().Select(L"Profil");
        WaitFor("the list", [&] { return nxclip_.List().Count() == 3; });
        BringToFront(nxclip_.Main());
    }
    void ChooseRow(int row) {
        Click(nxclip_.List().PlaceOf(row));
        WaitFor("the row", [&] { return ChosenRow() == row; });
    }

    static UINT Private() { return FormatNumber(L"NXClip Desktop Test"); }
    static UINT Marker() { return FormatNumber(L"NXClip"); }
    // Two formats that no known set matches and that the system makes no others of.
    static std::vector<ClipboardOffer> PrivateOffers() {
        return {{Private(), std::string("\0\1\2private", 10)},
                {FormatNumber(L"Rich Text Format"), "{\\rtf1 x}"}};
    }

    Driver nxclip_;
    // False in a test that damages files itself.
    bool leavesWhole_ = true;
};
