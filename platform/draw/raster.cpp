#include "platform/draw/raster.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kvo::platform {

namespace {

// Each pattern is 24 pixels long; bit 0 is the first pixel.
constexpr std::uint32_t patternLength = 24;
constexpr std::uint32_t solidPattern = 0xFFFFFF;

constexpr std::uint32_t pattern(std::array<int, 6> onOff) {
    std::uint32_t mask = 0;
    std::uint32_t place = 0;
    for (bool on = true; place < patternLength;) {
        for (int length : onOff) {
            for (int i = 0; i < length; ++i, ++place) {
                if (on && place < patternLength) mask |= 1U << place;
            }
            if (length != 0) on = !on;
        }
    }
    return mask;
}

constexpr std::array<std::uint32_t, 5> patterns{solidPattern, pattern({18, 6, 0, 0, 0, 0}),
    pattern({3, 3, 0, 0, 0, 0}), pattern({9, 6, 3, 6, 0, 0}), pattern({9, 3, 3, 3, 3, 3})};

std::uint32_t patternOf(int style) {
    return style >= 0 && style < 5 ? patterns[static_cast<std::size_t>(style)] : solidPattern;
}

// Whether the pattern has a pixel at a place of the line, in device pixels.
bool isDrawn(std::uint32_t mask, long long place, int widthPx) {
    return (mask >> (place / widthPx % patternLength) & 1U) != 0;
}

long long floorDiv(long long a, long long b) { // b > 0
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

// A line seen along its longer side: at step k, 0 to steps, it stands `minorAt(k)` beside its
// start.
struct Course {
    bool flat; // the longer side is x
    int major0;
    int minor0;
    int majorSign;
    int minorSign;
    long long steps; // length along the major side
    long long rise;  // length along the minor side, at most steps
    long long minorAt(long long k) const { return (2 * k * rise + steps) / (2 * steps); }
};

Course courseOf(PixelPoint a, PixelPoint b) {
    const long long dx = std::abs(static_cast<long long>(b.x) - a.x);
    const long long dy = std::abs(static_cast<long long>(b.y) - a.y);
    const int signX = b.x >= a.x ? 1 : -1;
    const int signY = b.y >= a.y ? 1 : -1;
    if (dx >= dy) return {true, a.x, a.y, signX, signY, dx, dy};
    return {false, a.y, a.x, signY, signX, dy, dx};
}

// Steps of the course whose pixels can lie in [majorLow, majorHigh] x [minorLow, minorHigh].
struct StepRange {
    long long first;
    long long last;
};

StepRange stepsInside(const Course& c, int majorLow, int majorHigh, int minorLow, int minorHigh) {
    const long long near = c.majorSign > 0 ? majorLow - static_cast<long long>(c.major0)
                                           : c.major0 - static_cast<long long>(majorHigh);
    const long long far = c.majorSign > 0 ? majorHigh - static_cast<long long>(c.major0)
                                          : c.major0 - static_cast<long long>(majorLow);
    const long long low = c.minorSign > 0 ? minorLow - static_cast<long long>(c.minor0)
                                          : c.minor0 - static_cast<long long>(minorHigh);
    const long long high = c.minorSign > 0 ? minorHigh - static_cast<long long>(c.minor0)
                                           : c.minor0 - static_cast<long long>(minorLow);
    StepRange range{std::max(0LL, near), std::min(c.steps, far)};
    if (high < 0 || low > c.rise) return {1, 0};
    if (c.rise == 0) return range;
    if (low > 0) {
        // minorAt(k) >= low
        range.first = std::max(
            range.first, floorDiv(2 * c.steps * low - c.steps + 2 * c.rise - 1, 2 * c.rise));
    }
    if (high < c.rise) {
        // minorAt(k) <= high
        range.last =
            std::min(range.last, floorDiv(2 * c.steps * (high + 1) - c.steps - 1, 2 * c.rise));
    }
    return range;
}

// Walks the steps of a range; paint(word, k) is called for each. Both strides are in words.
template <typename Paint>
void walk(const Course& c, const StepRange& range, std::uint32_t* word, std::ptrdiff_t majorStride,
    std::ptrdiff_t minorStride, Paint paint) {
    const long long turn = 2 * c.steps;
    const long long gain = 2 * c.rise;
    long long rest = (gain * range.first + c.steps) % turn;
    for (long long k = range.first; k < range.last; ++k) {
        paint(word, k);
        rest += gain;
        const bool over = rest >= turn;
        rest -= over ? turn : 0;
        word += majorStride + (over ? minorStride : 0);
    }
    paint(word, range.last);
}

// The course of a thin solid line that needs no clipping, which nearly all are: the same pixels as
// walk() gives, in the numbers that a machine is quickest with.
void walkInside(std::uint32_t* word, int steps, int rise, std::ptrdiff_t majorStride,
    std::ptrdiff_t minorStride, std::uint32_t rgb) {
    *word = rgb;
    int rest = steps;
    const int turn = 2 * steps;
    const int gain = 2 * rise;
    for (int k = 0; k < steps; ++k) {
        rest += gain;
        const bool over = rest >= turn;
        rest -= over ? turn : 0;
        word += majorStride + (over ? minorStride : 0);
        *word = rgb;
    }
}

} // namespace

PixelRect intersection(const PixelRect& a, const PixelRect& b) {
    PixelRect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
        std::min(a.bottom, b.bottom)};
    if (r.empty()) r = {r.left, r.top, r.left, r.top};
    return r;
}

