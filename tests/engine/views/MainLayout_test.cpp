#include "engine/views/MainLayout.h"

#include <gtest/gtest.h>

namespace {

LayoutInput Usual() {
    return {.width = 800,
            .height = 600,
            .toolBarHeight = 30,
            .statusBarHeight = 20,
            .titleHeight = 18,
            .splitterLeft = 200,
            .splitterWidth = 5,
            .previewShown = true};
}

TEST(MainLayout, LayOut_PartsFillTheWindowWithoutGapOrOverlap) {
    const LayoutResult r = LayOutMainWindow(Usual());
    EXPECT_EQ(r.toolBar, (Box{0, 0, 800, 30}));
    EXPECT_EQ(r.statusBar, (Box{0, 580, 800, 20}));
    EXPECT_EQ(r.tree.top, r.toolBar.Bottom());
    EXPECT_EQ(r.tree.Bottom(), r.statusBar.top);
    EXPECT_EQ(r.tree.Right(), r.splitter.left);
    EXPECT_EQ(r.splitter.Right(), r.title.left);
    EXPECT_EQ(r.title.Bottom(), r.list.top);
    EXPECT_EQ(r.list.Bottom(), r.formatTab.top);
    EXPECT_EQ(r.formatTab.Bottom(), r.statusBar.top);
    EXPECT_EQ(r.formatTab.Right(), 800);
}

TEST(MainLayout, LayOutTinyWindow_NoNegativeSizes) {
    for (int width = 0; width < 220; width += 7) {
        for (int height = 0; height < 60; height += 3) {
            LayoutInput input = Usual();
            input.width = width;
            input.height = height;
            const LayoutResult r = LayOutMainWindow(input);
            for (const Box& box : {r.tree, r.splitter, r.title, r.list, r.formatTab}) {
                ASSERT_GE(box.width, 0) << width << "x" << height;
                ASSERT_GE(box.height, 0) << width << "x" << height;
            }
        }
    }
}

TEST(MainLayout, ClampSplitter_KeepsItsMargins) {
    EXPECT_EQ(ClampSplitter(499, 5400), 500);
    EXPECT_EQ(ClampSplitter(500, 5400), 500);
    EXPECT_EQ(ClampSplitter(4900, 5400), 4900);
    EXPECT_EQ(ClampSplitter(4901, 5400), 4900);
    EXPECT_EQ(ClampSplitter(-1e9, 5400), 500);
}

TEST(MainLayout, BroughtIntoView_MovesOnlyWhatCannotBeReached) {
    const Box monitor{0, 0, 1920, 1040};
    const Box partlyOut{1700, 900, 400, 400};
    EXPECT_EQ(BroughtIntoView(partlyOut, monitor), partlyOut);
    EXPECT_EQ(BroughtIntoView({3000, 100, 400, 400}, monitor), (Box{1520, 100, 400, 400}));
    EXPECT_EQ(BroughtIntoView({-5000, -5000, 400, 400}, monitor), (Box{0, 0, 400, 400}));
    EXPECT_EQ(BroughtIntoView({100, 5000, 4000, 4000}, monitor), (Box{0, 0, 1920, 1040}));
}

}  // namespace
