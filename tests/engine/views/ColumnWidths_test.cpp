#include "engine/views/ColumnWidths.h"

#include <gtest/gtest.h>

TEST(ColumnWidths, FitColumns_LetsEmptyOnesGiveWayFirstAndNamesLast) {
    using Widths = std::vector<int>;
    EXPECT_EQ(FitColumns({{50}, {60}, {70}}, 200, 20), (Widths{50, 60, 70}));
    EXPECT_EQ(FitColumns({{300}, {60, true}, {80}, {70, true}}, 480, 20), (Widths{300, 50, 80, 50}));
    EXPECT_EQ(FitColumns({{300}, {60, true}, {80}, {90}}, 440, 20), (Widths{300, 20, 60, 60}));
    EXPECT_EQ(FitColumns({{300}, {60, true}, {80}, {90}}, 200, 20), (Widths{140, 20, 20, 20}));
    EXPECT_EQ(FitColumns({{50}, {60}}, 10, 20), (Widths{20, 20})) << "scrolled rather than not seen at all";
    EXPECT_EQ(FitColumns({{10}, {60}}, 40, 20), (Widths{10, 30})) << "what is narrower stays";
    EXPECT_EQ(FitColumns({}, 10, 20), Widths{});
}