std::uint32_t rgb32(Colour colour) {
    return 0xFF000000U | (colour & 0xFFU) << 16 | (colour & 0xFF00U) | (colour >> 16 & 0xFFU);
}

PixelScale::PixelScale(const UserScale& scale, const SurfaceSize& size)
    : m_left(scale.left), m_top(scale.top),
      m_pixelsPerX(std::max(0, size.widthPx - size.linePx) /
                   (static_cast<double>(scale.right) - static_cast<double>(scale.left))),
      m_pixelsPerY(std::max(0, size.heightPx - size.linePx) /
                   (static_cast<double>(scale.bottom) - static_cast<double>(scale.top))) {
    if (!std::isfinite(m_pixelsPerX)) m_pixelsPerX = 0;
    if (!std::isfinite(m_pixelsPerY)) m_pixelsPerY = 0;
}

Point PixelScale::user(double pixelX, double pixelY) const {
    const double userX = m_pixelsPerX != 0 ? pixelX / m_pixelsPerX + m_left : 0;
    const double userY = m_pixelsPerY != 0 ? pixelY / m_pixelsPerY + m_top : 0;
    return {static_cast<float>(userX), static_cast<float>(userY)};
}

Raster::Raster(std::uint32_t* scanLines, std::ptrdiff_t wordsPerLine, const PixelRect& area)
    : m_scanLines(scanLines), m_wordsPerLine(wordsPerLine), m_area(area), m_clip(area) {}

void Raster::fill(const PixelRect& rect, std::uint32_t rgb) {
    const PixelRect r = intersection(rect, m_clip);
    if (r.empty()) return;
    for (int y = r.top; y < r.bottom; ++y) std::fill_n(at(r.left, y), r.width(), rgb);
}

void Raster::box(PixelPoint a, PixelPoint b, std::uint32_t rgb) {
    if (a.x == noPixel || a.y == noPixel || b.x == noPixel || b.y == noPixel) return;
    fill({std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x) + 1, std::max(a.y, b.y) + 1},
        rgb);
}

