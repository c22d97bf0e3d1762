#include "graph/layout.h"

#include <gtest/gtest.h>

using namespace kvo::graph;

namespace {
const Size form{15000, 12000};
const Size inner{1000, 760};
const Size present{20000, 10000};
const Box wide{0, 34, 1000, 631};
const Box narrow{0, 34, 985, 631};
} // namespace

TEST(Layout, FullScreenFillsTheWindow) {
    const GraphScaling full = Graph_scale(0, form, inner, present);
    EXPECT_EQ(full.trend, (Size{15000, 8800}));
    EXPECT_EQ(full.caption, "&Graph Scale(Full)  ");
    EXPECT_FALSE(full.scrollBars);
    EXPECT_EQ(full.frame, wide);
    EXPECT_EQ(full.vScroll, (Box{1000, 34, 17, 597}));
}

TEST(Layout, HalfAndQuarterEnlargeTheSurface) {
    const GraphScaling half = Graph_scale(1, form, inner, present);
    EXPECT_EQ(half.trend, (Size{30000, 24000}));
    EXPECT_EQ(half.caption, "&Graph Scale(1/2)  ");
    EXPECT_TRUE(half.scrollBars);
    EXPECT_EQ(half.frame, narrow);
    const GraphScaling quarter = Graph_scale(2, form, inner, present);
    EXPECT_EQ(quarter.trend, (Size{60000, 48000}));
    EXPECT_EQ(quarter.caption, "&Graph Scale(1/4)  ");
}

TEST(Layout, CustomAsksAndTouchesNoSize) {
    const GraphScaling custom = Graph_scale(3, form, inner, present);
    EXPECT_FALSE(custom.trend);
    EXPECT_FALSE(custom.caption);
    EXPECT_TRUE(custom.openCustomDialog);
}

TEST(Layout, AZoomMultipliesWhatIsThere) {
    const GraphScaling zoomed = Graph_scale(4, form, inner, present, 1.2);
    EXPECT_EQ(zoomed.trend, (Size{24000, 12000}));
    EXPECT_FALSE(zoomed.caption);
    EXPECT_TRUE(zoomed.disableScaleMenu);
    EXPECT_TRUE(zoomed.scrollBars);
}

TEST(Layout, ACustomSizeMultipliesTheRoom) {
    const CustomArrangement custom = arrangeCustom(form, inner, 2, 3);
    EXPECT_EQ(custom.trend, (Size{29470, 26400}));
    EXPECT_EQ(custom.frame, narrow);
    EXPECT_EQ(custom.hScrollMax, 1785); // 3683.75 - 1899, rounded
    EXPECT_EQ(custom.vScrollMax, 4418);
    EXPECT_EQ(custom.caption, "&Graph Scale(Custom)");
    // A surface of many windows still has its bars.
    EXPECT_GT(arrangeCustom(form, inner, 255, 255).hScrollMax, 32767);
}

TEST(Layout, ResizingKeepsAnEnlargedSurface) {
    const ResizeArrangement full = arrangeResize("&Graph Scale(Full)  ", form, inner);
    EXPECT_EQ(full.trend, (Size{14970, 8800}));
    EXPECT_EQ(full.frame, wide);
    const ResizeArrangement half = arrangeResize("&Graph Scale(1/2)  ", form, inner);
    EXPECT_FALSE(half.trend);
    EXPECT_EQ(half.frame, narrow);
}

TEST(Layout, ScrollingMovesTheSurface) {
    const ScrollPlace place = scrollPlace({64936, 63820}, {993, 651}, 8096, 1243);
    EXPECT_EQ(place.hScrollMax, 6248);
    EXPECT_EQ(place.vScrollMax, 13657);
    EXPECT_EQ(place.trendLeft, -64768);
    EXPECT_EQ(place.trendTop, -4972);
}

TEST(Layout, TheCursorIsScrolledIntoView) {
    EXPECT_EQ(ScrollToCursor(10000, 2520, 1260), 5000);
    EXPECT_EQ(ScrollToCursor(10000, 2520, 2520), 10000);
    // No run, or a line that was never placed: a division by nothing.
    EXPECT_FALSE(ScrollToCursor(10000, 0, 100));
    EXPECT_FALSE(ScrollToCursor(10000, 2520, 0));
}
