#include "platform/qt/display_list_image.h"

#include "platform/qt/application.h"
#include "platform/qt/text.h"

#include <QFont>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

namespace kvo::platform_qt {
namespace {

using platform::PixelPoint;
using platform::PixelRect;

// Texts by QPainter; it is begun with the first text that can be seen.
class ImageText : public platform::TextPainter {
public:
    ImageText(const ImagePart& part, const PixelRect& clip, double pixelRatio)
        : m_part(part), m_clip(clip), m_pixelRatio(pixelRatio) {}

    void paintText(
        PixelPoint leftTop, std::string_view text, float points, platform::Colour colour) override {
        const int fontPx =
            static_cast<int>(std::lround(platform::textFontPx(points) * m_pixelRatio));
        // No letter is wider than twice its height, none reaches further down.
        const int reach = 2 * fontPx;
        if (leftTop.x >= m_clip.right || leftTop.y >= m_clip.bottom ||
            leftTop.y + reach < m_clip.top ||
            leftTop.x + reach * static_cast<int>(text.size()) < m_clip.left) {
            return;
        }
        begin(fontPx);
        m_painter->setPen(QColor::fromRgb(platform::rgb32(colour)));
        const QPoint place(leftTop.x - m_part.area.left,
            leftTop.y - m_part.area.top + m_painter->fontMetrics().ascent());
        m_painter->drawText(place, shown(text));
    }

private:
    void begin(int fontPx) {
        if (!m_painter) {
            m_painter.emplace(m_part.image);
            m_painter->setClipRect(m_clip.left - m_part.area.left, m_clip.top - m_part.area.top,
                m_clip.width(), m_clip.height());
        }
        if (fontPx == m_fontPx) return;
        m_fontPx = fontPx;
        QFont font = tabularFont();
        font.setPixelSize(fontPx);
        m_painter->setFont(font);
    }

    const ImagePart& m_part;
    PixelRect m_clip;
    double m_pixelRatio;
    std::optional<QPainter> m_painter;
    int m_fontPx = 0;
};

platform::Raster rasterOf(const ImagePart& part, const PixelRect& clip) {
    platform::Raster raster(reinterpret_cast<std::uint32_t*>(part.image->bits()),
        part.image->bytesPerLine() / 4, part.area);
    raster.setClip(clip);
    return raster;
}

} // namespace

void paintOperations(const ImagePart& part, const PixelRect& clip,
    const platform::DisplayList& picture, std::size_t first, std::size_t end,
    const platform::SurfaceSize& surface, double pixelRatio) {
    platform::Raster raster = rasterOf(part, clip);
    if (raster.clip().empty()) return;
    ImageText text(part, raster.clip(), pixelRatio);
    picture.paint(raster, text, surface, first, end);
}

void paintWhole(const ImagePart& part, const PixelRect& clip, const platform::DisplayList& picture,
    platform::Colour ground, const platform::SurfaceSize& surface, double pixelRatio) {
    rasterOf(part, clip).fill(clip, platform::rgb32(ground));
    paintOperations(part, clip, picture, 0, picture.size(), surface, pixelRatio);
}

void reserveImage(QImage& image, int widthPx, int heightPx) {
    if (image.width() >= widthPx && image.height() >= heightPx) return;
    image = QImage(); // the old one goes first, so that there are never two
    image = QImage(std::max(1, widthPx), std::max(1, heightPx), QImage::Format_RGB32);
    if (image.isNull()) throw std::bad_alloc();
}

} // namespace kvo::platform_qt
