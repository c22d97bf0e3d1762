#include "platform/qt/icons.h"

#include <QApplication>
#include <QBuffer>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <utility>

namespace kvo::platform_qt {
namespace {

constexpr qreal gridSize = 24;

class DrawnIcon : public QIconEngine {
public:
    explicit DrawnIcon(std::function<void(QPainter&)> draw) : m_draw(std::move(draw)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor colour = QApplication::palette().color(group, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / gridSize, rect.height() / gridSize);
        painter->setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        m_draw(*painter);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }
    QIconEngine* clone() const override { return new DrawnIcon(m_draw); }

private:
    std::function<void(QPainter&)> m_draw;
};

qreal ratioOf(const QImage& image) {
    constexpr qreal inchesPerMeter = 39.3701;
    constexpr qreal ordinaryDots = 96;
    return std::max(1.0, qRound(image.dotsPerMeterX() / inchesPerMeter / ordinaryDots) * 1.0);
}

} // namespace

QPixmap imageFromBytes(const platform::Bytes& content) {
    QByteArray bytes(
        reinterpret_cast<const char*>(content.data()), static_cast<qsizetype>(content.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    QImage image = reader.read();
    if (image.isNull()) return {};
    image.setDevicePixelRatio(ratioOf(image));
    return QPixmap::fromImage(image);
}

QPixmap fitted(const QPixmap& picture, QSize room, qreal screenRatio) {
    if (picture.isNull() || room.isEmpty()) return {};
    const QSizeF own = picture.deviceIndependentSize();
    const qreal scale = std::min({1.0, room.width() / own.width(), room.height() / own.height()});
    QPixmap result = picture.scaled(
        (own * scale * screenRatio).toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    result.setDevicePixelRatio(screenRatio);
    return result;
}

QIcon drawnIcon(std::function<void(QPainter&)> draw) {
    return QIcon(new DrawnIcon(std::move(draw)));
}

} // namespace kvo::platform_qt
