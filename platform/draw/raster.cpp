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

// Device pixels after which a pattern begins anew.
std::uint32_t periodPx(int widthPx) {
    return patternLength * static_cast<std::uint32_t>(widthPx);
}

// Goes along a pattern in device pixels and says where it has one. A counter, since it is asked for
// every pixel of a line.
class Dashes {
public:
    // `phase`: device pixels gone by; each place of the pattern is `widthPx` of them long.
    Dashes(std::uint32_t mask, std::uint32_t phase, int widthPx)
        : m_mask(mask), m_widthPx(static_cast<std::uint32_t>(widthPx)),
          m_left(m_widthPx - phase % m_widthPx) {
        const std::uint32_t place = phase / m_widthPx % patternLength;
        m_mask = (mask >> place | mask << (patternLength - place)) & solidPattern;
    }
    bool drawn() const { return (m_mask & 1U) != 0; }
    void step() {
        if (--m_left > 0) return;
        m_left = m_widthPx;
        m_mask = m_mask >> 1 | (m_mask & 1U) << (patternLength - 1);
    }

private:
    std::uint32_t m_mask; // its lowest bit is the present place
    std::uint32_t m_widthPx;
    std::uint32_t m_left; // device pixels up to the next place
};

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
    long long minorAt(long long k) const {
        return k == 0 ? 0 : (2 * k * rise + steps) / (2 * steps);
    }
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

// Walks the steps of a range; paint(word) is called for each. Both strides are in words.
template <typename Paint>
void walk(const Course& c, const StepRange& range, std::uint32_t* word, std::ptrdiff_t majorStride,
    std::ptrdiff_t minorStride, Paint paint) {
    const long long turn = 2 * c.steps;
    const long long gain = 2 * c.rise;
    long long rest = range.first == 0 ? c.steps : (gain * range.first + c.steps) % turn;
    for (long long k = range.first; k < range.last; ++k) {
        paint(word);
        rest += gain;
        const bool over = rest >= turn;
        rest -= over ? turn : 0;
        word += majorStride + (over ? minorStride : 0);
    }
    paint(word);
}

// The course of a solid line that needs no clipping, which nearly all are: the same pixels as
// walk() gives, in the numbers that a machine is quickest with. paint(word) is called for each.
template <typename Paint>
void walkInside(std::uint32_t* word, int steps, int rise, std::ptrdiff_t majorStride,
    std::ptrdiff_t minorStride, Paint paint) {
    paint(word);
    int rest = steps;
    const int turn = 2 * steps;
    const int gain = 2 * rise;
    for (int k = 0; k < steps; ++k) {
        rest += gain;
        const bool over = rest >= turn;
        rest -= over ? turn : 0;
        word += majorStride + (over ? minorStride : 0);
        paint(word);
    }
}

// Calls visit(pixel) for each point in turn.
template <typename Visit>
void eachPixel(std::span<const Point> points, const PixelScale& scale, Visit visit) {
    std::array<PixelPoint, 128> block;
    while (!points.empty()) {
        const std::size_t count = std::min(points.size(), block.size());
        scale.points(points.first(count), block.data());
        for (std::size_t i = 0; i < count; ++i) visit(block[i]);
        points = points.subspan(count);
    }
}

} // namespace

std::uint32_t rgb32(Colour colour) {
    return 0xFF000000U | (colour & 0xFFU) << 16 | (colour & 0xFF00U) | (colour >> 16 & 0xFFU);
}

bool isSolid(int style) {
    return patternOf(style) == solidPattern;
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
    const int width = std::max(1, pen.widthPx);
    const PixelRect box{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x) + width,
        std::max(a.y, b.y) + width};
    const bool inside = box.left >= m_clip.left && box.top >= m_clip.top &&
                        box.right <= m_clip.right && box.bottom <= m_clip.bottom;
    const bool solid = isSolid(pen.style);
    const int length = std::max(box.width(), box.height()) - width;
    if (solid && inside && (width == 1 || length > 0)) return solidLine(a, b, width, pen.rgb);
    const std::uint32_t start = pen.phase;
    if (!solid) pen.phase = (start + static_cast<std::uint32_t>(length)) % periodPx(width);
    if (intersection(box, m_clip).empty()) return;
    if (length > 0) {
        stroke(a, b, pen, start, inside);
    } else if (Dashes(patternOf(pen.style), start, width).drawn()) {
        fill(box, pen.rgb);
    }
}

