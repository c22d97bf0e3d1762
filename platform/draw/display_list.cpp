#include "platform/draw/display_list.h"

#include "platform/draw/wide_registers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace kvo::platform {

namespace {

// A bar on a surface: its rows of pixels, both included, and its colour.
struct PixelBar {
    int top = 0;
    int bottom = 0;
    std::uint32_t rgb = 0;
};

bool shareRows(std::span<const PixelBar> bars) {
    for (std::size_t i = 0; i < bars.size(); ++i) {
        for (std::size_t j = i + 1; j < bars.size(); ++j) {
            if (bars[i].top <= bars[j].bottom && bars[j].top <= bars[i].bottom) return true;
        }
    }
    return false;
}

// Points up to which it is not worth while to look for those in the clip.
constexpr std::size_t shortLine = 32;

// Whether no point lies further left than the one before it.
bool runsRight(std::span<const Point> points) {
    bool yes = true;
    for (std::size_t i = 1; i < points.size(); ++i) yes &= points[i].x >= points[i - 1].x;
    return yes;
}

int positivePx(double value) {
    return static_cast<int>(std::lround(std::clamp(value, 1.0, 1000.0)));
}

} // namespace

int textFontPx(float points) {
    return std::max(10, positivePx(points * 1.5));
}

int textLineHeightPx(float points) {
    return positivePx(textFontPx(points) * 1.2);
}

void DisplayList::clear() {
    m_operations.clear();
    m_scales.clear();
    m_points.clear();
    m_boxes.clear();
    m_masks.clear();
    m_bars.clear();
    m_letters.clear();
    m_sealed = true;
    ++m_generation;
}

// What an operation needs is taken before the operation, so that none is there without it where
// memory runs out; what nobody points to then does no harm.
bool DisplayList::goesOn(Kind kind, const UserScale& scale) const {
    return !m_sealed && !m_operations.empty() && m_operations.back().kind == kind &&
           m_scales[m_operations.back().scale] == scale;
}

DisplayList::Operation& DisplayList::begin(Kind kind, const UserScale& scale, std::size_t first) {
    if (m_scales.empty() || m_scales.back() != scale) m_scales.push_back(scale);
    Operation& op = m_operations.emplace_back();
    op.kind = kind;
    op.scale = static_cast<std::uint32_t>(m_scales.size() - 1);
    op.first = first;
    m_sealed = false;
    return op;
}

void DisplayList::addLine(
    Point from, std::span<const Point> to, const Style& style, const UserScale& scale) {
    if (to.empty()) return;
    const bool on = goesOn(Kind::line, scale) && m_operations.back().style == style &&
                    m_operations.back().first + m_operations.back().count == m_points.size() &&
                    m_points.back() == from;
    const std::size_t first = m_points.size();
    if (!on) m_points.push_back(from);
    m_points.insert(m_points.end(), to.begin(), to.end());
    Operation& op = on ? m_operations.back() : begin(Kind::line, scale, first);
    op.style = style;
    // Where the line began does not count: every curve has a stroke from the origin of the scale.
    op.runsRight &= (!on || to[0].x >= from.x) && runsRight(to);
    op.count = m_points.size() - op.first;
}

void DisplayList::addBox(Point a, Point b, Colour colour, const UserScale& scale) {
    const bool on = goesOn(Kind::boxes, scale) &&
                    m_operations.back().first + m_operations.back().count == m_boxes.size();
    const std::size_t first = m_boxes.size();
    m_boxes.push_back({a, b, colour});
    ++(on ? m_operations.back() : begin(Kind::boxes, scale, first)).count;
}

void DisplayList::addBars(
    std::span<const std::uint8_t> masks, std::span<const Bar> bars, const UserScale& scale) {
    const std::size_t firstMask = m_masks.size();
    const std::size_t firstBar = m_bars.size();
    const std::size_t barCount = std::min<std::size_t>(bars.size(), 8);
    m_masks.insert(m_masks.end(), masks.begin(), masks.end());
    m_bars.insert(m_bars.end(), bars.begin(), bars.begin() + static_cast<long>(barCount));
    Operation& op = begin(Kind::bars, scale, firstMask);
    op.count = masks.size();
    op.bars = firstBar;
    op.barCount = barCount;
}

void DisplayList::addText(
    Point leftTop, std::string_view text, float points, Colour colour, const UserScale& scale) {
    const std::size_t first = m_letters.size();
    m_letters += text;
    Operation& op = begin(Kind::text, scale, first);
    op.count = text.size();
    op.style.colour = colour;
    op.points = points;
    op.leftTop = leftTop;
}

std::size_t DisplayList::memory() const {
    return m_operations.capacity() * sizeof(Operation) + m_scales.capacity() * sizeof(UserScale) +
           m_points.capacity() * sizeof(Point) + m_boxes.capacity() * sizeof(Box) +
           m_masks.capacity() + m_bars.capacity() * sizeof(Bar) + m_letters.capacity();
}

