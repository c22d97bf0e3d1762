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
    EXPECT_FALSE(full.scrollBars);
    EXPECT_EQ(full.frame, wide);
    EXPECT_EQ(full.vScroll, (Box{1000, 34, 17, 597}));
}

TEST(Layout, HalfAndQuarterEnlargeTheSurface) {
    const GraphScaling half = Graph_scale(1, form, inner, present);
    EXPECT_EQ(half.trend, (Size{30000, 24000}));
    EXPECT_TRUE(half.scrollBars);
    EXPECT_EQ(half.frame, narrow);
    const GraphScaling quarter = Graph_scale(2, form, inner, present);
    EXPECT_EQ(quarter.trend, (Size{60000, 48000}));
}

TEST(Layout, CustomAsksAndTouchesNoSize) {
    const GraphScaling custom = Graph_scale(3, form, inner, present);
    EXPECT_FALSE(custom.trend);
    EXPECT_TRUE(custom.openCustomDialog);
}

TEST(Layout, AZoomMultipliesWhatIsThere) {
    const GraphScaling zoomed = Graph_scale(4, form, inner, present, 1.2);
    EXPECT_EQ(zoomed.trend, (Size{24000, 12000}));
    EXPECT_TRUE(zoomed.disableScaleMenu);
    EXPECT_TRUE(zoomed.scrollBars);
}

TEST(Layout, ACustomSizeMultipliesTheRoom) {
    const CustomArrangement custom = arrangeCustom(form, inner, 2, 3);
    EXPECT_EQ(custom.trend, (Size{29470, 26400}));
    EXPECT_EQ(custom.frame, narrow);
    EXPECT_EQ(custom.hScrollMax, 1785); // 3683.75 - 1899, rounded
    EXPECT_EQ(custom.vScrollMax, 4418);
    // A surface of many windows still has its bars.
    EXPECT_GT(arrangeCustom(form, inner, 255, 255).hScrollMax, 32767);
}

TEST(Layout, TheMenuNamesTheSetting) {
    EXPECT_STREQ(scaleCaption(scaleFull), "&Graph Scale(Full)  ");
    EXPECT_STREQ(scaleCaption(scaleHalf), "&Graph Scale(1/2)  ");
    EXPECT_STREQ(scaleCaption(scaleQuarter), "&Graph Scale(1/4)  ");
    EXPECT_STREQ(scaleCaption(scaleCustom), "&Graph Scale(Custom)");
}

TEST(Layout, TheRoomIsMeasuredAsTheRulesMeasureTheForm) {
    const Room room{1000, 600};
    EXPECT_EQ(formSize(room), (Size{15000, 12200}));
    EXPECT_EQ(innerSize(room, false), (Size{1000, 729}));
    EXPECT_EQ(wholeRoom(room), (Size{15000, 9000}));
    // With bars the ends of an enlarged surface come just into view.
    const Size inner2 = innerSize(room, true);
    const GraphScaling half = Graph_scale(scaleHalf, formSize(room), inner2, {});
    const ScrollPlace ends = scrollPlace(*half.trend, {half.frame.width, half.frame.height}, 0, 0);
    EXPECT_NEAR(half.trend->width - ends.hScrollMax * 8.0, (1000 - 17) * 15, 8);
    EXPECT_NEAR(half.trend->height - ends.vScrollMax * 4.0, (600 - 17) * 15, 8);
}

TEST(Layout, ThePanelTakesWhatItNeedsAndTheSurfaceIsNeverPressed) {
    EXPECT_EQ(surfaceHeightPx(700, 22, 140), 700 - 34 - 157); // 213 - 22 - 34 is more than 140
    EXPECT_EQ(surfaceHeightPx(700, 22, 200), 700 - 34 - 200);
    EXPECT_EQ(surfaceHeightPx(300, 22, 200), 160);
}

TEST(Layout, StepsOfTheBarsFollowTheFrame) {
    const ScrollSteps steps = scrollSteps(800, 400);
    EXPECT_EQ(steps.hPage, 1500);
    EXPECT_EQ(steps.vPage, 1500);
    EXPECT_EQ(steps.hSingle, 76);
    EXPECT_EQ(steps.vSingle, 76);
}

TEST(Layout, ResizingKeepsAnEnlargedSurface) {
    const ResizeArrangement full = arrangeResize(scaleFull, form, inner);
    EXPECT_EQ(full.trend, (Size{14970, 8800}));
    EXPECT_EQ(full.frame, wide);
    const ResizeArrangement half = arrangeResize(scaleHalf, form, inner);
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
