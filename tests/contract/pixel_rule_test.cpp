// The program's own drawing against the plain rule, pixel for pixel, over thousands of seeded
// lines: all styles, widths and phases, whole surfaces and any part of one, curves and wild data.
#include "tests/support/plain_raster.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace kvo::platform;
using kvo::testing::BoxText;
using kvo::testing::PlainImage;
using kvo::testing::plainPixel;
using kvo::testing::PlainSurface;

namespace {

class Chance {
public:
    explicit Chance(unsigned seed) : m_random(seed) {}
    // Both ends included.
    int between(int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(m_random);
    }
    float real(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(m_random);
    }
    bool oneIn(int n) { return between(1, n) == 1; }
    template <std::size_t N> float oneOf(const std::array<float, N>& values) {
        return values[static_cast<std::size_t>(between(0, static_cast<int>(N) - 1))];
    }

private:
    std::mt19937 m_random;
};

// How a line runs on: as a curve does, sample after sample, or as no curve ever should.
enum class Course { dense, sparse, upright, backward, jumping, resting, wild };
constexpr std::array courses{Course::dense, Course::sparse, Course::upright, Course::backward,
    Course::jumping, Course::resting, Course::wild};

constexpr float endless = std::numeric_limits<float>::infinity();
constexpr float none = std::numeric_limits<float>::quiet_NaN();
constexpr std::array<float, 12> wildValues{
    0, -0.0F, 1, 50, 1e9F, -1e9F, 1e30F, -3.4e38F, endless, -endless, none, none};

Point nextPoint(Course course, Point at, Chance& chance) {
    switch (course) {
    case Course::dense:
        return {at.x + 0.5F, at.y + chance.real(-9, 9)};
    case Course::sparse:
        return {at.x + chance.real(0, 7), at.y + chance.real(-40, 40)};
    case Course::upright:
        return {at.x + (chance.oneIn(4) ? 0.9F : 0), chance.real(-30, 130)};
    case Course::backward:
        return {at.x + chance.real(-2, 1), at.y + chance.real(-5, 5)};
    case Course::jumping:
        return {chance.real(-60, 160), chance.real(-60, 160)};
    case Course::resting:
        return chance.oneIn(3) ? Point{at.x + 1, at.y} : at;
    default:
        if (chance.oneIn(3)) return {chance.oneOf(wildValues), chance.oneOf(wildValues)};
        return {chance.real(-20, 120), chance.real(-20, 120)};
    }
}

std::vector<Point> lineOf(Course course, Chance& chance) {
    const int count = chance.oneIn(5) ? chance.between(1, 4) : chance.between(5, 700);
    std::vector<Point> points{{0, 0}};
    Point at{chance.real(-20, 40), chance.real(0, 100)};
    if (chance.oneIn(3)) points[0] = at;
    while (static_cast<int>(points.size()) < count) {
        points.push_back(at);
        at = nextPoint(course, at, chance);
    }
    return points;
}

SurfaceSize sizeOf(Chance& chance) {
    const int linePx = chance.between(1, 3);
    return {chance.between(1, 150) * linePx, chance.between(1, 110) * linePx, linePx};
}

UserScale scaleOf(Chance& chance) {
    if (chance.oneIn(12)) return {7, 30, 7, 30};
    if (chance.oneIn(6)) return {100, 0, 0, 100};
    return {chance.real(-10, 0), 100, chance.real(60, 140), 0};
}

// Mostly a part of the surface; at times all of it and more, at times a pixel or none.
PixelRect partOf(const SurfaceSize& size, Chance& chance) {
    if (chance.oneIn(3)) return {0, 0, size.widthPx, size.heightPx};
    const int left = chance.between(-5, size.widthPx);
    const int top = chance.between(-5, size.heightPx);
    return {left, top, left + chance.between(0, 60), top + chance.between(0, 60)};
}

std::string firstDifference(const PlainImage& ours, const PlainImage& plain) {
    for (int y = ours.area().top; y < ours.area().bottom; ++y) {
        for (int x = ours.area().left; x < ours.area().right; ++x) {
            if (ours.at(x, y) != plain.at(x, y))
                return "pixel " + std::to_string(x) + ", " + std::to_string(y);
        }
    }
    return "";
}

} // namespace

TEST(PixelRule, EveryPolylineIsThatOfThePlainRule) {
    int painted = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        Chance chance(seed);
        const auto points = lineOf(courses[seed % courses.size()], chance);
        const SurfaceSize size = sizeOf(chance);
        const UserScale scale = scaleOf(chance);
        const PixelRect area = partOf(size, chance);
        Pen pen{0xFF123456, chance.oneIn(2) ? 0 : chance.between(-1, 5), size.linePx,
            static_cast<std::uint32_t>(chance.between(0, 80))};
        Pen plainPen = pen;
        PlainImage ours(area);
        PlainImage plain(area);
        Raster raster = ours.raster();
        raster.polyline(points, PixelScale(scale, size), pen);
        plain.polyline(points, scale, size, plainPen);
        ASSERT_EQ(firstDifference(ours, plain), "") << "seed " << seed;
        painted += firstDifference(ours, PlainImage(area)).empty() ? 0 : 1;
    }
    EXPECT_GT(painted, 1500);
}

