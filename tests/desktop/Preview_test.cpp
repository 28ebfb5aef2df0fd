#include <algorithm>

#include "desktop/ProgramTest.h"

// What becomes of a picture that has to be decoded before it is shown.

namespace {

class Preview : public ProgramTest {
 protected:
    static UINT Png() { return FormatNumber(L"PNG"); }
    // Two pixels, one of them half transparent.
    static std::string Picture() {
        constexpr char kBytes[] =
            "\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x00\x02\x00\x00\x00\x01"
            "\x08\x06\x00\x00\x00\xf4\x22\x7f\x8a\x00\x00\x00\x11\x49\x44\x41\x54\x78\x9c\x63\xf8\xcf\xc0\xd0"
            "\xc0\xf0\x9f\xe1\x3f\x00\x0e\x7d\x03\x7e\xea\xf6\x93\xc0\x00\x00\x00\x00\x49\x45\x4e\x44\xae\x42"
            "\x60\x82";
        return {kBytes, sizeof kBytes - 1};
    }
};

TEST_F(Preview, Png_IsDecodedOrRefused) {
    StartWithProfile();
    SnapOf({{Png(), Picture()}});
    EXPECT_TRUE(nxclip_.Main().Control(picPreviewDIB).Visible());
    EXPECT_TRUE(nxclip_.Quiet());
    std::string damaged = Picture();
    std::fill(damaged.begin() + 40, damaged.end() - 20, '\x55');
    PutFormats({{Png(), damaged}});
    nxclip_.Command(m_edit_insert);
    EXPECT_EQ(nxclip_.AnswerNotice(), L"DIB konnte nicht geladen werden");
}

}  // namespace