PixelRect DisplayList::bounds(std::size_t operation, const SurfaceSize& surface) const {
    const PixelRect all{0, 0, surface.widthPx, surface.heightPx};
    const Operation& op = m_operations[operation];
    if (op.kind != Kind::line) return all;
    const PixelScale scale(m_scales[op.scale], surface);
    PixelRect r{farPixel, farPixel, -farPixel, -farPixel};
    for (const Point& p : std::span(m_points).subspan(op.first, op.count)) {
        const PixelPoint at = scale.point(p);
        if (at.x == noPixel || at.y == noPixel) continue;
        r = {std::min(r.left, at.x), std::min(r.top, at.y), std::max(r.right, at.x),
            std::max(r.bottom, at.y)};
    }
    const int widthPx = op.style.drawWidth * surface.linePx;
    return intersection(all, {r.left, r.top, r.right + widthPx, r.bottom + widthPx});
}

void DisplayList::paint(Raster& raster, TextPainter& text, const SurfaceSize& surface,
    std::size_t first, std::size_t end) const {
    bool used = true; // the wide registers, by what came before
    for (std::size_t i = first; i < end; ++i) {
        const Operation& op = m_operations[i];
        const PixelScale scale(m_scales[op.scale], surface);
        if (used) clearWideRegisters();
        used = op.kind == Kind::text;
        if (op.kind == Kind::line) {
            paintLine(op, raster, scale, op.style.drawWidth * surface.linePx);
        } else if (op.kind == Kind::boxes) {
            paintBoxes(op, raster, scale);
        } else if (op.kind == Kind::bars) {
            paintBars(op, raster, scale);
        } else {
            text.paintText(scale.point(op.leftTop),
                std::string_view(m_letters).substr(op.first, op.count), op.points, op.style.colour);
        }
    }
}

void DisplayList::paintLine(
    const Operation& op, Raster& raster, const PixelScale& scale, int widthPx) const {
    const auto points = std::span(m_points).subspan(op.first, op.count);
    Pen pen{rgb32(op.style.colour), op.style.drawStyle, widthPx};
    // Where a pattern is drawn, all the line up to a pixel says where in the pattern that is.
    if (!op.runsRight || !scale.runsRight() || !isSolid(pen.style) || points.size() <= shortLine) {
        raster.polyline(points, scale, pen);
        return;
    }
    const auto rest = points.subspan(1);
    const int left = raster.clip().left - widthPx;
    const int right = raster.clip().right;
    const auto seen = std::partition_point(
        rest.begin(), rest.end(), [&](const Point& p) { return scale.x(p.x) < left; });
    const auto behind = std::partition_point(
        seen, rest.end(), [&](const Point& p) { return scale.x(p.x) < right; });
    // The lines that cross the edges of the clip begin and end beside it.
    const auto last = behind == rest.end() ? behind : behind + 1;
    if (seen - rest.begin() < 2) {
        raster.polyline({points.begin(), last}, scale, pen);
        return;
    }
    raster.polyline(points.first(2), scale, pen);
    if (last - seen > 0) raster.polyline({seen - 1, last}, scale, pen);
}

void DisplayList::drawOn(Surface& surface) const {
    for (const Operation& op : m_operations) {
        const UserScale& scale = m_scales[op.scale];
        surface.setScale(scale.left, scale.top, scale.right, scale.bottom);
        if (op.kind == Kind::line) {
            const auto points = std::span(m_points).subspan(op.first, op.count);
            surface.setDrawStyle(op.style.drawStyle);
            surface.setDrawWidth(op.style.drawWidth);
            surface.setCurrentX(points[0].x);
            surface.setCurrentY(points[0].y);
            surface.polyline(points.size() > 1 ? points.subspan(1) : points, op.style.colour);
        } else if (op.kind == Kind::boxes) {
            for (const Box& box : std::span(m_boxes).subspan(op.first, op.count))
                surface.box(box.a.x, box.a.y, box.b.x, box.b.y, box.colour);
        } else if (op.kind == Kind::bars) {
            surface.boxes(std::span(m_masks).subspan(op.first, op.count),
                std::span(m_bars).subspan(op.bars, op.barCount));
        } else {
            surface.setForeColor(op.style.colour);
            surface.setFontSize(op.points);
            surface.setCurrentX(op.leftTop.x);
            surface.setCurrentY(op.leftTop.y);
            surface.print(std::string_view(m_letters).substr(op.first, op.count));
        }
    }
}

void DisplayList::paintBoxes(const Operation& op, Raster& raster, const PixelScale& scale) const {
    for (const Box& box : std::span(m_boxes).subspan(op.first, op.count)) {
        raster.box(scale.point(box.a), scale.point(box.b), rgb32(box.colour));
    }
}

