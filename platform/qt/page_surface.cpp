#include "platform/qt/page_surface.h"

#include "platform/qt/text.h"

#include <QFont>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kvo::platform_qt {

namespace {

using platform::Colour;
using platform::PageFrame;
using platform::Point;
using platform::TextSide;

constexpr qreal linePoints = 0.5;
// Far beyond any paper, and still a number that a page description can hold.
constexpr qreal farPx = 1e8;

QColor inkOf(Colour colour) {
    return {static_cast<int>(colour & 0xFFU), static_cast<int>(colour >> 8U & 0xFFU),
        static_cast<int>(colour >> 16U & 0xFFU)};
}

// Whether the way from a to c goes straight on at b.
bool isStraight(const QPointF& a, const QPointF& b, const QPointF& c) {
    const QPointF in = b - a;
    const QPointF out = c - b;
    return in.x() * out.y() == in.y() * out.x() && QPointF::dotProduct(in, out) >= 0;
}

// The line in whole dots of the device, without the points that change nothing of it. A page
// description of a run is half as long so.
QPolygonF inDots(QPolygonF line) {
    qsizetype kept = 0;
    for (const QPointF& point : std::as_const(line)) {
        const QPointF dot(std::round(point.x()), std::round(point.y()));
        if (kept > 1 && isStraight(line[kept - 2], line[kept - 1], dot)) --kept;
        line[kept++] = dot;
    }
    line.resize(kept);
    return line;
}

bool isPlace(const QPointF& point) {
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

} // namespace

void PageSurface::startPage(const PaperSize& size) {
    m_size = size;
    m_font.reset();
    m_page.clear();
    m_current = {};
    addClip();
}

PageDrawing PageSurface::takePage() {
    return std::exchange(m_page, {});
}

// --- From the scale to the paper

QRectF PageSurface::frameRect() const {
    const QRectF& all = m_size.printable;
    const auto at = [&all](float x, float y) {
        return all.topLeft() +
               QPointF(all.width() * static_cast<qreal>(x), all.height() * static_cast<qreal>(y));
    };
    return {at(m_frame.left, m_frame.top), at(m_frame.right, m_frame.bottom)};
}

QPointF PageSurface::place(Point p) const {
    const QRectF frame = frameRect();
    const auto along = [](float value, float from, float to, qreal start, qreal length) {
        const qreal part = (static_cast<qreal>(value) - static_cast<qreal>(from)) /
                           (static_cast<qreal>(to) - static_cast<qreal>(from));
        return std::isfinite(part) ? std::clamp(start + part * length, -farPx, farPx) : part;
    };
    return {along(p.x, m_left, m_right, frame.left(), frame.width()),
        along(p.y, m_top, m_bottom, frame.top(), frame.height())};
}

qreal PageSurface::linePx() const {
    return std::max(
        m_size.leastLinePx, linePoints * m_size.pixelsPerPoint * std::max(1, m_drawWidth));
}

void PageSurface::setScale(float left, float top, float right, float bottom) {
    m_left = left;
    m_top = top;
    m_right = right;
    m_bottom = bottom;
}

void PageSurface::setFrame(const PageFrame& frame) {
    m_frame = frame;
    addClip();
}

// Only a part of the page is cut at its edges, a line's width further out, so that a line on the
// edge keeps its width.
void PageSurface::addClip() {
    const qreal outside = linePoints * m_size.pixelsPerPoint;
    const QRectF part = frameRect().adjusted(-outside, -outside, outside, outside);
    m_page.emplace_back(PageClip{m_frame == PageFrame{} ? QRectF() : part});
}

// --- Lines and boxes

void PageSurface::cls() {
    m_page.emplace_back(PageBox{frameRect(), inkOf(m_backColor)});
    m_current = {};
}

// A step to no place breaks the line: what is on either side of it is drawn.
void PageSurface::addLine(QPolygonF points, Colour colour) {
    const QColor ink = inkOf(colour);
    for (auto from = points.begin(); from != points.end();) {
        from = std::find_if(from, points.end(), isPlace);
        const auto end = std::find_if_not(from, points.end(), isPlace);
        if (end - from > 1) {
            m_page.emplace_back(
                PageLine{inDots(QList<QPointF>(from, end)), ink, linePx(), m_drawStyle});
        }
        from = end;
    }
}

void PageSurface::lineTo(float x, float y, Colour colour) {
    addLine({place(m_current), place({x, y})}, colour);
    m_current = {x, y};
}

void PageSurface::line(float x1, float y1, float x2, float y2, Colour colour) {
    m_current = {x1, y1};
    lineTo(x2, y2, colour);
}

void PageSurface::polyline(std::span<const Point> points, Colour colour) {
    if (points.empty()) return;
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(points.size()) + 1);
    line << place(m_current);
    for (const Point& point : points) line << place(point);
    addLine(line, colour);
    m_current = points.back();
}

