#include "engine/views/ColumnWidths.h"

#include <gtest/gtest.h>

TEST(ColumnWidths, FitColumns_LetsTheWidestGiveWay) {
    using Widths = std::vector<int>;
    EXPECT_EQ(FitColumns({50, 60, 70}, 200, 20), (Widths{50, 60, 70}));
    EXPECT_EQ(FitColumns({50, 300, 90}, 240, 20), (Widths{50, 100, 90}));
    EXPECT_EQ(FitColumns({50, 300, 400}, 250, 20), (Widths{50, 100, 100}));
    EXPECT_EQ(FitColumns({50, 60}, 10, 20), (Widths{20, 20})) << "scrolled rather than not seen at all";
    EXPECT_EQ(FitColumns({}, 10, 20), Widths{});
}