TEST(PixelRule, EverySingleLineIsThatOfThePlainRule) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        Chance chance(seed);
        const PixelRect area = partOf({150, 110, 1}, chance);
        const int reach = chance.oneIn(10) ? farPixel : chance.oneIn(3) ? 30 : 300;
        Pen pen{0xFF123456, chance.between(0, 4), chance.between(1, 3),
            static_cast<std::uint32_t>(chance.between(0, 80))};
        Pen plainPen = pen;
        PlainImage ours(area);
        PlainImage plain(area);
        Raster raster = ours.raster();
        for (int i = 0; i < 6; ++i) {
            const PixelPoint a{chance.between(-reach, reach), chance.between(-reach, reach)};
            const PixelPoint b{chance.oneIn(5) ? a.x : chance.between(-reach, reach),
                chance.oneIn(5) ? a.y : chance.between(-reach, reach)};
            raster.line(a, b, pen);
            plain.line(a, b, plainPen);
        }
        ASSERT_EQ(firstDifference(ours, plain), "") << "seed " << seed;
    }
}

TEST(PixelRule, AClipTakesPixelsAwayAndChangesNone) {
    for (unsigned seed = 0; seed < 1400; ++seed) {
        Chance chance(seed);
        const auto points = lineOf(courses[seed % courses.size()], chance);
        const SurfaceSize size = sizeOf(chance);
        const UserScale scale = scaleOf(chance);
        const PixelRect clip = partOf(size, chance);
        Pen pen{0xFF123456, chance.oneIn(2) ? 0 : chance.between(0, 4), size.linePx, 0};
        Pen plainPen = pen;
        PlainImage ours({0, 0, size.widthPx, size.heightPx});
        PlainImage whole(ours.area());
        Raster raster = ours.raster();
        raster.setClip(clip);
        raster.polyline(points, PixelScale(scale, size), pen);
        whole.polyline(points, scale, size, plainPen);
        PlainImage plain(ours.area());
        for (int y = clip.top; y < clip.bottom; ++y) {
            for (int x = clip.left; x < clip.right; ++x) plain.set(x, y, whole.at(x, y));
        }
        ASSERT_EQ(firstDifference(ours, plain), "") << "seed " << seed;
    }
}

TEST(PixelRule, PositionsFallOnThePixelsOfThePlainRule) {
    for (unsigned seed = 0; seed < 1400; ++seed) {
        Chance chance(seed);
        const SurfaceSize size = sizeOf(chance);
        const UserScale scale = scaleOf(chance);
        const PixelScale pixels(scale, size);
        for (const Point& at : lineOf(courses[seed % courses.size()], chance))
            ASSERT_EQ(pixels.point(at), plainPixel(at, scale, size)) << "seed " << seed;
    }
}

// Several lines, bars and texts in a kept list, painted whole and in parts.
TEST(PixelRule, AnyPartOfAKeptListIsThatOfThePlainPicture) {
    for (unsigned seed = 0; seed < 280; ++seed) {
        Chance chance(seed);
        const SurfaceSize size = sizeOf(chance);
        const UserScale scale = scaleOf(chance);
        DisplayListSurface kept;
        PlainSurface plain(size);
        const auto both = [&](auto draw) {
            draw(static_cast<Surface&>(kept));
            draw(static_cast<Surface&>(plain));
        };
        both([&](Surface& s) { s.setScale(scale.left, scale.top, scale.right, scale.bottom); });
        for (int i = 0; i < 5; ++i) {
            const auto points = lineOf(courses[(seed + unsigned(i)) % courses.size()], chance);
            const int style = chance.oneIn(2) ? 0 : chance.between(1, 4);
            const auto colour = static_cast<Colour>(0x10 + i);
            const float at = chance.real(0, 100);
            both([&](Surface& s) {
                s.box(at, at, at + 9, at - 7, colour + 32);
                s.setDrawStyle(style);
                s.setCurrentX(i % 2 == 0 ? 0 : at);
                s.setCurrentY(0);
                s.polyline(points, colour);
                s.setCurrentX(at);
                s.setCurrentY(at / 2);
                s.setForeColor(colour + 64);
                s.print("1000 Rpm");
            });
        }
        for (int part = 0; part < 6; ++part) {
            PlainImage ours(
                intersection(partOf(size, chance), {0, 0, size.widthPx, size.heightPx}));
            Raster raster = ours.raster();
            BoxText text(raster);
            kept.kept().paint(raster, text, size, 0, kept.kept().size());
            ASSERT_EQ(firstDifference(ours, plain.image()), "") << "seed " << seed;
        }
    }
}
