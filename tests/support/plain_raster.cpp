#include "tests/support/plain_raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace kvo::testing {

using namespace platform;

namespace {

// Pixels drawn and left out in turn, by style; both of a pattern make 24 pixels.
const std::vector<int>& patternOf(int style) {
    static const std::array<std::vector<int>, 5> patterns{
        {{24}, {18, 6}, {3, 3, 3, 3, 3, 3, 3, 3}, {9, 6, 3, 6}, {9, 3, 3, 3, 3, 3}}};
    return patterns[style >= 0 && style < 5 ? static_cast<std::size_t>(style) : 0];
}

bool isDrawn(int style, long long place, int widthPx) {
    long long left = place / widthPx % 24;
    bool on = true;
    for (const int length : patternOf(style)) {
        if (left < length) break;
        left -= length;
        on = !on;
    }
    return on;
}

int plainCoordinate(float at, float first, float last, int pixels, int linePx) {
    double perUnit =
        std::max(0, pixels - linePx) / (static_cast<double>(last) - static_cast<double>(first));
    if (!std::isfinite(perUnit)) perUnit = 0;
    const double place = (static_cast<double>(at) - static_cast<double>(first)) * perUnit;
    if (std::isnan(place)) return noPixel;
    return static_cast<int>(
        std::floor(std::clamp(place, static_cast<double>(-farPixel), 1.0 * farPixel) + 0.5));
}

bool isNone(PixelPoint p) {
    return p.x == noPixel || p.y == noPixel;
}

} // namespace

PixelPoint plainPixel(Point at, const UserScale& scale, const SurfaceSize& size) {
    return {plainCoordinate(at.x, scale.left, scale.right, size.widthPx, size.linePx),
        plainCoordinate(at.y, scale.top, scale.bottom, size.heightPx, size.linePx)};
}

PlainImage::PlainImage(const PixelRect& area)
    : m_area(area),
      m_words(static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height())) {}

std::size_t PlainImage::place(int x, int y) const {
    return static_cast<std::size_t>(y - m_area.top) * static_cast<std::size_t>(m_area.width()) +
           static_cast<std::size_t>(x - m_area.left);
}

std::uint32_t PlainImage::at(int x, int y) const {
    return m_area.holds({x, y}) ? m_words[place(x, y)] : 0;
}

void PlainImage::set(int x, int y, std::uint32_t rgb) {
    if (m_area.holds({x, y})) m_words[place(x, y)] = rgb;
}

Raster PlainImage::raster() {
    return {m_words.data(), m_area.width(), m_area};
}

void PlainImage::line(PixelPoint a, PixelPoint b, Pen& pen) {
    if (isNone(a) || isNone(b)) return;
    const int width = std::max(1, pen.widthPx);
    const long long dx = std::abs(b.x - a.x);
    const long long dy = std::abs(b.y - a.y);
    const bool flat = dx >= dy;
    const long long steps = std::max(dx, dy);
    const long long start = pen.phase;
    pen.phase = static_cast<std::uint32_t>((start + steps) % (24 * width));
    if (steps == 0) {
        if (isDrawn(pen.style, start, width)) box(a, {a.x + width - 1, a.y + width - 1}, pen.rgb);
        return;
    }
    const int from = flat ? a.x : a.y;
    const int to = flat ? b.x : b.y;
    const int beside = flat ? a.y : a.x;
    const bool turns = flat ? b.y < a.y : b.x < a.x;
    const int first = std::max(std::min(from, to), flat ? m_area.left : m_area.top);
    const int last = std::min(std::max(from, to), (flat ? m_area.right : m_area.bottom) - 1);
    for (int major = first; major <= last; ++major) {
        const long long k = std::abs(major - from);
        if (!isDrawn(pen.style, start + k, width)) continue;
        const auto away = static_cast<int>((2 * k * std::min(dx, dy) + steps) / (2 * steps));
        for (int i = 0; i < width; ++i) {
            const int minor = beside + (turns ? -away : away) + i;
            set(flat ? major : minor, flat ? minor : major, pen.rgb);
        }
    }
}

void PlainImage::polyline(
    std::span<const Point> points, const UserScale& scale, const SurfaceSize& size, Pen& pen) {
    if (points.empty()) return;
    PixelPoint from = plainPixel(points[0], scale, size);
    if (points.size() == 1) line(from, from, pen);
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PixelPoint to = plainPixel(points[i], scale, size);
        // A step inside one pixel is the first of its line or none.
        if (to != from || i == 1) line(from, to, pen);
        from = to;
    }
}

void PlainImage::box(PixelPoint a, PixelPoint b, std::uint32_t rgb) {
    if (isNone(a) || isNone(b)) return;
    const auto [left, right] = std::minmax(a.x, b.x);
    const auto [top, bottom] = std::minmax(a.y, b.y);
    for (int y = std::max(top, m_area.top); y <= std::min(bottom, m_area.bottom - 1); ++y) {
        for (int x = std::max(left, m_area.left); x <= std::min(right, m_area.right - 1); ++x)
            set(x, y, rgb);
    }
}

void BoxText::paintText(PixelPoint leftTop, std::string_view text, float points, Colour colour) {
    const int width = 5 * static_cast<int>(text.size());
    m_raster.box(leftTop, {leftTop.x + width, leftTop.y + textLineHeightPx(points)}, rgb32(colour));
}

PlainSurface::PlainSurface(const SurfaceSize& size)
    : m_size(size), m_image({0, 0, size.widthPx, size.heightPx}) {}

Pen PlainSurface::pen(Colour colour) const {
    return {rgb32(colour), m_drawStyle, m_drawWidth * m_size.linePx};
}

void PlainSurface::setScale(float left, float top, float right, float bottom) {
    m_scale = {left, top, right, bottom};
}

void PlainSurface::cls() {
    m_image = PlainImage(m_image.area());
    m_current = {};
}

void PlainSurface::lineTo(float x, float y, Colour colour) {
    polyline(std::array<Point, 1>{{{x, y}}}, colour);
}

void PlainSurface::line(float x1, float y1, float x2, float y2, Colour colour) {
    m_current = {x1, y1};
    lineTo(x2, y2, colour);
}

void PlainSurface::polyline(std::span<const Point> points, Colour colour) {
    if (points.empty()) return;
    std::vector<Point> all{m_current};
    all.insert(all.end(), points.begin(), points.end());
    Pen of = pen(colour);
    m_image.polyline(all, m_scale, m_size, of);
    m_current = points.back();
}

void PlainSurface::box(float x1, float y1, float x2, float y2, Colour colour) {
    m_image.box(plainPixel({x1, y1}, m_scale, m_size), plainPixel({x2, y2}, m_scale, m_size),
        rgb32(colour));
    m_current = {x2, y2};
}

void PlainSurface::print(std::string_view text) {
    Raster raster = m_image.raster();
    BoxText(raster).paintText(
        plainPixel(m_current, m_scale, m_size), text, m_fontPoints, m_foreColor);
    m_current.x = 0; // whoever prints sets the height anew
}

} // namespace kvo::testing
