#include "platform/draw/display_list.h"

#include "tests/contract/part_image.h"
#include "tests/support/plain_raster.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

using namespace kvo::platform;
using kvo::testing::BoxText;
using kvo::testing::PartImage;

namespace {

struct Painting : PartImage {
    using PartImage::PartImage;
    void paint(const DisplayList& picture, const SurfaceSize& size) {
        paint(picture, size, 0, picture.size());
    }
    void paint(
        const DisplayList& picture, const SurfaceSize& size, std::size_t from, std::size_t to) {
        Raster target = raster();
        BoxText text(target);
        picture.paint(target, text, size, from, to);
    }
};

PixelRect whole(const SurfaceSize& size) {
    return {0, 0, size.widthPx, size.heightPx};
}

// A picture with everything a graph has: grid, numbers, switch bars, curves in all styles.
void drawSomething(DisplayListSurface& surface) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> height(-50, 1200);
    surface.setScale(0, 1100, 1361, 0);
    surface.cls();
    surface.setDrawStyle(2);
    for (int y = 62; y < 1050; y += 62) {
        surface.setCurrentX(10);
        surface.setCurrentY(static_cast<float>(y - 3));
        surface.print(" 1000 Rpm");
        surface.line(0, static_cast<float>(y), 1361, static_cast<float>(y), 0xC0C0C0);
    }
    surface.setDrawStyle(0);
    for (int i = 1; i < 1361; ++i) {
        const auto x = static_cast<float>(i);
        if (i % 7 < 4) surface.box(x - 1, 96, x, 88, 255);
    }
    std::vector<std::uint8_t> masks(1360);
    for (std::size_t i = 0; i < masks.size(); ++i) masks[i] = i % 90 < 60 ? 5 : 2;
    const std::vector<Bar> bars{{1096, 1088, 255}, {1078, 1070, 0xFF00FF}, {1060, 1052, 77}};
    surface.boxes(masks, bars);
    for (int style = 0; style < 5; ++style) {
        surface.setDrawStyle(style);
        surface.setCurrentX(0);
        surface.setCurrentY(0);
        for (int i = 1; i <= 1360; i += 4) {
            surface.lineTo(
                static_cast<float>(i), height(random), 0x102030U * (1U + unsigned(style)));
        }
    }
}

class Watched : public DisplayListWatcher {
public:
    void keptChanged() override { ++kept; }
    void upperDrawn(std::size_t place) override { drawn.push_back(place); }
    void upperWiped() override { ++wiped; }
    void backColorChanged() override { ++back; }
    int kept = 0;
    int wiped = 0;
    int back = 0;
    std::vector<std::size_t> drawn;
};

} // namespace

TEST(DisplayList, AnyPartIsPixelForPixelThatOfTheWhole) {
    DisplayListSurface surface;
    drawSomething(surface);
    for (const SurfaceSize& size :
        {SurfaceSize{640, 360, 1}, SurfaceSize{1280, 720, 2}, SurfaceSize{3000, 1700, 1}}) {
        Painting all(whole(size));
        all.paint(surface.kept(), size);
        std::mt19937 random(11);
        for (int round = 0; round < 25; ++round) {
            const int left = static_cast<int>(random() % 600);
            const int top = static_cast<int>(random() % 340);
            const PixelRect part{left, top, left + 1 + static_cast<int>(random() % 90),
                top + 1 + static_cast<int>(random() % 90)};
            Painting cut(intersection(part, whole(size)));
            cut.paint(surface.kept(), size);
            for (int y = cut.area.top; y < cut.area.bottom; ++y) {
                for (int x = cut.area.left; x < cut.area.right; ++x) {
                    ASSERT_EQ(cut.at(x, y), all.at(x, y)) << x << ' ' << y << ' ' << size.widthPx;
                }
            }
        }
    }
}

TEST(DisplayList, NewOperationsPaintedOnTopGiveTheSameAsAllAnew) {
    const SurfaceSize size{500, 300, 1};
    DisplayListSurface surface;
    drawSomething(surface);
    Painting grown(whole(size));
    grown.paint(surface.kept(), size);
    const std::size_t before = surface.kept().size();
    surface.kept().seal();
    surface.setDrawStyle(3);
    surface.lineTo(5, 5, 255);
    surface.lineTo(1300, 900, 255);
    EXPECT_GT(surface.kept().size(), before);
    grown.paint(surface.kept(), size, before, surface.kept().size());
    Painting anew(whole(size));
    anew.paint(surface.kept(), size);
    EXPECT_EQ(grown.words, anew.words);
}

