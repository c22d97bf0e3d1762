#include "platform/draw/raster.h"

#include "tests/contract/part_image.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

using namespace kvo::platform;

namespace {

constexpr std::uint32_t ink = 0xFF123456;

struct LineImage : kvo::testing::PartImage {
    using PartImage::PartImage;
    std::string row(int y) const {
        std::string text;
        for (int x = area.left; x < area.right; ++x) text += at(x, y) != 0 ? '#' : '.';
        return text;
    }
    std::set<std::pair<int, int>> pixels() const {
        std::set<std::pair<int, int>> set;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                if (at(x, y) != 0) set.insert({x, y});
            }
        }
        return set;
    }
};

LineImage lineImage(
    PixelPoint a, PixelPoint b, const PixelRect& area, int style = 0, int width = 1) {
    LineImage image(area);
    Pen pen{ink, style, width};
    image.raster().line(a, b, pen);
    return image;
}

// The pixel nearest to the true line in each step of its longer side: what a line must be.
std::set<std::pair<int, int>> nearestPixels(PixelPoint a, PixelPoint b) {
    std::set<std::pair<int, int>> set;
    const int dx = b.x - a.x;
    const int dy = b.y - a.y;
    const int steps = std::max(std::abs(dx), std::abs(dy));
    for (int k = 0; k <= steps; ++k) {
        const auto beside = [&](int length) {
            if (steps == 0) return 0;
            const double away = std::floor(std::abs(length) * 1.0 * k / steps + 0.5);
            return static_cast<int>(length < 0 ? -away : away);
        };
        set.insert({a.x + beside(dx), a.y + beside(dy)});
    }
    return set;
}

} // namespace

TEST(Raster, EachOctantHasTheNearestPixelOfEachStep) {
    const PixelRect area{-40, -40, 41, 41};
    for (int x = -30; x <= 30; x += 5) {
        for (int y = -30; y <= 30; y += 3) {
            const PixelPoint a{2, -3};
            const PixelPoint b{2 + x, -3 + y};
            EXPECT_EQ(lineImage(a, b, area).pixels(), nearestPixels(a, b)) << x << ' ' << y;
        }
    }
}

TEST(Raster, ShallowLineIsThisPicture) {
    const LineImage image = lineImage({0, 0}, {7, 2}, {0, 0, 8, 3});
    EXPECT_EQ(image.row(0), "##......");
    EXPECT_EQ(image.row(1), "..####..");
    EXPECT_EQ(image.row(2), "......##");
}

TEST(Raster, PartIsPixelForPixelThatOfTheWhole) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> place(-150, 350);
    std::uniform_int_distribution<int> corner(0, 199);
    const PixelRect whole{-400, -400, 600, 600};
    for (int round = 0; round < 300; ++round) {
        const PixelPoint a{place(random), place(random)};
        const PixelPoint b{place(random), place(random)};
        const int style = round % 5;
        const int width = 1 + round % 2;
        const LineImage all = lineImage(a, b, whole, style, width);
        const int x = corner(random);
        const int y = corner(random);
        const PixelRect part{x, y, x + 1 + corner(random) / 3, y + 1 + corner(random) / 3};
        const LineImage cut = lineImage(a, b, part, style, width);
        for (int py = part.top; py < part.bottom; ++py) {
            for (int px = part.left; px < part.right; ++px) {
                ASSERT_EQ(cut.at(px, py), all.at(px, py))
                    << "line " << a.x << ',' << a.y << ' ' << b.x << ',' << b.y << " at " << px
                    << ',' << py;
            }
        }
    }
}

TEST(Raster, ClipTouchesNothingOutside) {
    LineImage image({0, 0, 20, 20});
    Raster raster = image.raster();
    raster.setClip({5, 5, 10, 10});
    Pen pen{ink};
    raster.line({0, 0}, {19, 19}, pen);
    raster.box({0, 7}, {19, 8}, ink);
    raster.fill({-5, -5, 6, 50}, ink);
    for (const auto& [x, y] : image.pixels()) {
        EXPECT_TRUE(x >= 5 && x < 10 && y >= 5 && y < 10) << x << ' ' << y;
    }
    EXPECT_EQ(image.row(7), ".....#####..........");
    EXPECT_EQ(image.row(9), ".....#...#..........");
}

TEST(Raster, StylesArePatternsOfPixels) {
    const PixelRect area{0, 0, 30, 1};
    EXPECT_EQ(lineImage({0, 0}, {29, 0}, area, 0).row(0), std::string(30, '#'));
    EXPECT_EQ(lineImage({0, 0}, {29, 0}, area, 1).row(0), "##################......######");
    EXPECT_EQ(lineImage({0, 0}, {29, 0}, area, 2).row(0), "###...###...###...###...###...");
    EXPECT_EQ(lineImage({0, 0}, {29, 0}, area, 3).row(0), "#########......###......######");
    EXPECT_EQ(lineImage({0, 0}, {29, 0}, area, 4).row(0), "#########...###...###...######");
    EXPECT_EQ(lineImage({0, 0}, {29, 0}, area, 7).row(0), std::string(30, '#'));
}

TEST(Raster, PatternGoesOnRoundTheCorners) {
    const UserScale scale{0, 0, 49, 1};
    const SurfaceSize size{50, 2, 1};
    LineImage whole({0, 0, 50, 2});
    LineImage pieces({0, 0, 50, 2});
    Pen pen{ink, 3};
    const std::vector<Point> ends{{0, 0}, {49, 0}};
    whole.raster().polyline(ends, PixelScale(scale, size), pen);
    pen = Pen{ink, 3};
    const std::vector<Point> many{{0, 0}, {1, 0}, {2, 0}, {8, 0}, {8, 0}, {21, 0}, {49, 0}};
    pieces.raster().polyline(many, PixelScale(scale, size), pen);
    EXPECT_EQ(whole.row(0), pieces.row(0));
}

