#include "setup/forms/analog_curve_view.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace kvo::forms {

namespace {

constexpr double gap = 5;
constexpr int countsAVolt = 51;
constexpr int volts = 5;

QString shownText(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

// What draws the eye on a light and on a dark ground.
QColor warningColour(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(255, 120, 105)
                                                           : QColor(200, 30, 25);
}

QColor faint(QColor colour) {
    colour.setAlphaF(0.2F);
    return colour;
}

} // namespace

AnalogCurveView::AnalogCurveView(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Curve of the table"));
}

void AnalogCurveView::setCurve(std::optional<setup::AnalogCurve> curve) {
    m_curve = std::move(curve);
    update();
}

void AnalogCurveView::mark(int point) {
    m_marked = point;
    update();
}

QSize AnalogCurveView::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 54, fontMetrics().height() * 12};
}

QSize AnalogCurveView::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 9};
}

// The room for the curve: left of it the readings, below it the counts and their volts.
QRectF AnalogCurveView::plot() const {
    const QFontMetricsF metrics(font());
    double widest = 0;
    if (m_curve) {
        for (const setup::CurveMark& one : m_curve->marks)
            widest = std::max(widest, metrics.horizontalAdvance(shownText(one.text)));
    }
    const double right = metrics.horizontalAdvance(QStringLiteral("255")) / 2 + gap;
    const double side = std::min(widest, width() / 2.0); // a number as wide as it likes is cut
    return QRectF(rect()).adjusted(
        side + 2 * gap, metrics.height() / 2 + gap, -right, -2 * metrics.height() - 2 * gap);
}

QPointF AnalogCurveView::place(double count, double reading) const {
    const QRectF room = plot();
    const double height = m_curve ? m_curve->high - m_curve->low : 1;
    const double low = m_curve ? m_curve->low : 0;
    return {room.left() + count / 255 * room.width(),
        room.bottom() - (reading - low) / height * room.height()};
}

void AnalogCurveView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(faint(palette().color(QPalette::Text)));
    painter.drawRect(QRectF(rect()).adjusted(0, 0, -1, -1));
    if (!m_curve) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
            QStringLiteral("No curve: there is a number that is too large."));
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    paintGrid(painter);
    paintCurve(painter);
    paintPoints(painter);
}

void AnalogCurveView::paintGrid(QPainter& painter) const {
    const QRectF room = plot();
    const double line = QFontMetricsF(font()).height();
    const QColor text = palette().color(QPalette::Text);
    const auto across = [&](const QPointF& from, const QPointF& to) {
        painter.setPen(faint(text));
        painter.drawLine(from, to);
        painter.setPen(text);
    };
    for (const setup::CurveMark& one : m_curve->marks) {
        const double y = place(0, one.value).y();
        across({room.left(), y}, {room.right(), y});
        painter.drawText(QRectF(gap, y - line / 2, room.left() - 2 * gap, line),
            Qt::AlignRight | Qt::AlignVCenter, shownText(one.text));
    }
    for (int volt = 0; volt <= volts; ++volt) {
        const int count = volt * countsAVolt;
        const double x = place(count, 0).x();
        across({x, room.top()}, {x, room.bottom()});
        const double half = room.width() / volts / 2;
        painter.drawText(QRectF(x - half, room.bottom() + gap, 2 * half, 2 * line),
            Qt::AlignHCenter | Qt::AlignTop, QStringLiteral("%1\n%2 v").arg(count).arg(volt));
    }
}

// A line for each run of counts that a download keeps or leaves.
void AnalogCurveView::paintCurve(QPainter& painter) const {
    const QPen good(palette().color(QPalette::Highlight), 2);
    const QPen lost(warningColour(palette()), 2, Qt::DotLine);
    QPolygonF line;
    bool lineKept = true;
    const auto drawLine = [&] {
        painter.setPen(lineKept ? good : lost);
        painter.drawPolyline(line);
        line.clear();
    };
    for (int count = 0; count <= 255; ++count) {
        const auto entry = static_cast<std::size_t>(count);
        const double reading = m_curve->values[entry];
        // A reading that is no number has no place.
        const bool hasPlace = reading >= m_curve->low && reading <= m_curve->high;
        const bool kept = m_curve->stored[entry];
        const QPointF next = hasPlace ? place(count, reading) : QPointF();
        if (hasPlace && kept && !lineKept && !line.isEmpty()) line << next; // up to the kept one
        if (!hasPlace || kept != lineKept) {
            const QPointF last = line.isEmpty() ? next : line.last();
            drawLine();
            lineKept = kept;
            if (hasPlace && !kept) line << last;
        }
        if (hasPlace) line << next;
    }
    drawLine();
}

void AnalogCurveView::paintPoints(QPainter& painter) const {
    constexpr double small = 3;
    constexpr double large = 5.5;
    for (int point = 1; point <= setup::tablePoints; ++point) {
        const int count = setup::tableEntry(point);
        const auto entry = static_cast<std::size_t>(count);
        const bool kept = m_curve->stored[entry];
        const QColor colour =
            kept ? palette().color(QPalette::Highlight) : warningColour(palette());
        painter.setPen(QPen(palette().color(QPalette::Text), 1));
        painter.setBrush(colour);
        const double radius = point == m_marked ? large : small;
        painter.drawEllipse(place(count, m_curve->values[entry]), radius, radius);
    }
}

} // namespace kvo::forms
