#include "engine/clipboard/FormatNames.h"

#include "engine/clipboard/ClipboardTest.h"

namespace {

class FormatNamesTest : public ClipboardTest {};

}  // namespace

TEST_F(FormatNamesTest, FormatNameOf_NamesStandardRegisteredAndUnknownFormats) {
    EXPECT_EQ(FormatNameOf(1), L"Text");
    EXPECT_EQ(FormatNameOf(17), L"MAX");
    EXPECT_EQ(FormatNameOf(142), L"DSPENHMETAFILE");
    EXPECT_EQ(FormatNameOf(Registered("Gr\xF6\xDF"
                                      "e")),
              L"Größe");
    for (const FormatNumber unknown : {0, -5, 18, 0x0200, 0xC777, 0xBF00}) {
        EXPECT_EQ(FormatNameOf(unknown), L"<unbekannt>") << unknown;
    }
    EXPECT_EQ(FormatNameOf(Registered(std::string(250, 'n').c_str())), std::wstring(240, L'n'));
}

TEST_F(FormatNamesTest, IsStandardFormat_KnowsTheBoundsAndLeavesOut17) {
    for (const FormatNumber id : {-16640, -5, 0, 1, 16, 128, 129, 130, 131, 142}) {
        EXPECT_TRUE(IsStandardFormat(id)) << id;
    }
    for (const FormatNumber id : {17, 18, 127, 132, 141, 143, 0x200, 0xC000}) {
        EXPECT_FALSE(IsStandardFormat(id)) << id;
    }
}