TEST(Raster, PatternIsTwiceAsLongOnAWideLine) {
    const LineImage image = lineImage({0, 1}, {23, 1}, {0, 0, 24, 4}, 2, 2);
    EXPECT_EQ(image.row(0), std::string(24, '.'));
    EXPECT_EQ(image.row(1), "######......######......");
    EXPECT_EQ(image.row(2), "######......######......");
    EXPECT_EQ(image.row(3), std::string(24, '.'));
}

TEST(Raster, APointIsAPixelOfTheLinesWidth) {
    EXPECT_EQ(lineImage({3, 1}, {3, 1}, {0, 0, 6, 4}).pixels().size(), 1U);
    EXPECT_EQ(lineImage({3, 1}, {3, 1}, {0, 0, 6, 4}, 0, 2).pixels().size(), 4U);
}

TEST(Raster, EndlessAndMeaninglessPositionsAreQuick) {
    const UserScale scale{0, 1100, 2442, 0};
    const SurfaceSize size{1920, 1080, 1};
    const PixelScale pixels(scale, size);
    const float endless = std::numeric_limits<float>::infinity();
    const float none = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(pixels.x(1e30F), farPixel);
    EXPECT_EQ(pixels.x(-endless), -farPixel);
    EXPECT_EQ(pixels.y(none), noPixel);
    LineImage image({0, 0, 1920, 1080});
    Raster raster = image.raster();
    const auto start = std::chrono::steady_clock::now();
    const std::vector<Point> wild{{0, 0}, {1e30F, 1e30F}, {-1e30F, 5}, {5, none}, {100, 100},
        {3.4e38F, -3.4e38F}, {endless, 20}, {-endless, -endless}, {1, 1}};
    for (int i = 0; i < 100; ++i) {
        Pen pen{ink, i % 5, 1 + i % 2};
        raster.polyline(wild, pixels, pen);
        raster.box(pixels.point({-1e30F, 500}), pixels.point({1e30F, 499}), ink);
        raster.box(pixels.point({none, 500}), pixels.point({1e30F, 499}), ink);
    }
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_LT(std::chrono::duration<double>(took).count(), 5);
    EXPECT_EQ(image.at(960, pixels.y(500)), ink); // in the box that crosses the whole surface
}

TEST(Raster, ALineToNoNumberIsLeftOut) {
    LineImage image({0, 0, 10, 10});
    Pen pen{ink};
    const float none = std::numeric_limits<float>::quiet_NaN();
    const std::vector<Point> points{{0, 0}, {5, none}, {9, 9}};
    image.raster().polyline(points, PixelScale({0, 0, 9, 9}, {10, 10, 1}), pen);
    EXPECT_TRUE(image.pixels().empty());
}

TEST(Raster, BoxHasBothCorners) {
    LineImage image({0, 0, 6, 5});
    image.raster().box({4, 3}, {1, 2}, ink);
    EXPECT_EQ(image.row(1), "......");
    EXPECT_EQ(image.row(2), ".####.");
    EXPECT_EQ(image.row(3), ".####.");
    EXPECT_EQ(image.row(4), "......");
}

TEST(Raster, ColoursTurnRound) {
    EXPECT_EQ(rgb32(255), 0xFFFF0000U);
    EXPECT_EQ(rgb32(0xFF0000), 0xFF0000FFU);
    EXPECT_EQ(rgb32(0x80123456), 0xFF563412U);
}

TEST(PixelScale, EdgesOfTheScaleAreTheFirstAndLastLine) {
    const PixelScale one({0, 1100, 1361, 0}, {800, 500, 1});
    EXPECT_EQ(one.point({0, 1100}), (PixelPoint{0, 0}));
    EXPECT_EQ(one.point({1361, 0}), (PixelPoint{799, 499}));
    const PixelScale two({0, 1100, 1361, 0}, {1600, 1000, 2});
    EXPECT_EQ(two.point({1361, 0}), (PixelPoint{1598, 998}));
}

TEST(PixelScale, RoundsToTheNearestPixelAndBack) {
    const PixelScale scale({0, 10, 10, 0}, {101, 101, 1});
    EXPECT_EQ(scale.x(0.04F), 0);
    EXPECT_EQ(scale.x(0.06F), 1);
    EXPECT_EQ(scale.y(9.94F), 1);
    EXPECT_EQ(scale.x(-0.04F), 0);
    EXPECT_EQ(scale.x(-0.06F), -1);
    EXPECT_EQ(scale.x(-0.14F), -1);
    const Point user = scale.user(50, 25);
    EXPECT_FLOAT_EQ(user.x, 5);
    EXPECT_FLOAT_EQ(user.y, 7.5F);
}

TEST(PixelScale, AnEmptyScaleOrSurfaceIsHarmless) {
    const PixelScale flat({5, 5, 5, 5}, {100, 100, 1});
    EXPECT_EQ(flat.point({5, 5}), (PixelPoint{0, 0}));
    EXPECT_EQ(flat.user(10, 10), (Point{0, 0}));
    const PixelScale nothing({0, 0, 10, 10}, {0, 0, 2});
    EXPECT_EQ(nothing.point({7, 7}), (PixelPoint{0, 0}));
}
