#include "graph/paper_surface.h"

#include "tests/support/recording_surface.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace kvo;
using namespace kvo::graph;
using kvo::testing::RecordingSurface;
using platform::Colour;

namespace {

double light(Colour colour, unsigned shift) {
    const double part = (colour >> shift & 0xFFU) / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double contrastToWhite(Colour c) {
    const double luminance = 0.2126 * light(c, 0) + 0.7152 * light(c, 8) + 0.0722 * light(c, 16);
    return 1.05 / (luminance + 0.05);
}

constexpr Colour grid = 0xC0C0C0;

struct PaperSurfaceTest : ::testing::Test {
    RecordingSurface page;
    PaperSurface white{page, {true, grid, {}}};
    PaperSurface screen{page, {false, grid, {}}};
    const kvo::testing::SurfaceOperation& last() { return page.operations().back(); }
};

} // namespace

TEST(ReadableOnWhite, EveryColourStandsOut) {
    for (unsigned blue = 0; blue < 256; blue += 15) {
        for (unsigned green = 0; green < 256; green += 15) {
            for (unsigned red = 0; red < 256; red += 15) {
                const Colour colour = red | green << 8U | blue << 16U;
                EXPECT_GE(contrastToWhite(readableOnWhite(colour)), 3.0) << std::hex << colour;
            }
        }
    }
}

TEST(ReadableOnWhite, WhatStandsOutStaysAsItIs) {
    for (const Colour colour : {0x000000U, 0xFF0000U, 0x0000FFU, 0xFF00FFU, 0x808080U, 0x008000U})
        EXPECT_EQ(readableOnWhite(colour), colour);
}

TEST(ReadableOnWhite, WhiteBecomesBlackAndALightGreyADarkOne) {
    EXPECT_EQ(readableOnWhite(0xFFFFFF), 0x000000U);
    EXPECT_EQ(readableOnWhite(0xC0C0C0), 0x3F3F3FU);
    EXPECT_EQ(readableOnWhite(0xFFFFF5), 0x00000AU);
}

TEST(ReadableOnWhite, AHueIsKept) {
    const Colour yellow = readableOnWhite(0x00FFFF);
    EXPECT_EQ(yellow & 0xFFU, yellow >> 8U & 0xFFU);
    EXPECT_EQ(yellow >> 16U, 0U);
    EXPECT_GT(yellow & 0xFFU, 0x80U);
    const Colour green = readableOnWhite(0x00FF00);
    EXPECT_EQ(green & 0xFF00FFU, 0U);
    EXPECT_NE(readableOnWhite(0xFFFF00), yellow);
}

TEST_F(PaperSurfaceTest, OnWhitePaperTheGroundIsWhiteAndTheGridLightGrey) {
    PaperSurface onGrey(page, {true, 0xFFFFF5, {}});
    onGrey.setBackColor(0xC0C0C0);
    onGrey.cls();
    EXPECT_EQ(last().colour, platform::white);
    onGrey.line(0, 1, 2, 1, 0xFFFFF5);
    EXPECT_EQ(last().colour, 0xC0C0C0U);
    onGrey.line(0, 1, 2, 1, 0x00FFFF);
    EXPECT_EQ(last().colour, readableOnWhite(0x00FFFF));
}

TEST_F(PaperSurfaceTest, ACurveOfTheGridsColourIsStillACurve) {
    const std::vector<platform::Point> points{{1, 1}, {2, 2}};
    white.polyline(points, grid);
    EXPECT_EQ(last().colour, readableOnWhite(grid));
    white.lineTo(5, 5, platform::white);
    EXPECT_EQ(last().colour, platform::black);
}

TEST_F(PaperSurfaceTest, BarsBoxesAndTextsAreReadableToo) {
    const std::vector<std::uint8_t> masks{1};
    const std::vector<platform::Bar> bars{{10, 5, 0x00FF80}};
    white.boxes(masks, bars);
    EXPECT_EQ(last().colour, readableOnWhite(0x00FF80));
    white.box(0, 0, 1, 1, platform::white);
    EXPECT_EQ(last().colour, platform::black);
    white.setForeColor(platform::white);
    white.print("7");
    EXPECT_EQ(last().colour, platform::black);
}

TEST_F(PaperSurfaceTest, TheScreensOwnColoursStay) {
    screen.setBackColor(0x123456);
    screen.cls();
    EXPECT_EQ(last().colour, 0x123456U);
    screen.line(0, 1, 2, 1, platform::white);
    EXPECT_EQ(last().colour, platform::white);
    screen.box(0, 0, 1, 1, 0x00FFFF);
    EXPECT_EQ(last().colour, 0x00FFFFU);
}

TEST_F(PaperSurfaceTest, ThePartInViewFillsThePage) {
    PaperSurface part(page, {true, grid, {0.25F, 0.5F, 0.75F, 1}});
    part.setScale(0, 1100, 2000, 0);
    EXPECT_EQ(last().x1, 500);
    EXPECT_EQ(last().y1, 550);
    EXPECT_EQ(last().x2, 1500);
    EXPECT_EQ(last().y2, 0);
    EXPECT_EQ(part.scaleWidth(), 2000); // grid lines run over the whole surface
}