// Bars joined to spans must be the picture that one box a sample gives, also on surfaces so low
// that two bars share a row of pixels.
TEST(DisplayList, BarsAreTheBoxesOneByOne) {
    std::mt19937 random(5);
    std::vector<std::uint8_t> masks;
    for (int i = 0; i < 2048; ++i) {
        const bool keep = random() % 20 != 0 && !masks.empty();
        masks.push_back(keep ? masks.back() : static_cast<std::uint8_t>(random()));
    }
    std::vector<Bar> bars;
    for (int bar = 0; bar < 8; ++bar) {
        const float top = 1096 - 9 * static_cast<float>(bar);
        bars.push_back({top, top - 8, paletteColour(bar + 1)});
    }
    for (const int heightPx : {90, 300, 1080, 2000}) {
        for (const int linePx : {1, 2}) {
            const SurfaceSize size{700, heightPx, linePx};
            DisplayListSurface surface;
            surface.setScale(0, 1100, 2049, 0);
            surface.boxes(masks, bars);
            EXPECT_EQ(surface.kept().size(), 1U);
            DisplayListSurface single;
            single.setScale(0, 1100, 2049, 0);
            single.Surface::boxes(masks, bars);
            EXPECT_EQ(surface.currentX(), single.currentX());
            EXPECT_EQ(surface.currentY(), single.currentY());
            Painting joined(whole(size));
            joined.paint(surface.kept(), size);
            Painting plain(whole(size));
            plain.paint(single.kept(), size);
            EXPECT_EQ(joined.words, plain.words) << heightPx << ' ' << linePx;
        }
    }
}

TEST(DisplayList, BarsThatAreNotThereLeaveThePosition) {
    DisplayListSurface surface;
    surface.setCurrentX(3);
    const std::vector<std::uint8_t> masks{0, 16, 0};
    const std::vector<Bar> bars{{10, 5, 255}};
    surface.boxes(masks, bars);
    EXPECT_EQ(surface.currentX(), 3);
    surface.boxes({}, bars);
    EXPECT_EQ(surface.currentX(), 3);
    const std::vector<std::uint8_t> oneKnown{17, 16};
    surface.boxes(oneKnown, bars);
    EXPECT_EQ(surface.currentX(), 1);
    EXPECT_EQ(surface.currentY(), 5);
}

TEST(DisplayList, BoxesWithoutNumbersAreLeftOut) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    DisplayListSurface surface;
    surface.setScale(0, 100, 100, 0);
    surface.box(none, 50, 60, 40, 255);
    surface.box(10, none, 60, 40, 255);
    Painting image({0, 0, 100, 100});
    image.paint(surface.kept(), {100, 100, 1});
    EXPECT_EQ(image.words, Painting({0, 0, 100, 100}).words);
}

TEST(DisplayList, DrawnOnAnotherSurfaceIsTheSamePicture) {
    const SurfaceSize size{700, 400, 1};
    DisplayListSurface surface;
    drawSomething(surface);
    surface.setDrawWidth(3);
    surface.setScale(0, 0, 50, 40);
    surface.line(5, 5, 45, 9, 0x44);
    DisplayListSurface copy;
    surface.kept().drawOn(copy);
    Painting original(whole(size));
    original.paint(surface.kept(), size);
    Painting copied(whole(size));
    copied.paint(copy.kept(), size);
    EXPECT_EQ(original.words, copied.words);
}

TEST(DisplayList, MemoryDoesNotGrowWithTheSurface) {
    DisplayListSurface surface;
    drawSomething(surface);
    const std::size_t before = surface.kept().memory();
    EXPECT_LT(before, 200000U);
    Painting corner({28000, 15000, 28010, 15010});
    corner.paint(surface.kept(), {28800, 16200, 1});
    EXPECT_EQ(surface.kept().memory(), before);
    for (int i = 0; i < 50; ++i) drawSomething(surface);
    EXPECT_LT(surface.kept().memory(), 3 * before);
}

TEST(DisplayListSurface, BeginsWithAPlainScaleAndFont) {
    DisplayListSurface surface;
    EXPECT_EQ(surface.scale(), (UserScale{0, 0, 1, 1}));
    surface.setHeightPx(100);
    surface.print("a line of 8 points");
    EXPECT_EQ(surface.currentY(), static_cast<float>(textLineHeightPx(8)) / 100);
}

