#include "engine/clipboard/modFormatDesc.h"

#include <gtest/gtest.h>

TEST(FormatDescription, FormatDescriptionIndex_KnowsNamesExactlyOnceTheTableIsFilled) {
    InitFormatDescriptions();
    EXPECT_EQ(FormatDescriptionIndex(L"Text"), 0);
    EXPECT_EQ(FormatDescriptionAt(0).Group, L"Clip");

    FillFormatDescriptions();
    EXPECT_EQ(FormatDescriptionIndex(L"Bitmap"), 1);
    EXPECT_EQ(FormatDescriptionIndex(L"Text"), 3);
    EXPECT_EQ(FormatDescriptionIndex(L"Rich Text Format"), 16);
    EXPECT_EQ(FormatDescriptionIndex(L"text"), 0);
    EXPECT_EQ(FormatDescriptionIndex(L"Enhanced Metafile"), 0);
    EXPECT_EQ(FormatDescriptionIndex(L""), 0);
    EXPECT_EQ(FormatDescriptionAt(0).Group, L"Help");
    EXPECT_EQ(FormatDescriptionAt(2).Description, L"Geräteunabhängige Bitmap");
    EXPECT_EQ(FormatDescriptionAt(17).Name, L"<unbekannt>");
    EXPECT_EQ(FormatDescriptionAt(-1).Name, L"<unbekannt>");
}
