#include "bench/trend_image.h"

#include "graph/scenery.h"

#include <QColor>
#include <QFont>
#include <QPainter>

namespace kvo::bench {
namespace {

class ImageText : public platform::TextPainter {
public:
    explicit ImageText(QImage& image) : m_painter(&image) { m_painter.setClipRect(image.rect()); }
    void paintText(platform::PixelPoint leftTop, std::string_view text, float points,
        platform::Colour colour) override {
        QFont font = m_painter.font();
        font.setPixelSize(platform::textFontPx(points));
        m_painter.setFont(font);
        m_painter.setPen(QColor::fromRgb(platform::rgb32(colour)));
        m_painter.drawText(leftTop.x, leftTop.y + QFontMetrics(font).ascent(),
            QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    }

private:
    QPainter m_painter;
};

} // namespace

void TrendImage::Surface::polyline(
    std::span<const platform::Point> points, platform::Colour colour) {
    if (keeps) curves.emplace_back(points.begin(), points.end());
    PictureSurface::polyline(points, colour);
}

TrendImage::TrendImage(core::SharedState& state, int widthPx, int heightPx)
    : m_state(state), m_drawing(state, m_view, *this),
      m_image(widthPx, heightPx, QImage::Format_RGB32) {
    m_surface.setHeightPx(heightPx);
    m_surface.setScale(0, graph::trendTop, static_cast<float>(state.SampleCount + 1), 0);
    m_surface.setBackColor(static_cast<platform::Colour>(state.Config.GraphBackColour));
    redraw();
    m_surface.keeps = false;
}

void TrendImage::redraw() {
    if (!m_drawing.DrawTrend()) qFatal("the picture has no memory");
    if (m_state.OverlayLoaded != 0) m_drawing.OverLayDraw();
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
    auto* pixels = reinterpret_cast<std::uint32_t*>(m_image.bits());
    const platform::PixelRect area{0, 0, m_image.width(), m_image.height()};
    platform::Raster raster(pixels, m_image.bytesPerLine() / 4, area);
    ImageText text(m_image);
    m_surface.kept().paint(
        raster, text, {m_image.width(), m_image.height(), 1}, 0, m_surface.kept().size());
}

void TrendImage::fillBars(QImage& target) {
    QPainter painter(&target);
    const auto bars = graph::switchBars(m_view);
    std::vector<std::uint8_t> masks;
    graph::makeSwitchMasks(m_state.Run, nullptr, m_state.SampleCount, masks);
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