// The boxes of samples that follow one another meet in a column of pixels. Where no two bars share
// a row, a stretch of such samples is one box; else the order of the boxes decides, so they are
// painted one by one.
void DisplayList::paintBars(const Operation& op, Raster& raster, const PixelScale& scale) const {
    const auto masks = std::span(m_masks).subspan(op.first, op.count);
    std::array<PixelBar, 8> all;
    const auto bars = std::span(all).first(op.barCount);
    for (std::size_t b = 0; b < bars.size(); ++b) {
        const Bar& bar = m_bars[op.bars + b];
        const auto [top, bottom] = std::minmax({scale.y(bar.top), scale.y(bar.bottom)});
        bars[b] = {top, bottom, rgb32(bar.colour)};
    }
    const auto paintSamples = [&](const PixelBar& bar, std::size_t from, std::size_t to) {
        raster.box({scale.x(static_cast<float>(from)), bar.top},
            {scale.x(static_cast<float>(to)), bar.bottom}, bar.rgb);
    };
    if (shareRows(bars)) {
        for (std::size_t i = 0; i < masks.size(); ++i) {
            for (std::size_t b = 0; b < bars.size(); ++b) {
                if (((masks[i] >> b) & 1) != 0) paintSamples(bars[b], i, i + 1);
            }
        }
        return;
    }
    for (std::size_t b = 0; b < bars.size(); ++b) {
        for (std::size_t i = 0; i < masks.size(); ++i) {
            if (((masks[i] >> b) & 1) == 0) continue;
            const std::size_t from = i;
            while (i < masks.size() && ((masks[i] >> b) & 1) != 0) ++i;
            paintSamples(bars[b], from, i);
        }
    }
}

DisplayList& DisplayListSurface::target() {
    return m_autoRedraw ? m_kept : m_upper;
}

void DisplayListSurface::drawn() {
    if (m_autoRedraw) {
        // What lay on top is not part of the kept picture, and drawing on that shows it anew. The
        // watcher knows so before the top is wiped, and shows all of it in one go.
        if (m_watcher != nullptr) m_watcher->keptChanged();
        wipeUpper();
        return;
    }
    if (m_watcher != nullptr) m_watcher->upperDrawn(m_upper.size() - 1);
}

void DisplayListSurface::wipeUpper() {
    if (m_upper.empty()) return;
    m_upper.clear();
    if (m_watcher != nullptr) m_watcher->upperWiped();
}

void DisplayListSurface::setScale(float left, float top, float right, float bottom) {
    m_scale = {left, top, right, bottom};
}

void DisplayListSurface::cls() {
    m_current = {};
    if (m_autoRedraw) {
        m_kept.clear();
        if (m_watcher != nullptr) m_watcher->keptChanged();
    }
    wipeUpper();
}

void DisplayListSurface::lineTo(float x, float y, Colour colour) {
    DisplayListSurface::polyline(std::array<Point, 1>{{{x, y}}}, colour);
}

void DisplayListSurface::line(float x1, float y1, float x2, float y2, Colour colour) {
    target().seal();
    m_current = {x1, y1};
    lineTo(x2, y2, colour);
}

void DisplayListSurface::polyline(std::span<const Point> points, Colour colour) {
    if (points.empty()) return;
    target().addLine(m_current, points, {colour, m_drawStyle, m_drawWidth}, m_scale);
    m_current = points.back();
    drawn();
}

void DisplayListSurface::box(float x1, float y1, float x2, float y2, Colour colour) {
    target().addBox({x1, y1}, {x2, y2}, colour, m_scale);
    m_current = {x2, y2};
    drawn();
}

void DisplayListSurface::boxes(std::span<const std::uint8_t> masks, std::span<const Bar> bars) {
    const unsigned known = (1U << std::min<std::size_t>(bars.size(), 8)) - 1;
    for (std::size_t i = masks.size(); i > 0; --i) {
        const unsigned bits = masks[i - 1] & known;
        if (bits == 0) continue;
        const auto last = static_cast<std::size_t>(std::bit_width(bits) - 1);
        m_current = {static_cast<float>(i), bars[last].bottom};
        break;
    }
    target().addBars(masks, bars, m_scale);
    drawn();
}

void DisplayListSurface::print(std::string_view text) {
    target().addText(m_current, text, m_fontPoints, m_foreColor, m_scale);
    const float unitsPerPx =
        (m_scale.bottom - m_scale.top) / static_cast<float>(std::max(1, m_heightPx));
    m_current = {0, m_current.y + unitsPerPx * static_cast<float>(textLineHeightPx(m_fontPoints))};
    drawn();
}

void DisplayListSurface::refresh() {
    wipeUpper();
}

void DisplayListSurface::setBackColor(Colour colour) {
    m_backColor = colour;
    if (m_watcher != nullptr) m_watcher->backColorChanged();
}

} // namespace kvo::platform
