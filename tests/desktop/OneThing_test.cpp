#include <windows.h>

#include <functional>
#include <string>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// One thing at a time: what arrives while a question, a menu or a dialog is open hits nothing below it.

namespace {

class OneThing : public ProgramTest {
 protected:
    // Another program copies; when this returns the program has been told.
    void OtherProgramCopies(const std::string& bytes) {
        PutFormats({{Private(), bytes}});
        nxclip_.Main().Send(WM_NULL);
    }
    // "Profil" with a clip of number 1, which is selected, and automatic capture on.
    void StartCapturing() {
        StartWithProfile();
        SnapOf(PrivateOffers());
        nxclip_.SetAutoDetect(true);
    }
    std::size_t Count() { return nxclip_.Tree().Lines().size(); }
    void WaitForFront(Window window) {
        WaitFor("the window in front", [&] { return GetForegroundWindow() == window.Handle(); });
    }
    Window NameEdit() {
        return Window(reinterpret_cast<HWND>(nxclip_.Tree().window().Send(TVM_GETEDITCONTROL)));
    }
    // Starts renaming the selected node.
    Window EditName() {
        BringToFront(nxclip_.Main());
        PressKeys({VK_F2});
        return WaitFor("the name to edit", [&] { return NameEdit(); });
    }
    // What `ends` does ends the program, and nothing stays behind.
    void ExpectEnd(const std::function<void()>& ends) {
        nxclip_.Program().MayEnd();
        ends();
        EXPECT_EQ(nxclip_.Program().WaitForEnd(), 0u);
        nxclip_.Start();
        nxclip_.Tree().ExpandAll();
    }
    // The mouse is down on the clip's row from here on, at the point that is returned.
    POINT HoldARow() {
        const POINT row = nxclip_.Tree().PlaceOf(L"Profil\\Clip");
        MoveMouse(row);
        MouseButton(true);
        WaitFor("the row to be held", [&] {
            const Window tree = nxclip_.Tree().window();
            return tree.Thread().hwndCapture == tree.Handle();
        });
        return row;
    }
    // A context menu's entry by its access key.
    Window OpenContextMenu(std::wstring_view path) {
        BringToFront(nxclip_.Main());
        RightClick(nxclip_.Tree().PlaceOf(path));
        return nxclip_.WaitForPopUpMenu();
    }
};

TEST_F(OneThing, Question_KeepsCapturesOutAndBelongsToTheMainWindow) {
    StartCapturing();
    nxclip_.Command(m_ext_diag);
    const Window diagnosis = nxclip_.WaitForDialog(L"Clipboard Diagnose");
    BringToFront(diagnosis);
    nxclip_.Command(m_edit_delete);
    const Notice question = nxclip_.WaitForNotice();
    EXPECT_EQ(GetWindow(question.window.Handle(), GW_OWNER), nxclip_.Main().Handle());
    EXPECT_FALSE(nxclip_.Main().Enabled()) << "a modeless window in front of it must not own the box";
    OtherProgramCopies("unter der Frage");
    nxclip_.Command(m_edit_insert);
    nxclip_.Command(m_tray_snap);
    nxclip_.Main().Send(WM_NULL);
    EXPECT_EQ(Count(), 2u);
    Driver::Answer(question, IDYES);
    nxclip_.WaitForTree(L"Profil [Camera]\n");
    EXPECT_TRUE(nxclip_.Main().Enabled());
    EXPECT_FALSE(std::filesystem::exists(ClipFileAt(1)));
}

TEST_F(OneThing, Dialog_LetsOnlyTheWindowBeBroughtBack) {
    StartCapturing();
    nxclip_.Command(mnuViewOptions);
    const Window options = nxclip_.WaitForDialog(L"Optionen");
    options.SetText(tbUnknownFormatSet, L"getippt");
    for (const int command : {m_tray_quit, m_tray_snap, m_edit_delete, m_tray_autosnap, mnuFileClose})
        nxclip_.Command(command);
    nxclip_.Main().Close();
    OtherProgramCopies("hinter dem Dialog");
    EXPECT_TRUE(nxclip_.Running());
    EXPECT_EQ(Count(), 2u);
    EXPECT_TRUE(nxclip_.ToolBar().Pressed(tbbAutoDetect));
    EXPECT_EQ(options.TextOf(tbUnknownFormatSet), L"getippt");

    const HWND other = CreateWindowExW(0, L"STATIC", L"anderes", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                       nullptr, nullptr, nullptr);
    const auto comesWithTheDialog = [&](const auto& bringBack) {
        BringToFront(Window(other));
        bringBack();
        WaitForFront(options);
    };
    comesWithTheDialog([&] { nxclip_.Command(m_tray_restore); });
    comesWithTheDialog([] { PressKeys({VK_CONTROL, VK_MENU, 'L'}); });
    comesWithTheDialog([&] { EXPECT_EQ(nxclip_.StartSecond()->WaitForEnd(), 0u); });
    DestroyWindow(other);
    PressKeys({VK_ESCAPE});
    Driver::WaitUntilGone(options);
    nxclip_.WaitForStatus(L"Während des Dialogs wurde kopiert: F5 erfasst es.");
    const std::set<HTREEITEM> before = nxclip_.Items();
    BringToFront(nxclip_.Main());
    PressKeys({VK_F5});
    nxclip_.WaitForNewClip(before);
    EXPECT_EQ(ReadClipFile(ClipFileAt(2)).front().bytes, "hinter dem Dialog");
    EXPECT_EQ(nxclip_.Quit(), 0u);
}

TEST_F(OneThing, Menu_HoldsTheCaptureBackAndItsCommandHitsItsNode) {
    StartCapturing();
    const Window menu = OpenContextMenu(L"Profil\\Clip");
    OtherProgramCopies("unter dem Menü");
    EXPECT_EQ(Count(), 2u);
    PressKeys({'L'});  // "Löschen"
    nxclip_.AnswerNotice(IDYES);
    // The clip that the menu was opened for is gone, and the copy is taken now. (Its item may have the place
    // in memory of the one that went, so the files tell.)
    WaitFor("the new clip instead of the old one", [&] {
        return !std::filesystem::exists(ClipFileAt(1)) && std::filesystem::exists(ClipFileAt(2));
    });
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Clip [Clip]\n");
    EXPECT_FALSE(menu.Exists() && menu.Visible());
    EXPECT_EQ(ReadClipFile(ClipFileAt(2)).front().bytes, "unter dem Menü");
}

TEST_F(OneThing, MenuOfThePreview_IsForTheTextThatItShows) {
    StartWithProfile();
    SnapOf({{CF_TEXT, std::string("gezeigt") + '\0'}});
    nxclip_.SetAutoDetect(true);
    const auto shown = [&] { return nxclip_.Main().TextOf(tbPreviewText); };
    WaitFor("the preview", [&] { return shown() == L"gezeigt"; });
    BringToFront(nxclip_.Main());
    const RECT box = nxclip_.Main().Control(tbPreviewText).Rectangle();
    RightClick({(box.left + box.right) / 2, (box.top + box.bottom) / 2});
    nxclip_.WaitForPopUpMenu();
    PutFormats({{CF_TEXT, std::string("darunter") + '\0'}});
    nxclip_.Main().Send(WM_NULL);
    EXPECT_EQ(Count(), 2u);
    EXPECT_EQ(shown(), L"gezeigt");
    PressKeys({VK_ESCAPE});
    WaitFor("the preview", [&] { return shown() == L"darunter"; });
}

TEST_F(OneThing, Rename_HoldsTheCaptureBackUntilTheNameIsWhole) {
    StartCapturing();
    nxclip_.Quit();
    WriteSetting(L"Settings", L"EditPropAfterSnap", L"1");
    nxclip_.Start();
    nxclip_.SetAutoDetect(true);
    nxclip_.Tree().ExpandAll();
    nxclip_.Tree().Select(L"Profil\\Clip");
    EditName();
    Type(L"mein ");
    OtherProgramCopies("unter dem Namen");
    Type(L"Name");
    PressKeys({VK_RETURN});
    const Window properties = nxclip_.WaitForDialog(L"Clip-Eigenschaften");
    EXPECT_NE(properties.TextOf(tbName), L"mein Name");
    properties.Press(cb_cancel);
    Driver::WaitUntilGone(properties);
    nxclip_.WaitForTree(L"Profil [Camera] open\n  mein Name [Clip]\n  Clip [Clip]\n");
    EXPECT_EQ(ReadClipFile(ClipFileAt(2)).front().bytes, "unter dem Namen");
}

TEST_F(OneThing, RefusedName_DropsTheCommandAndKeepsTheEdit) {
    StartCapturing();
    const std::wstring refused = L"\x0416\x05D0";  // in no code page together
    const Window edit = EditName();
    edit.Send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(refused.c_str()));
    nxclip_.Command(tbbViewProperties);
    const Notice notice = nxclip_.WaitForNotice();
    EXPECT_EQ(GetWindow(notice.window.Handle(), GW_OWNER), nxclip_.Main().Handle());
    Driver::Answer(notice, IDOK);
    const Window again = WaitFor("the name once more", [&] { return NameEdit(); });
    EXPECT_EQ(again.Text(), refused);
    EXPECT_TRUE(nxclip_.Main().Enabled());
    EXPECT_TRUE(nxclip_.Quiet()) << "the dialog of the options";
    Type(L"Neu");  // it has the keyboard, and all of it is selected
    WaitFor("another name", [&] { return again.Text() == L"Neu"; });
    nxclip_.Command(tbbViewProperties);
    const Window options = nxclip_.WaitForDialog(L"Optionen");
    options.Press(cb_cancel);
    Driver::WaitUntilGone(options);
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Neu [Clip]\n");
    EditName();
}

