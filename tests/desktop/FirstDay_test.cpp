#include <windows.h>

#include <memory>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"
#include "desktop/TaskBar.h"
#include "desktop/WholeFile.h"

// What a new user gets who takes the recommended settings as they are offered.

namespace {

constexpr wchar_t kWelcome[] = L"Norvale - Der Manger für die Zwischenablage";

class FirstDay : public ProgramTest {
 protected:
    // Text in all letters, as the system's own programs copy it.
    static ClipboardOffer Unicode(const std::wstring& text) {
        std::string bytes(reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(wchar_t));
        return {CF_UNICODETEXT, bytes};
    }
    void StartByEnterAlone() {
        WriteSetting(L"Settings", L"Dialog", L"0");
        nxclip_.Start();
        const Window first = nxclip_.WaitForDialog(kWelcome);
        BringToFront(first);
        PressKeys({VK_RETURN});
        nxclip_.WaitForTree(L"Clips [Camera]\n");
        EXPECT_TRUE(nxclip_.Quiet()) << "nothing is asked";
    }
    std::filesystem::path Scratch(const std::wstring& name) const { return nxclip_.Directory() / name; }
    // A program of its own copies text, and one format that is none, and stays.
    std::unique_ptr<Process> CopyElsewhere(const std::wstring& text) {
        const std::set<HTREEITEM> before = nxclip_.Items();
        WriteWholeFile(Scratch(text + L".txt"), Unicode(text).bytes);
        const std::wstring file = Scratch(text + L".txt").wstring();
        auto program =
            std::make_unique<Process>(L"\"" + (OwnDirectory() / L"clipput.exe").wstring() + L"\" \"13=" +
                                      file + L"\" \"NXClip Desktop Test=" + file + L"\"");
        EXPECT_EQ(nxclip_.WaitForNewClip(before).text, text);
        return program;
    }
    // What another program reads, empty for nothing.
    std::string ReadElsewhere(const std::wstring& format) {
        const std::filesystem::path file = Scratch(L"gelesen");
        std::filesystem::remove(file);
        Process program(L"\"" + (OwnDirectory() / L"clipget.exe").wstring() + L"\" \"" + format + L"\" \"" +
                        file.wstring() + L"\"");
        program.WaitForEnd();
        return std::filesystem::exists(file) ? ReadWholeFile(file) : std::string();
    }
};

TEST_F(FirstDay, RecommendedSettings_NameShowAndSpareWhatIsCopied) {
    WriteSetting(L"Settings", L"EditPropAfterSnap", L"1");
    WriteSetting(L"Settings", L"UnknownFormats", L"5");
    StartByEnterAlone();
    // Once more it changes nothing unasked.
    nxclip_.Command(m_quickstart);
    const Window again = nxclip_.WaitForDialog(kWelcome);
    EXPECT_FALSE(again.Checked(chkRecommended));
    EXPECT_FALSE(again.Checked(chkPlainProfile));
    again.Press(cb_ok);
    Driver::WaitUntilGone(again);

    const std::wstring text = L"Grüße 😀 nach 日本";
    const std::set<HTREEITEM> before = nxclip_.Items();
    PutFormats({Unicode(text)});
    EXPECT_EQ(nxclip_.WaitForNewClip(before).text, L"Grüße nach");
    WaitFor("the preview", [&] { return nxclip_.Main().TextOf(tbPreviewText) == text; });
    PutFormats({Unicode(text)});
    nxclip_.WaitForStatus(L"Der Inhalt steht schon im neuesten Clip, 'Grüße nach'.");

    PutFormats({Unicode(L"geheim"),
                {FormatNumber(L"CanIncludeInClipboardHistory"), std::string(sizeof(DWORD), '\0')}});
    nxclip_.WaitForStatus(L"Vertraulicher Inhalt nicht erfasst");
    nxclip_.Command(m_edit_insert);
    EXPECT_NE(nxclip_.AnswerNotice(IDNO).find(L"als vertraulich gekennzeichnet"), std::wstring::npos);
    EXPECT_EQ(nxclip_.Items().size(), before.size() + 1);

    EXPECT_EQ(nxclip_.Quit(), 0u);
    for (const auto& [key, value] : {std::pair(L"UnknownFormats", L"255"), std::pair(L"NewTextMode", L"1"),
                                     std::pair(L"EditPropAfterSnap", L"0"), std::pair(L"SkipSame", L"1"),
                                     std::pair(L"SkipPrivate", L"1"), std::pair(L"AutoSnapAtStart", L"1")})
        EXPECT_EQ(ReadSetting(L"Settings", key), value);
}

TEST_F(FirstDay, FirstHour_CopiesChoosesAndPastesByKeysAlone) {
    TaskBar bar;
    StartByEnterAlone();
    std::vector<std::unique_ptr<Process>> programs;
    for (const wchar_t* text : {L"erstes", L"zweites", L"drittes"})
        programs.push_back(CopyElsewhere(text));

    const Window elsewhere(CreateWindowExW(0, L"STATIC", L"anderes", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                           nullptr, nullptr, nullptr, nullptr));
    BringToFront(elsewhere);
    const auto comeToTheList = [&] {
        PressKeys({VK_CONTROL, VK_MENU, 'L'});
        WaitForFront();
        WaitFor("the keyboard in the list", [&] { return Focus() == nxclip_.List().window(); });
        EXPECT_EQ(ChosenRow(), 0) << "the newest clip";
    };
    const auto waitForElsewhere = [&] {
        WaitFor("the program before", [&] { return GetForegroundWindow() == elsewhere.Handle(); });
        EXPECT_FALSE(nxclip_.Main().Visible());
    };
    comeToTheList();
    PressKeys({VK_DOWN});
    WaitFor("the preview", [&] { return nxclip_.Main().TextOf(tbPreviewText) == L"zweites"; });
    PressKeys({VK_RETURN});
    waitForElsewhere();
    EXPECT_EQ(ReadElsewhere(L"13"), Unicode(L"zweites").bytes);
    EXPECT_EQ(ReadElsewhere(L"NXClip Desktop Test"), Unicode(L"zweites").bytes);

    comeToTheList();
    PressKeys({VK_CONTROL, VK_SHIFT, VK_RETURN});
    waitForElsewhere();
    EXPECT_EQ(ReadElsewhere(L"13"), Unicode(L"drittes").bytes);
    EXPECT_EQ(ReadElsewhere(L"NXClip Desktop Test"), "") << "as text alone";

    comeToTheList();
    PressKeys({VK_SHIFT, VK_DOWN});
    nxclip_.WaitForStatus(L"2 von 3 Element(e)");
    PressKeys({VK_DELETE});
    nxclip_.WaitForTree(
        L"Clips [Camera] open\n  erstes [Clip]\n  Gelöscht [Structure] open\n"
        L"    zweites [Clip]\n    drittes [Clip]\n");
    EXPECT_TRUE(nxclip_.Quiet()) << "what can be taken back is not asked for";
    PressKeys({VK_CONTROL, 'Z'});
    WaitFor("the two chosen again", [&] { return nxclip_.List().window().Send(LVM_GETSELECTEDCOUNT) == 2; });
    EXPECT_EQ(nxclip_.List().Names(),
              (std::vector<std::wstring>{L"Gelöscht", L"drittes", L"zweites", L"erstes"}));
    PressKeys({VK_DELETE});
    WaitFor("them gone", [&] { return nxclip_.List().Count() == 2; });

    nxclip_.Main().Post(WM_SYSCOMMAND, SC_CLOSE);
    waitForElsewhere();
    EXPECT_EQ(nxclip_.Quit(), 0u);
    bar.takes = false;  // a hidden window cannot be found
    nxclip_.Start(L"ICON");
    WaitFor("the icon", [&] { return nxclip_.Main().Minimised(); });
    EXPECT_TRUE(nxclip_.ToolBar().Pressed(tbbAutoDetect));
    EXPECT_EQ(TreeOutline(),
              L"Clips [Camera] open\n  erstes [Clip]\n  Gelöscht [Structure] open\n"
              L"    zweites [Clip]\n    drittes [Clip]\n");
    DestroyWindow(elsewhere.Handle());
}

}  // namespace
