#include "graph/layout.h"

#include <gtest/gtest.h>

#include <utility>

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

TEST(Layout, AWindowOpensOnNineTenthsOfTheScreen) {
    EXPECT_EQ(openedSidePx(1920), 1728);
    EXPECT_EQ(openedSidePx(1079), 971);
}

TEST(Layout, ThePanelsColumnsAndTheirWidth) {
    EXPECT_EQ(panelColumns(4, fewRows), 1);
    EXPECT_EQ(panelColumns(5, fewRows), 1);
    EXPECT_EQ(panelColumns(8, fewRows), 2);
    EXPECT_EQ(panelColumns(8, manyRows), 1);
    // Six columns in four groups: two gaps inside, one behind each group, both margins.
    EXPECT_EQ(panelWidthPx(6, 4, 100, std::nullopt), 600 + 12 + 40 + 12);
    EXPECT_EQ(panelWidthPx(6, 4, 100, 80), 600 + 12 + 40 + 12 + 90);
    EXPECT_EQ(groupWidthPx(2, 100), 206);
}

TEST(Layout, AnOverlaysValueTakesHalfOfTheRoom) {
    EXPECT_EQ(toggleWidthPx(60), 85);
    EXPECT_EQ(cellWidthPx(85, 40, false), 130);
    EXPECT_EQ(cellWidthPx(85, 40, true), 177);
    const CellPlaces covered = cellPlaces(185, 20, 85, false);
    EXPECT_EQ(covered.toggle, (BoxPx{0, 0, 85, 20}));
    EXPECT_EQ(covered.value, (BoxPx{85, 1, 100, 18}));
    const CellPlaces both = cellPlaces(185, 20, 85, true);
    EXPECT_EQ(both.value, (BoxPx{85, 1, 49, 18}));
    EXPECT_EQ(both.overlay, (BoxPx{136, 1, 49, 18}));
}

// A step of the bars is 8 twips along and 4 down; a pixel has 15.
TEST(Layout, APlaceStaysWhereItIsSeen) {
    EXPECT_EQ(scrollToKeep({30000, 15000}, {0.5, 0.5, 100, 100}),
        (ScrollValues{(15000 - 1500) / 8 + 1, (7500 - 1500) / 4})); // 1687.5, a tie to even
    EXPECT_EQ(scrollToKeep({30000, 15000}, {0, 0, 0, 0}), (ScrollValues{0, 0}));
    EXPECT_EQ(scrollToKeep({30000, 15000}, {0, 0, 80, 40}), (ScrollValues{-150, -150}));
    EXPECT_EQ(scrollToKeep({32000, 16000}, {1, 1, 0, 0}), (ScrollValues{4000, 4000}));
}

TEST(Layout, TheLoadingPanelStandsAtTheEndOfItsLine) {
    const ReadOutPlaces places = readOutPlaces(1000, 20, {150, 0, 0, 0, 0, 60, 90});
    EXPECT_EQ(places.time, (BoxPx{0, 0, 150, 20}));
    EXPECT_EQ(places.pointer, (BoxPx{162, 0, 838, 20}));
    EXPECT_EQ(places.runTitle.width, 0);
    EXPECT_EQ(places.overlayTitle.width, 0);
    EXPECT_EQ(places.loading, (BoxPx{646, 0, 354, 20}));
    EXPECT_EQ(places.loadingText, (BoxPx{0, 0, 60, 20}));
    EXPECT_EQ(places.loadingFile, (BoxPx{72, 0, 90, 20}));
    EXPECT_EQ(places.progress, (BoxPx{174, 2, 180, 16}));
    EXPECT_EQ(readOutPlaces(100, 20, {150, 0, 0, 0, 0, 60, 90}).pointer.width, 0);
}

TEST(Layout, TheTimeFromAReferenceStandsBesideTheTime) {
    const ReadOutPlaces places = readOutPlaces(1000, 20, {150, 80, 100, 0, 0, 60, 90});
    EXPECT_EQ(places.time, (BoxPx{0, 0, 150, 20}));
    EXPECT_EQ(places.between, (BoxPx{162, 0, 80, 20}));
    EXPECT_EQ(places.pointer, (BoxPx{254, 0, 746, 20}));
    EXPECT_EQ(places.loading, (BoxPx{646, 0, 354, 20}));
}

TEST(Layout, TheTitlesStandAtTheEndOfTheLine) {
    ReadOutPlaces places = readOutPlaces(1000, 20, {150, 0, 200, 300, 0, 0, 0});
    EXPECT_EQ(places.runTitle, (BoxPx{700, 0, 300, 20}));
    EXPECT_EQ(places.overlayTitle.width, 0);
    EXPECT_EQ(places.pointer, (BoxPx{162, 0, 526, 20}));
    places = readOutPlaces(1000, 20, {150, 0, 200, 300, 250, 0, 0});
    EXPECT_EQ(places.overlayTitle, (BoxPx{750, 0, 250, 20}));
    EXPECT_EQ(places.runTitle, (BoxPx{438, 0, 300, 20}));
    EXPECT_EQ(places.pointer, (BoxPx{162, 0, 264, 20}));
}

// What is told under the pointer keeps its room; of two titles the longer one is shortened first.
TEST(Layout, LongTitlesAreShortened) {
    const auto titles = [](int run, int overlay, int pointer) {
        const ReadOutPlaces places = readOutPlaces(1000, 20, {150, 0, pointer, run, overlay, 0, 0});
        EXPECT_GE(places.pointer.width, pointer);
        EXPECT_LE(places.pointer.left + pointer, places.runTitle.left);
        return std::pair(places.runTitle.width, places.overlayTitle.width);
    };
    EXPECT_EQ(titles(900, 0, 200), std::pair(626, 0)); // 1000 - 162 - 212
    EXPECT_EQ(titles(900, 900, 200), std::pair(307, 307));
    EXPECT_EQ(titles(100, 900, 200), std::pair(100, 514));
    EXPECT_EQ(titles(900, 100, 200), std::pair(514, 100));
    EXPECT_EQ(titles(900, 0, 0), std::pair(838, 0));
    const ReadOutPlaces none = readOutPlaces(200, 20, {150, 0, 200, 300, 300, 0, 0});
    EXPECT_EQ(none.runTitle.width, 0);
    EXPECT_EQ(none.overlayTitle.width, 0);
}

TEST(Layout, ThePointersTextHasALabelInAWideWindow) {
    EXPECT_FALSE(pointerHasLabel(15399));
    EXPECT_TRUE(pointerHasLabel(15400));
}
