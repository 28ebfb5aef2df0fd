#include <algorithm>

#include "desktop/ProgramTest.h"

// Which tab of the preview comes to the front, and what becomes of a picture that has to be decoded first.

namespace {

class Preview : public ProgramTest {
 protected:
    static UINT Png() { return FormatNumber(L"PNG"); }
    static UINT RichText() { return FormatNumber(L"Rich Text Format"); }
    // Two pixels, one of them half transparent.
    static std::string Picture() {
        constexpr char kBytes[] =
            "\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x00\x02\x00\x00\x00\x01"
            "\x08\x06\x00\x00\x00\xf4\x22\x7f\x8a\x00\x00\x00\x11\x49\x44\x41\x54\x78\x9c\x63\xf8\xcf\xc0\xd0"
            "\xc0\xf0\x9f\xe1\x3f\x00\x0e\x7d\x03\x7e\xea\xf6\x93\xc0\x00\x00\x00\x00\x49\x45\x4e\x44\xae\x42"
            "\x60\x82";
        return {kBytes, sizeof kBytes - 1};
    }
    void ExpectTab(int tab, const char* why) const {
        EXPECT_EQ(nxclip_.FormatTab().Selected(), tab) << why;
        EXPECT_EQ(nxclip_.Main().Control(tbPreviewText).Visible(), tab == 0) << why;
        const Window picture = nxclip_.Main().FindControl(picPreviewDIB);
        EXPECT_EQ(picture && picture.Visible(), tab == 2) << why;
    }
};

TEST_F(Preview, Tab_FollowsTheClipAndReturnsToTheChosenOne) {
    StartWithProfile();
    const TreeLine both = SnapOf({{CF_TEXT, std::string("Text\0", 5)}, {RichText(), "{\\rtf1 x}"}});
    ExpectTab(0, "there is text");
    SnapOf({{RichText(), "{\\rtf1 y}"}});
    ExpectTab(1, "there is rich text alone");
    nxclip_.Tree().Select(both.item);
    ExpectTab(0, "nobody has chosen another");
    SnapOf({{Private(), "private"}});
    ExpectTab(0, "there is nothing to show");
    const std::wstring text = nxclip_.Main().TextOf(tbPreviewText);
    EXPECT_EQ(text, L"");
    nxclip_.FormatTab().Select(1);
    nxclip_.Tree().Select(both.item);
    ExpectTab(1, "chosen by hand");
    const std::vector<Window> boxes = nxclip_.Main().Children();
    EXPECT_EQ(std::ranges::count(boxes, int{tbPreviewRtf}, &Window::Number), 1) << "made once";
}

TEST_F(Preview, Png_IsDecodedOrRefused) {
    StartWithProfile();
    SnapOf({{Png(), Picture()}});
    ExpectTab(2, "a picture");
    EXPECT_TRUE(nxclip_.Quiet());
    std::string damaged = Picture();
    std::fill(damaged.begin() + 40, damaged.end() - 20, '\x55');
    PutFormats({{Png(), damaged}});
    nxclip_.Command(m_edit_insert);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"DIB konnte nicht geladen werden");
}

}  // namespace