void Raster::solidLine(PixelPoint a, PixelPoint b, int width, std::uint32_t rgb) {
    const int dx = std::abs(b.x - a.x);
    const int dy = std::abs(b.y - a.y);
    const std::ptrdiff_t across = b.x >= a.x ? 1 : -1;
    const std::ptrdiff_t down = b.y >= a.y ? m_wordsPerLine : -m_wordsPerLine;
    const auto walked = [&](auto paint) {
        if (dx >= dy) {
            walkInside(at(a.x, a.y), dx, dy, across, down, paint);
        } else {
            walkInside(at(a.x, a.y), dy, dx, down, across, paint);
        }
    };
    // A wide line is as many thin ones side by side, right of and below its course.
    const std::ptrdiff_t beside = dx >= dy ? m_wordsPerLine : 1;
    if (width == 1) {
        walked([rgb](std::uint32_t* word) { *word = rgb; });
    } else if (width == 2) {
        walked([rgb, beside](std::uint32_t* word) { *word = word[beside] = rgb; });
    } else {
        walked([rgb, beside, width](std::uint32_t* word) {
            for (int line = 0; line < width; ++line) word[line * beside] = rgb;
        });
    }
}

void Raster::stroke(PixelPoint a, PixelPoint b, const Pen& pen, std::uint32_t start, bool inside) {
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
    for (int beside = 0; beside < width; ++beside) {
        const StepRange range =
            inside ? StepRange{0, c.steps}
                   : stepsInside(c, majorLow, majorHigh, minorLow - beside, minorHigh - beside);
        if (range.first > range.last) continue;
        const int major = c.major0 + c.majorSign * static_cast<int>(range.first);
        const int minor =
            c.minor0 + c.minorSign * static_cast<int>(c.minorAt(range.first)) + beside;
        std::uint32_t* word = c.flat ? at(major, minor) : at(minor, major);
        if (mask == solidPattern) {
            walk(c, range, word, majorStride, minorStride, [rgb](std::uint32_t* w) { *w = rgb; });
            continue;
        }
        Dashes dashes(mask, start + static_cast<std::uint32_t>(range.first), width);
        walk(c, range, word, majorStride, minorStride, [&dashes, rgb](std::uint32_t* w) {
            if (dashes.drawn()) *w = rgb;
            dashes.step();
        });
    }
}

void Raster::column(int x, int low, int high, std::uint32_t rgb) {
    if (x < m_clip.left || x >= m_clip.right) return;
    low = std::max(low, m_clip.top);
    high = std::min(high, m_clip.bottom - 1);
    if (low > high) return;
    std::uint32_t* word = at(x, low);
    for (int left = high - low; left >= 0; --left, word += m_wordsPerLine) *word = rgb;
}

void Raster::polyline(std::span<const Point> points, const PixelScale& scale, Pen& pen) {
    if (points.empty()) return;
    PixelPoint from = scale.point(points[0]);
    if (points.size() == 1) return line(from, from, pen);
    if (pen.widthPx <= 1 && isSolid(pen.style)) return thinPolyline(points, scale, pen);
    bool drawn = false;
    eachPixel(points.subspan(1), scale, [&](PixelPoint to) {
        // A step inside one pixel adds nothing to a line that is already there.
        if (to != from || !drawn) line(from, to, pen);
        drawn = true;
        from = to;
    });
}

// The steps of a curve seldom go further than the next column of pixels. Those in one column make
// one upright run, which is painted when the line leaves the column: the pixels are those of the
// steps one by one.
void Raster::thinPolyline(std::span<const Point> points, const PixelScale& scale, Pen& pen) {
    struct Run {
        int low;
        int high;
        bool bare; // no step has drawn the pixel that it began with
        void reach(int y) {
            low = std::min(low, y);
            high = std::max(high, y);
        }
        bool drawn() const { return !bare || low < high; }
    };
    std::array<PixelPoint, 2> start;
    scale.points(points.first(2), start.data());
    PixelPoint from = start[0];
    Run run{from.y, from.y, start[1] != from};
    eachPixel(points.subspan(1), scale, [&](PixelPoint to) {
        const int dx = to.x - from.x;
        if (dx == 0) {
            run.reach(to.y);
        } else if (dx == 1 || dx == -1) {
            const int dy = to.y - from.y;
            const int sign = (dy > 0) - (dy < 0);
            const int entry = from.y + (dy + sign) / 2; // where the step enters the next column
            run.reach(entry - sign);
            column(from.x, run.low, run.high, pen.rgb);
            run = {entry, entry, false};
            run.reach(to.y);
        } else {
            if (run.drawn()) column(from.x, run.low, run.high, pen.rgb);
            const bool leads = from.x != noPixel && to.x != noPixel;
            if (leads) line(from, to, pen);
            run = {to.y, to.y, !leads};
        }
        from = to;
    });
    if (run.drawn()) column(from.x, run.low, run.high, pen.rgb);
}

} // namespace kvo::platform
