#include <windows.h>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// Several rows of the list at once, the folder for what is deleted, and the most clips of a container.

namespace {

class Several : public ProgramTest {
 protected:
    void StartKeepingDeleted() {
        WriteSetting(L"Settings", L"KeepDeleted", L"1");
        StartWithList();
        ChooseRow(0);
    }
    // The first two of three, with a folder behind them.
    void ChooseTwoClips() {
        nxclip_.Tree().Select(L"Profil");
        WaitFor("the list", [&] { return nxclip_.List().Count() == 4; });
        ChooseRow(0);
        PressKeys({VK_SHIFT, VK_DOWN});
        WaitFor("two rows", [&] { return ChosenRows() == 2; });
    }
    void ChooseAll(int rows) {
        PressKeys({VK_CONTROL, 'A'});
        WaitFor("all rows", [&] { return ChosenRows() == rows; });
    }
    int ChosenRows() const { return static_cast<int>(nxclip_.List().window().Send(LVM_GETSELECTEDCOUNT)); }
};

TEST_F(Several, MoveTo_FilesAllThatIsChosenByKeysAlone) {
    StartKeepingDeleted();
    MakeFolder(L"Ablage");
    ChooseTwoClips();
    EXPECT_FALSE(nxclip_.ToolBar().Enabled(tbbCopy)) << "that takes one";
    EXPECT_TRUE(nxclip_.ToolBar().Enabled(tbbDelete));
    PressKeys({VK_CONTROL, VK_SHIFT, 'V'});
    const Window dialog = nxclip_.WaitForDialog(L"Verschieben nach");
    EXPECT_EQ(dialog.TextOf(lbTitle), L"2 Clips nach:");
    PressKeys({VK_DOWN});
    WaitFor("the folder",
            [&] { return TreeControl(dialog.Control(tvTargets)).SelectedPath() == L"Profil\\Ablage"; });
    PressKeys({VK_RETURN});
    nxclip_.WaitForStatus(L"Jetzt in \"Profil\\Ablage\": 2 Clips");
    EXPECT_EQ(TreeOutline(),
              L"Profil [Camera] open\n  Clip [Clip]\n  Ablage [Structure] open\n    Clip [Clip]\n    Clip "
              L"[Clip]\n");
    WaitFor("the keyboard in the list", [&] { return Focus() == nxclip_.List().window(); });
    EXPECT_EQ(ChosenRow(), 0) << "the next one to be filed";
}

TEST_F(Several, Drag_TakesAllThatIsChosenIntoTheTree) {
    StartKeepingDeleted();
    MakeFolder(L"Ablage");
    ChooseTwoClips();
    // Where nobody has just clicked: that would be a double click.
    Drag(nxclip_.List().PlaceOf(1), nxclip_.Tree().PlaceOf(L"Profil\\Ablage"));
    nxclip_.WaitForStatus(L"Jetzt in \"Profil\\Ablage\": 2 Clips");
    EXPECT_EQ(nxclip_.List().Count(), 2);
    // A profile is placed in nothing, wherever the keyboard is.
    nxclip_.Tree().Select(L"Profil\\Ablage");
    WaitFor("what lies there", [&] { return nxclip_.List().Count() == 2; });
    ChooseRow(0);
    const RECT tree = nxclip_.Tree().window().Rectangle();
    Drag(nxclip_.Tree().PlaceOf(L"Profil"), {tree.left + 40, tree.bottom - 20});
    WaitFor("the profile", [&] { return nxclip_.Title() == L"Profil \"Profil\""; });
}

TEST_F(Several, Deleted_GoesForGoodFromItsFolderAlone) {
    StartKeepingDeleted();
    ChooseAll(3);
    PressKeys({VK_DELETE});
    WaitFor("the folder", [&] { return nxclip_.List().Names() == std::vector<std::wstring>{L"Gelöscht"}; });
    EXPECT_TRUE(std::filesystem::exists(ClipFileAt(1)));
    PressKeys({VK_CONTROL, 'Z'});
    WaitFor("all back", [&] { return ChosenRows() == 3; });
    PressKeys({VK_DELETE});
    WaitFor("the folder", [&] { return nxclip_.List().Count() == 1; });

    nxclip_.Tree().Select(L"Profil\\Gelöscht");
    WaitFor("what was deleted", [&] { return nxclip_.List().Count() == 3; });
    EXPECT_TRUE(nxclip_.List().Row(0)[5].ends_with(L" aus Profil]"));
    ChooseRow(1);
    PressKeys({VK_DELETE});
    EXPECT_EQ(nxclip_.AnswerNotice(IDYES), L"Wollen Sie wirklich den Clip löschen ?");
    WaitFor("two", [&] { return nxclip_.List().Count() == 2; });
    EXPECT_FALSE(std::filesystem::exists(ClipFileAt(2)));
    nxclip_.Tree().Select(L"Profil");
    nxclip_.Command(m_PP_emptyDeleted);
    EXPECT_EQ(nxclip_.AnswerNotice(IDYES), L"Wollen Sie wirklich 2 Clips endgültig löschen ?");
    WaitFor("their files gone", [&] {
        return !std::filesystem::exists(ClipFileAt(1)) && !std::filesystem::exists(ClipFileAt(3));
    });
    EXPECT_TRUE(nxclip_.Quiet());
}

TEST_F(Several, Limit_LetsTheOldestGoAfterAnAutomaticCapture) {
    for (const auto& [key, value] : {std::pair(L"KeepDeleted", L"1"), std::pair(L"MostClips", L"2")})
        WriteSetting(L"Settings", key, value);
    StartWithProfile();
    nxclip_.Command(m_edit_autosnap);
    WaitFor("automatic capture", [&] { return nxclip_.ToolBar().Pressed(tbbAutoDetect); });
    for (const char* text : {"eins", "zwei", "drei", "vier"}) {
        const std::set<HTREEITEM> before = nxclip_.Items();
        PutFormats({{Private(), text}, {CF_TEXT, text + std::string(1, '\0')}});
        nxclip_.WaitForNewClip(before);
    }
    nxclip_.WaitForTree(
        L"Profil [Camera] open\n  Clip [Clip]\n  Clip [Clip]\n  Gelöscht [Structure] open\n"
        L"    Clip [Clip]\n    Clip [Clip]\n");
    WaitFor("the newest in the preview", [&] { return nxclip_.Main().TextOf(tbPreviewText) == L"vier"; });
}

}  // namespace