TEST(DisplayListSurface, LinesLeaveTheCurrentPositionAtTheirEnd) {
    DisplayListSurface surface;
    surface.setScale(0, 1100, 100, 0);
    surface.lineTo(5, 6, 0);
    EXPECT_EQ(surface.currentX(), 5);
    EXPECT_EQ(surface.currentY(), 6);
    surface.line(1, 2, 80, 0, 0);
    EXPECT_EQ(surface.currentX(), 80);
    EXPECT_EQ(surface.currentY(), 0);
    surface.polyline(std::vector<Point>{{7, 8}, {9, 10}}, 0);
    EXPECT_EQ(surface.currentX(), 9);
    surface.box(1, 2, 3, 4, 0);
    EXPECT_EQ(surface.currentX(), 3);
    surface.cls();
    EXPECT_EQ(surface.currentX(), 0);
    EXPECT_EQ(surface.scaleWidth(), 100);
}

TEST(DisplayListSurface, BehindATextTheNextLineStarts) {
    DisplayListSurface surface;
    surface.setScale(0, 1100, 100, 0);
    surface.setHeightPx(550);
    surface.setFontSize(7);
    surface.setCurrentX(40);
    surface.setCurrentY(600);
    surface.print("AVERAGE");
    EXPECT_EQ(surface.currentX(), 0);
    EXPECT_FLOAT_EQ(surface.currentY(), 600 - 2 * static_cast<float>(textLineHeightPx(7)));
}

TEST(DisplayListSurface, LineByLineAndAllAtOnceIsOneOperation) {
    DisplayListSurface surface;
    surface.setDrawStyle(1);
    surface.lineTo(1, 1, 7);
    surface.lineTo(2, 5, 7);
    surface.polyline(std::vector<Point>{{3, 3}, {4, 9}}, 7);
    EXPECT_EQ(surface.kept().size(), 1U);
    surface.lineTo(5, 5, 8);
    EXPECT_EQ(surface.kept().size(), 2U);
    surface.line(5, 5, 6, 6, 8);
    EXPECT_EQ(surface.kept().size(), 3U);
}

TEST(DisplayListSurface, WhatLiesOnTopGoesWithARefresh) {
    DisplayListSurface surface;
    Watched watched;
    surface.setWatcher(&watched);
    surface.lineTo(10, 10, 255);
    const std::uint32_t generation = surface.kept().generation();
    surface.setAutoRedraw(false);
    surface.refresh();
    EXPECT_EQ(watched.wiped, 0);
    surface.line(5, 1100, 5, 0, 255);
    EXPECT_EQ(surface.upper().size(), 1U);
    EXPECT_EQ(watched.drawn, std::vector<std::size_t>{0});
    surface.refresh();
    EXPECT_TRUE(surface.upper().empty());
    EXPECT_EQ(watched.wiped, 1);
    EXPECT_EQ(surface.kept().size(), 1U);
    EXPECT_EQ(surface.kept().generation(), generation);
    EXPECT_EQ(watched.kept, 1);
}

TEST(DisplayListSurface, DrawingOnTheKeptPictureWipesWhatLiesOnTop) {
    DisplayListSurface surface;
    surface.setAutoRedraw(false);
    surface.line(5, 1100, 5, 0, 255);
    surface.setAutoRedraw(true);
    EXPECT_FALSE(surface.upper().empty());
    surface.lineTo(3, 3, 255);
    EXPECT_TRUE(surface.upper().empty());
    EXPECT_EQ(surface.kept().size(), 1U);
}

TEST(DisplayListSurface, ClsDropsThePictureItDrawsOn) {
    DisplayListSurface surface;
    surface.lineTo(3, 3, 255);
    surface.setAutoRedraw(false);
    surface.lineTo(4, 4, 255);
    surface.cls();
    EXPECT_TRUE(surface.upper().empty());
    EXPECT_FALSE(surface.kept().empty());
    const std::uint32_t generation = surface.kept().generation();
    surface.setAutoRedraw(true);
    surface.cls();
    EXPECT_TRUE(surface.kept().empty());
    EXPECT_NE(surface.kept().generation(), generation);
}

TEST(DisplayListSurface, BoundsHoldEveryPixelOfALine) {
    DisplayListSurface surface;
    surface.setScale(0, 1100, 1361, 0);
    surface.setAutoRedraw(false);
    surface.setDrawStyle(4);
    surface.line(160, 1100, 160, 0, 255);
    for (const int linePx : {1, 2}) {
        const SurfaceSize size{800 * linePx, 500 * linePx, linePx};
        const PixelRect bounds = surface.upper().bounds(0, size);
        EXPECT_EQ(bounds.width(), linePx);
        EXPECT_EQ(bounds.height(), size.heightPx);
        Painting image(whole(size));
        image.paint(surface.upper(), size);
        for (int y = 0; y < size.heightPx; ++y) {
            for (int x = 0; x < size.widthPx; ++x) {
                ASSERT_TRUE(image.at(x, y) == 0 || bounds.holds({x, y})) << x << ' ' << y;
            }
        }
    }
}
