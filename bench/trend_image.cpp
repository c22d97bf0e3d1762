#include "bench/trend_image.h"

#include "graph/grid.h"
#include "platform/qt/display_list_image.h"

#include <QColor>
#include <QPainter>

namespace kvo::bench {
void TrendImage::Surface::polyline(
    std::span<const platform::Point> points, platform::Colour colour) {
    if (keeps) curves.emplace_back(points.begin(), points.end());
    DisplayListSurface::polyline(points, colour);
}

TrendImage::TrendImage(
    core::SharedState& state, bool overlay, int widthPx, int heightPx, int lineWidthPx)
    : m_state(state), m_drawing(state.Config, state.Run, state.Overlay, m_view, *this),
      m_image(widthPx, heightPx, QImage::Format_RGB32) {
    m_view.OverlayLoaded = overlay ? -1 : 0;
    m_view.LineWidthPx = lineWidthPx;
    m_surface.setHeightPx(heightPx);
    m_surface.setScale(0, graph::trendTop, static_cast<float>(state.Run.SampleCount + 1), 0);
    m_surface.setBackColor(static_cast<platform::Colour>(state.Config.GraphBackColour));
    redraw();
    m_surface.keeps = false;
}

void TrendImage::redraw() {
    if (!m_drawing.DrawTrend()) qFatal("the picture has no memory");
    if (m_view.OverlayLoaded != 0) m_drawing.OverLayDraw();
    clear(m_image);
    paint();
}

void TrendImage::clear(QImage& image) const {
    image.fill(platform::rgb32(m_surface.backColor()));
}

void TrendImage::drawBars() {
    m_surface.setAutoRedraw(true);
    m_surface.cls();
    m_drawing.DrawSwitches();
    paint();
}

void TrendImage::paint() {
    const platform::PixelRect area{0, 0, m_image.width(), m_image.height()};
    const platform::DisplayList& picture = m_surface.kept();
    platform_qt::paintOperations({&m_image, area}, area, picture, 0, picture.size(),
        {m_image.width(), m_image.height(), 1}, 1);
}

void TrendImage::fillBars(QImage& target) {
    QPainter painter(&target);
    const auto bars = graph::switchBars(m_view);
    std::vector<std::uint8_t> masks;
    graph::makeSwitchMasks(channels::shownRuns(m_state.Run, nullptr), masks);
    const platform::PixelScale scale(m_surface.scale(), {target.width(), target.height(), 1});
    for (std::size_t i = 0; i < masks.size(); ++i)
        for (std::size_t b = 0; b < bars.size(); ++b) {
            if (((masks[i] >> b) & 1) == 0) continue;
            const QPoint leftTop(scale.x(static_cast<float>(i)), scale.y(bars[b].top));
            const QPoint rightBottom(scale.x(static_cast<float>(i + 1)), scale.y(bars[b].bottom));
            painter.fillRect(
                QRect(leftTop, rightBottom), QColor::fromRgb(platform::rgb32(bars[b].colour)));
        }
}

} // namespace kvo::bench
