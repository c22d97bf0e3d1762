#include "platform/qt/page_drawing.h"

#include "platform/qt/application.h"

#include <QFontMetricsF>
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

class PagePainter {
public:
    explicit PagePainter(QPainter& painter) : m_painter(painter) {}

    void operator()(const PageLine& line) {
        m_painter.setPen(penOf(line));
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