void Raster::line(PixelPoint a, PixelPoint b, Pen& pen) {
    if (a.x == noPixel || a.y == noPixel || b.x == noPixel || b.y == noPixel) return;
    if (pen.widthPx == 1 && m_clip.holds(a) && m_clip.holds(b) &&
        patternOf(pen.style) == solidPattern) {
        thinLine(a, b, pen.rgb);
        return;
    }
    const int width = std::max(1, pen.widthPx);
    const std::uint32_t start = pen.phase;
    const long long length = std::max(
        std::abs(static_cast<long long>(b.x) - a.x), std::abs(static_cast<long long>(b.y) - a.y));
    pen.phase = static_cast<std::uint32_t>((start + length) % (patternLength * width));
    if (m_clip.empty() || std::max(a.x, b.x) + width <= m_clip.left ||
        std::min(a.x, b.x) >= m_clip.right || std::max(a.y, b.y) + width <= m_clip.top ||
        std::min(a.y, b.y) >= m_clip.bottom) {
        return;
    }
    if (length > 0) {
        stroke(a, b, pen, start);
    } else if (isDrawn(patternOf(pen.style), start, width)) {
        fill({a.x, a.y, a.x + width, a.y + width}, pen.rgb);
    }
}

// A solid pen needs no phase: no pixel depends on it, whatever was drawn before.
void Raster::thinLine(PixelPoint a, PixelPoint b, std::uint32_t rgb) {
    const int dx = std::abs(b.x - a.x);
    const int dy = std::abs(b.y - a.y);
    const std::ptrdiff_t across = b.x >= a.x ? 1 : -1;
    const std::ptrdiff_t down = b.y >= a.y ? m_wordsPerLine : -m_wordsPerLine;
    if (dx >= dy) {
        walkInside(at(a.x, a.y), dx, dy, across, down, rgb);
    } else {
        walkInside(at(a.x, a.y), dy, dx, down, across, rgb);
    }
}

void Raster::stroke(PixelPoint a, PixelPoint b, const Pen& pen, std::uint32_t start) {
    const Course c = courseOf(a, b);
    const int majorLow = c.flat ? m_clip.left : m_clip.top;
    const int majorHigh = (c.flat ? m_clip.right : m_clip.bottom) - 1;
    const int minorLow = c.flat ? m_clip.top : m_clip.left;
    const int minorHigh = (c.flat ? m_clip.bottom : m_clip.right) - 1;
    const std::ptrdiff_t majorStride = (c.flat ? 1 : m_wordsPerLine) * c.majorSign;
    const std::ptrdiff_t minorStride = (c.flat ? m_wordsPerLine : 1) * c.minorSign;
    const std::uint32_t rgb = pen.rgb;
    const std::uint32_t mask = patternOf(pen.style);
    const int width = std::max(1, pen.widthPx);
    // A wide line is as many thin ones side by side, right of and below its course.
    for (int beside = 0; beside < width; ++beside) {
        const StepRange range =
            stepsInside(c, majorLow, majorHigh, minorLow - beside, minorHigh - beside);
        if (range.first > range.last) continue;
        const int major = c.major0 + c.majorSign * static_cast<int>(range.first);
        const int minor =
            c.minor0 + c.minorSign * static_cast<int>(c.minorAt(range.first)) + beside;
        std::uint32_t* word = c.flat ? at(major, minor) : at(minor, major);
        if (mask == solidPattern) {
            walk(c, range, word, majorStride, minorStride,
                [rgb](std::uint32_t* w, long long) { *w = rgb; });
        } else {
            walk(c, range, word, majorStride, minorStride, [=](std::uint32_t* w, long long k) {
                if (isDrawn(mask, start + k, width)) *w = rgb;
            });
        }
    }
}

void Raster::polyline(std::span<const Point> points, const PixelScale& scale, Pen& pen) {
    if (points.empty()) return;
    PixelPoint from = scale.point(points[0]);
    if (points.size() == 1) line(from, from, pen);
    bool drawn = false;
    for (const Point& p : points.subspan(1)) {
        const PixelPoint to = scale.point(p);
        // A step inside one pixel adds nothing to a line that is already there.
        if (to != from || !drawn) line(from, to, pen);
        drawn = true;
        from = to;
    }
}

} // namespace kvo::platform