// A box without a width or height is as thick as a line.
void PageSurface::box(float x1, float y1, float x2, float y2, Colour colour) {
    m_current = {x2, y2};
    const QPointF a = place({x1, y1});
    const QPointF b = place({x2, y2});
    if (!isPlace(a) || !isPlace(b)) return;
    QRectF rect = QRectF(a, b).normalized();
    rect.setWidth(std::max(rect.width(), linePx()));
    rect.setHeight(std::max(rect.height(), linePx()));
    m_page.emplace_back(PageBox{rect, inkOf(colour)});
}

// Samples that follow one another make one box: between boxes that only touch, a viewer shows
// hairlines of the paper.
void PageSurface::boxes(std::span<const std::uint8_t> masks, std::span<const platform::Bar> bars) {
    for (std::size_t b = 0; b < std::min<std::size_t>(bars.size(), 8); ++b) {
        const auto isOn = [b](std::uint8_t mask) { return ((mask >> b) & 1) != 0; };
        for (auto from = masks.begin(); from != masks.end();) {
            from = std::find_if(from, masks.end(), isOn);
            const auto to = std::find_if_not(from, masks.end(), isOn);
            if (from == to) continue;
            box(static_cast<float>(from - masks.begin()), bars[b].top,
                static_cast<float>(to - masks.begin()), bars[b].bottom, bars[b].colour);
            from = to;
        }
    }
}

void PageSurface::drawImage(const QImage& image) {
    const QRectF frame = frameRect();
    QRectF rect({}, QSizeF(image.size()).scaled(frame.size(), Qt::KeepAspectRatio));
    rect.moveCenter(frame.center());
    rect.moveTop(frame.top());
    m_page.emplace_back(PageImage{rect, image});
}

// --- Text

void PageSurface::setFontSize(float points) {
    if (points != m_fontPoints) m_font.reset();
    m_fontPoints = points;
}

void PageSurface::setDigitWidth(float ofHeight) {
    if (ofHeight != m_digitWidth) m_font.reset();
    m_digitWidth = ofHeight;
}

const PageSurface::Font& PageSurface::font() const {
    if (!m_font) {
        const qreal px = static_cast<qreal>(m_fontPoints) * m_size.pixelsPerPoint;
        const QFont font =
            pageFont(static_cast<int>(std::lround(std::clamp(px, 1.0, 10000.0))), m_digitWidth);
        m_font.emplace(Font{font, QFontMetricsF(font)});
    }
    return *m_font;
}

void PageSurface::addText(QPointF leftTop, const QString& text) {
    if (!isPlace(leftTop)) return;
    leftTop.ry() += font().metrics.ascent();
    m_page.emplace_back(PageText{leftTop, text, font().font, inkOf(m_foreColor)});
}

void PageSurface::print(std::string_view text) {
    addText(place(m_current), shown(text));
    m_current = {0, m_current.y + lineHeight()};
}

void PageSurface::printAt(float x, float y, std::string_view text, TextSide side) {
    const QString letters = shown(text);
    QPointF at = place({x, y});
    if (side != TextSide::left) {
        const qreal width = font().metrics.horizontalAdvance(letters);
        at.rx() -= side == TextSide::right ? width : width / 2;
    }
    addText(at, letters);
}

float PageSurface::textWidth(std::string_view text) const {
    const qreal px = font().metrics.horizontalAdvance(shown(text));
    return static_cast<float>(px / frameRect().width()) * (m_right - m_left);
}

float PageSurface::lineHeight() const {
    const qreal px = font().metrics.lineSpacing();
    return static_cast<float>(px / frameRect().height()) * (m_bottom - m_top);
}

} // namespace kvo::platform_qt
