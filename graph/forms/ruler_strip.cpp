#include "graph/forms/ruler_strip.h"

#include "graph/view.h"
#include "platform/draw/contrast.h"
#include "platform/draw/display_list.h"
#include "platform/draw/raster.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"

#include <QFontMetrics>
#include <QPainter>

namespace kvo::forms {

using namespace platform_qt;

namespace {

constexpr int tickPx = 4;
constexpr Qt::GlobalColor edgeColour = Qt::gray; // seen on light and dark grounds alike

} // namespace

void RulerLetterWidths::setFont(const QFont& font) {
    if (font == m_font && m_linePx > 0) return;
    m_font = font;
    m_linePx = QFontMetrics(font).height();
    m_widths.clear();
}

int RulerLetterWidths::widthPx(const std::string& text) {
    const auto known = m_widths.find(text);
    if (known != m_widths.end()) return known->second;
    const int width = QFontMetrics(m_font).horizontalAdvance(shown(text));
    m_widths.emplace(text, width);
    return width;
}

RulerStrip::RulerStrip(Qt::Orientation orientation, QWidget* frame)
    : QWidget(frame), m_orientation(orientation) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent); // the surface behind it is not painted for nothing
    hide();
}

QFont RulerStrip::font(float points, double pixelRatio) {
    QFont font = tabularFont();
    font.setPixelSize(qRound(platform::textFontPx(points) * pixelRatio));
    return font;
}

void RulerStrip::showRuler(const graph::Ruler& ruler, platform::Colour ground) {
    const bool same = ruler == m_ruler && ground == m_ground;
    m_ruler = ruler;
    m_ground = ground;
    const platform::PixelRect& rect = ruler.ground;
    const double ratio = devicePixelRatioF();
    // Outward to whole pixels, so that the ground covers all of its part.
    const QRectF place(
        rect.left / ratio, rect.top / ratio, rect.width() / ratio, rect.height() / ratio);
    setGeometry(place.toAlignedRect());
    setVisible(!rect.empty());
    if (!same) update();
}

void RulerStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(this->rect(), QColor::fromRgb(platform::rgb32(m_ground)));
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    painter.translate(-qRound(x() * ratio), -qRound(y() * ratio));
    const platform::PixelRect& rect = m_ruler.ground;
    const int thin = qMax(1, qRound(ratio));
    const int tick = qRound(tickPx * ratio);
    const bool upright = m_orientation == Qt::Vertical;
    painter.fillRect(upright ? QRect(rect.right - thin, rect.top, thin, rect.height())
                             : QRect(rect.left, rect.bottom - thin, rect.width(), thin),
        edgeColour);
    for (const int at : m_ruler.ticks) {
        painter.fillRect(upright ? QRect(rect.right - tick, at, tick, thin)
                                 : QRect(at, rect.bottom - tick, thin, tick),
            edgeColour);
    }
    painter.setFont(font(graph::trendPoints, ratio));
    painter.setPen(QColor::fromRgb(platform::rgb32(platform::readableOn(m_ground))));
    for (const graph::RulerText& text : m_ruler.texts) {
        painter.drawText(
            text.leftTop.x, text.leftTop.y + painter.fontMetrics().ascent(), shown(text.text));
    }
}

} // namespace kvo::forms