// The system's own loop goes on below a menu, and below what the mouse drags.
TEST_F(OneThing, End_EndsTheMenuTheDragAndTheRenameFirst) {
    StartCapturing();
    const auto close = [&] { nxclip_.Main().Close(); };
    const auto endSession = [&] {
        SendMessageTimeoutW(nxclip_.Main().Handle(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, 5000, nullptr);
    };
    std::wstring path = L"Profil\\Clip";
    const auto endsAll = [&](const std::wstring& newName, const auto& end) {
        ExpectEnd([&] {
            OpenContextMenu(path);
            end();
        });
        ExpectEnd([&] {
            OpenContextMenu(path);
            const HWND main = nxclip_.Main().Handle();
            const auto tree = reinterpret_cast<WPARAM>(nxclip_.Tree().window().Handle());
            end();
            // Menus that come up while it is to go.
            for (int i = 0; i < 5; ++i)
                PostMessageW(main, WM_CONTEXTMENU, tree, -1);
        });
        ExpectEnd([&] {
            BringToFront(nxclip_.Main());
            Drag(nxclip_.Tree().PlaceOf(path), nxclip_.Tree().PlaceOf(L"Profil"), end);
        });
        ExpectEnd([&] {
            BringToFront(nxclip_.Main());
            Drag(nxclip_.Tree().PlaceOf(path), nxclip_.Tree().PlaceOf(path), end);
        });
        ExpectEnd([&] {
            BringToFront(nxclip_.Main());
            MoveMouse(nxclip_.Tree().PlaceOf(path));
            const HWND main = nxclip_.Main().Handle();
            RightMouseButton(true);
            end();
            PostMessageW(main, WM_CLOSE, 0, 0);  // once more, if it is still there
            RightMouseButton(false);
        });
        ExpectEnd([&] {
            nxclip_.Tree().Select(path);
            const Window edit = EditName();
            Type(newName);
            WaitFor("the name", [&] { return edit.Text() == newName; });
            end();
        });
        // In the list it ends too, with the keyboard in it and without; what was typed is kept.
        const auto endsInList = [&](const std::wstring& typed, bool minimised) {
            ExpectEnd([&] {
                nxclip_.Tree().Select(L"Profil");
                BringToFront(nxclip_.Main());
                WaitFor("the row", [&] { return nxclip_.List().Count() == 1; });
                Click(nxclip_.List().PlaceOf(0));
                WaitFor("the list", [&] { return Focus() == nxclip_.List().window(); });
                if (minimised) ShowWindow(nxclip_.Main().Handle(), SW_MINIMIZE);
                nxclip_.Command(m_edit_rename);
                const Window list = nxclip_.List().window();
                const Window edit = WaitFor("the name to edit", [&] {
                    return Window(reinterpret_cast<HWND>(list.Send(LVM_GETEDITCONTROL)));
                });
                Type(typed);
                WaitFor("the name", [&] { return minimised || edit.Text() == typed; });
                end();
            });
        };
        endsInList(newName + L"!", false);
        endsInList({}, true);
        path = L"Profil\\" + newName + L"!";
    };
    endsAll(L"eins", close);
    endsAll(L"zwei", endSession);
    nxclip_.WaitForTree(L"Profil [Camera] open\n  zwei! [Clip]\n");
}

// The control goes on with the row under the mouse when the button goes up or the mouse moves.
TEST_F(OneThing, ButtonHeldOnARow_KeepsTheRowInTheTree) {
    WriteSetting(L"Settings", L"MostClips", L"1");
    StartCapturing();
    BringToFront(nxclip_.Main());
    const POINT row = HoldARow();
    OtherProgramCopies("unter der Taste");
    // Nothing may come of it, however long the button is held.
    for (const ULONGLONG held = GetTickCount64(); GetTickCount64() - held < 1000; Sleep(50))
        ASSERT_FALSE(std::filesystem::exists(ClipFileAt(2)));
    for (int i = 1; i < 20; ++i)
        MoveMouse({row.x, row.y + 2 * i});
    MoveMouse(row);
    MouseButton(false);
    WaitFor("the new clip instead of the old one", [&] {
        return !std::filesystem::exists(ClipFileAt(1)) && std::filesystem::exists(ClipFileAt(2));
    });
}

// The mouse that leaves an edit takes hold of a row at the same time.
TEST_F(OneThing, RefusedName_IsToldWhenTheMouseIsFreeAndKeepsNoSessionFromEnding) {
    StartCapturing();
    nxclip_.Tree().Select(L"Profil");
    const auto leaveABlankName = [&] {
        BringToFront(nxclip_.Main());
        Click(nxclip_.List().PlaceOf(0));
        WaitFor("the list", [&] { return Focus() == nxclip_.List().window(); });
        nxclip_.Command(m_edit_rename);
        const Window list = nxclip_.List().window();
        const Window edit = WaitFor("the name to edit", [&] {
            return Window(reinterpret_cast<HWND>(list.Send(LVM_GETEDITCONTROL)));
        });
        Type(L" ");
        WaitFor("a name of nothing", [&] { return edit.Text() == L" "; });
        HoldARow();
    };
    leaveABlankName();
    EXPECT_TRUE(nxclip_.Quiet()) << "a box below the mouse";
    MouseButton(false);
    Driver::Answer(nxclip_.WaitForNotice(), IDOK);
    nxclip_.Tree().Select(L"Profil");

    ExpectEnd([&] {
        leaveABlankName();
        SendMessageTimeoutW(nxclip_.Main().Handle(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, 5000, nullptr);
        nxclip_.Program().WaitForEnd();
        MouseButton(false);
    });
    // Below the box the name is still in hand.
    for (const bool again : {false, true})
        ExpectEnd([&] {
            nxclip_.Tree().Select(L"Profil");
            EditName();
            Type(L" ");
            PressKeys({VK_RETURN});
            Notice told = nxclip_.WaitForNotice();
            if (again) {
                Driver::Answer(told, IDOK);
                nxclip_.Command(mnuViewRefresh);
                told = nxclip_.WaitForNotice();
            }
            nxclip_.Main().Send(WM_ENDSESSION, TRUE);
        });
}

// An edit that has not the keyboard may go by itself, and the control says nothing then.
TEST_F(OneThing, EditThatIsGone_HoldsNeitherCapturesNorTheEnd) {
    StartCapturing();
    const auto loseEdit = [&](bool inList) {
        nxclip_.Tree().Select(inList ? L"Profil" : L"Profil\\Clip");
        BringToFront(nxclip_.Main());
        const Window pane = inList ? nxclip_.List().window() : nxclip_.Tree().window();
        if (inList) {
            WaitFor("the row", [&] { return nxclip_.List().Count() > 0; });
            Click(nxclip_.List().PlaceOf(0));
            WaitFor("the list", [&] { return Focus() == pane; });
        }
        ShowWindow(nxclip_.Main().Handle(), SW_MINIMIZE);
        nxclip_.Command(m_edit_rename);
        const Window edit = WaitFor("the name to edit", [&] {
            return Window(
                reinterpret_cast<HWND>(pane.Send(inList ? LVM_GETEDITCONTROL : TVM_GETEDITCONTROL)));
        });
        edit.Close();
        WaitFor("no edit", [&] { return !edit.Exists(); });
    };
    int clips = 1;
    for (const bool inList : {false, true})
        for (const bool captures : {false, true})
            ExpectEnd([&] {
                SCOPED_TRACE(inList);
                loseEdit(inList);
                if (captures) {
                    nxclip_.SetAutoDetect(true);
                    OtherProgramCopies("ohne Feld " + std::to_string(++clips));
                    WaitFor("the clip", [&] { return std::filesystem::exists(ClipFileAt(clips)); });
                }
                nxclip_.Main().Close();
            });
}

// F10 shows no window, yet it is a menu, that of the box itself. Another program can press a button
// meanwhile.
TEST_F(OneThing, MenuWithoutAWindow_EndsWithWhatItBelongsTo) {
    StartCapturing();
    const auto openMenu = [&](Window window) {
        BringToFront(window);
        PressKeys({VK_F10});
        WaitFor("the menu", [&] { return (window.Thread().flags & GUI_INMENUMODE) != 0; });
    };
    nxclip_.Tree().Select(L"Profil\\Clip");
    nxclip_.Command(m_edit_delete);
    const Notice question = nxclip_.WaitForNotice();
    openMenu(question.window);
    Driver::Answer(question, IDNO);
    WaitFor("the main window", [&] { return nxclip_.Main().Enabled(); });
    nxclip_.Command(mnuViewOptions);
    const Window options = nxclip_.WaitForDialog(L"Optionen");
    openMenu(options);
    options.Press(cb_cancel);
    WaitFor("the main window", [&] { return nxclip_.Main().Enabled(); });
    ExpectEnd([&] { nxclip_.Main().Close(); });
}

TEST_F(OneThing, FailureOfACapture_TakesNeitherTheKeyboardNorTheNextCopy) {
    StartCapturing();
    const HWND other = CreateWindowExW(0, L"STATIC", L"anderes", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                       nullptr, nullptr, nullptr);
    BringToFront(Window(other));
    const std::wstring tree = (nxclip_.ProfileDirectory() / L"nxclip.nxp").wstring();
    HANDLE held = INVALID_HANDLE_VALUE;
    // Until the program's last save is on the disk it has the file open now and then.
    WaitFor("the tree's file", [&] {
        held = CreateFileW(tree.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        return held != INVALID_HANDLE_VALUE;
    });
    OtherProgramCopies("eins");
    const Notice notice = nxclip_.WaitForNotice();
    CloseHandle(held);
    EXPECT_TRUE(notice.text.ends_with(L"nxclip.nxp")) << Utf8(notice.text);
    EXPECT_EQ(GetForegroundWindow(), other);
    EXPECT_TRUE(nxclip_.Main().Enabled());
    const std::set<HTREEITEM> before = nxclip_.Items();
    OtherProgramCopies("zwei");
    nxclip_.WaitForNewClip(before);
    EXPECT_TRUE(notice.window.Visible());
    Driver::Answer(notice, IDOK);
    DestroyWindow(other);
}

// Seen from outside while the load waits for an answer: what must have been done by then, and what not yet.
TEST_F(OneThing, Load_WatchesTheClipboardBeforeItLoadsTheProfiles) {
    WriteSetting(L"Settings", L"ShowInTray", L"0");
    WriteSetting(L"Settings", L"MainLeft", L"1800");
    WriteSetting(L"Settings", L"LockEdit", L"1");
    WriteSetting(L"Profiles", L"Count", L"1");
    WriteSetting(L"Profiles", L"Name1", L"Verschwunden");
    WriteSetting(L"Profiles", L"File1", (nxclip_.Directory() / L"Nirgends").wstring());
    nxclip_.Launch();
    const Window missing = nxclip_.WaitForDialog(L"Profil nicht gefunden");
    const Window main(FindWindowW(L"NXClipMain", L"NXClip"));
    ASSERT_TRUE(main) << "it has its caption";
    EXPECT_EQ(GetClipboardViewer(), main.Handle());
    EXPECT_FALSE(RegisterHotKey(nullptr, 1, MOD_ALT | MOD_CONTROL, 'L')) << "the program has it";
    EXPECT_EQ(main.Rectangle().left, 120);
    EXPECT_FALSE(ToolBarControl(main.Control(tbToolBar)).Pressed(tbbLock)) << "the options come last";
    EXPECT_FALSE(main.Visible());
    missing.Press(cb_cancel);
    nxclip_.WaitForMain();
    WaitFor("the options", [&] { return nxclip_.ToolBar().Pressed(tbbLock); });
    nxclip_.Quit();
    EXPECT_NE(GetClipboardViewer(), main.Handle());
    EXPECT_TRUE(RegisterHotKey(nullptr, 1, MOD_ALT | MOD_CONTROL, 'L')) << "free again";
    UnregisterHotKey(nullptr, 1);
}

}  // namespace
