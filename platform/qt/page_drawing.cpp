#include "platform/qt/page_drawing.h"

#include "platform/qt/application.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <array>

namespace kvo::platform_qt {

QList<qreal> dashesOf(int drawStyle) {
    static const std::array<QList<qreal>, 5> dashes{QList<qreal>{}, QList<qreal>{18, 6},
        QList<qreal>{3, 3}, QList<qreal>{9, 6, 3, 6}, QList<qreal>{9, 3, 3, 3, 3, 3}};
    return drawStyle >= 0 && drawStyle < 5 ? dashes[static_cast<std::size_t>(drawStyle)]
                                           : QList<qreal>{};
}

namespace {

QPen penOf(const PageLine& line) {
    QPen pen(line.colour, line.widthPx, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (const QList<qreal> dashes = dashesOf(line.drawStyle); !dashes.isEmpty()) {
        pen.setCapStyle(Qt::FlatCap); // a round end would close the gaps
        pen.setDashPattern(dashes);
    }
    return pen;
}

// The toolkit fills the outline of a whole line at once, and where that crosses itself, as a curve
// of noise does, the time goes with the square of its points: seconds for one. So an image gets it
// in pieces, which look the same; a dash goes on from one to the next.
void paintInPieces(QPainter& painter, const QPolygonF& points) {
    constexpr qsizetype steps = 16;
    QPen pen = painter.pen();
    const bool dashed = pen.style() == Qt::CustomDashLine;
    qreal length = 0;
    for (qsizetype from = 0; from + 1 < points.size(); from += steps) {
        const qsizetype to = std::min(from + steps, points.size() - 1);
        painter.drawPolyline(points.constData() + from, static_cast<int>(to - from + 1));
        if (!dashed) continue;
        for (qsizetype i = from; i < to; ++i) length += QLineF(points[i], points[i + 1]).length();
        pen.setDashOffset(length / pen.widthF());
        painter.setPen(pen);
    }
}

class PagePainter {
public:
    explicit PagePainter(QPainter& painter)
        : m_painter(painter), m_isImage(painter.paintEngine()->type() == QPaintEngine::Raster) {}

    void operator()(const PageLine& line) {
        m_painter.setPen(penOf(line));
        if (m_isImage) return paintInPieces(m_painter, line.points);
        m_painter.drawPolyline(line.points);
    }
    void operator()(const PageBox& box) { m_painter.fillRect(box.place, box.colour); }
    void operator()(const PageText& text) {
        if (text.font != m_painter.font()) m_painter.setFont(text.font);
        m_painter.setPen(text.colour);
        m_painter.drawText(text.baseLine, text.text);
    }
    void operator()(const PageImage& image) { m_painter.drawImage(image.place, image.image); }
    void operator()(const PageClip& clip) {
        m_painter.setClipping(!clip.place.isEmpty());
        if (!clip.place.isEmpty()) m_painter.setClipRect(clip.place);
    }

private:
    QPainter& m_painter;
    bool m_isImage; // no page description
};

} // namespace

void paintPage(QPainter& painter, const PageDrawing& page) {
    painter.save();
    PagePainter paint(painter);
    for (const PageOperation& operation : page) std::visit(paint, operation);
    painter.restore();
}

QFont pageFont(int fontPx, float digitWidth) {
    QFont font = tabularFont();
    font.setPixelSize(fontPx);
    if (!(digitWidth > 0)) return font;
    const qreal digitPx = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
    const qreal percent = 100 * static_cast<qreal>(digitWidth) * fontPx / digitPx;
    font.setStretch(static_cast<int>(std::clamp(percent, 50.0, 100.0)));
    return font;
}

} // namespace kvo::platform_qt
