#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// The search over the list: hits while one types, in names and in what clips hold.

namespace {

class Filter : public ProgramTest {
 protected:
    static std::string Utf16(const std::u16string& text) {
        return {reinterpret_cast<const char*>(text.c_str()), 2 * (text.size() + 1)};
    }
    // Three clips, two of them with a word in common; the middle one has it behind a long text.
    void StartWithTexts() {
        StartWithProfile();
        SnapOf({{CF_UNICODETEXT, Utf16(u"Angebot über Nägel")}});
        SnapOf({{CF_UNICODETEXT, Utf16(std::u16string(400'000, u'.') + u" die NÄGEL")}});
        SnapOf({{FormatNumber(L"HTML Format"), "<p class='n&auml;gel'>nur <b>Schr</b>auben</p>"}});
        nxclip_.Tree().Select(L"Profil");
        WaitForRows(3);
        BringToFront(nxclip_.Main());
    }
    void WaitForRows(int count) {
        WaitFor("the rows", [&] { return nxclip_.List().Count() == count; });
    }
    void Search(const std::wstring& text) { nxclip_.Main().SetText(tbFilter, text); }
    std::wstring PlaceIn(int row) { return nxclip_.List().Row(row).at(4); }
    int Chosen() {
        return static_cast<int>(
            nxclip_.List().window().Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
};

TEST_F(Filter, Typing_ShowsHitsThatAreWorkedWithAsInAFolder) {
    StartWithTexts();
    Click(nxclip_.List().PlaceOf(2));
    PressKeys({VK_CONTROL, VK_SHIFT, 'F'});
    Type(L"nägel");
    // The letters before the last one have two hits too.
    WaitFor("the hits of the whole word", [&] {
        return nxclip_.Main().TextOf(tbFilter) == L"nägel" && nxclip_.List().Count() == 2 &&
               PlaceIn(0) == L"Angebot über Nägel" && PlaceIn(1).find(L". die NÄGEL") != std::wstring::npos;
    });
    nxclip_.WaitForStatus(L"2 Treffer");
    EXPECT_EQ(nxclip_.Title(), L"Treffer in \"Profil\"");

    // Down into the hits; the preview shows the place, and another program reads the clip.
    PressKeys({VK_DOWN});
    PressKeys({VK_DOWN});
    WaitFor("the second hit", [&] { return Chosen() == 1; });
    WaitFor("the place in the preview", [&] {
        const std::wstring shown = nxclip_.Main().TextOf(tbPreviewText);
        return shown.starts_with(L"[...]") && shown.ends_with(L"die NÄGEL");
    });
    const DWORD before = GetClipboardSequenceNumber();
    PressKeys({VK_CONTROL, 'C'});
    WaitFor("the clip on the clipboard", [&] { return GetClipboardSequenceNumber() != before; });
    EXPECT_TRUE(ReadFormatNow(CF_UNICODETEXT)->ends_with(Utf16(u"NÄGEL")));

    // Escape: everything as before.
    PressKeys({VK_ESCAPE});
    WaitForRows(3);
    EXPECT_EQ(nxclip_.Title(), L"Profil \"Profil\"");
    WaitFor("the row as before", [&] { return Chosen() == 2; });
    EXPECT_EQ(nxclip_.Main().TextOf(tbFilter), L"");
}

// A letter is seen before anything is searched for: a key that is as quick must not meet the list as it was.
TEST_F(Filter, Escape_EndsASearchThatHasNotBegun) {
    StartWithTexts();
    PressKeys({VK_CONTROL, VK_SHIFT, 'F'});
    const Window field = nxclip_.Main().Control(tbFilter);
    field.Post(WM_CHAR, L'x');
    field.Post(WM_KEYDOWN, VK_ESCAPE);
    WaitFor("an empty field", [&] { return nxclip_.Main().TextOf(tbFilter).empty(); });
    EXPECT_EQ(nxclip_.List().Count(), 3);
}

TEST_F(Filter, Captures_AndDeletionsAreShownInTheHits) {
    StartWithTexts();
    Search(L"schrauben");
    WaitForRows(1);
    EXPECT_EQ(PlaceIn(0), L"nur Schrauben");
    SnapOf({{CF_UNICODETEXT, Utf16(u"mehr Schrauben")}});
    WaitForRows(2);
    WaitFor("its content", [&] { return PlaceIn(1) == L"mehr Schrauben"; });
    Click(nxclip_.List().PlaceOf(0));
    PressKeys({VK_DELETE});
    nxclip_.AnswerNotice(IDYES);
    WaitForRows(1);
    EXPECT_EQ(PlaceIn(0), L"mehr Schrauben");
    // What stands nowhere is looked for without its marks.
    Search(L"uber nagel");
    WaitFor("the only hit", [&] { return PlaceIn(0) == L"Angebot über Nägel"; });
    WaitForRows(1);
    // Where the hit stands in the tree.
    Click(nxclip_.List().PlaceOf(0));
    PressKeys({VK_CONTROL, VK_RETURN});
    WaitFor("the clip in the tree", [&] { return nxclip_.Title() == L"Formate von \"Profil\\Clip\""; });
    EXPECT_EQ(nxclip_.Main().TextOf(tbFilter), L"");
}

}  // namespace
