#include "platform/qt/paper_window.h"

#include <QImage>
#include <QMenuBar>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QRegion>
#include <QScrollBar>
#include <QWidget>

#include <algorithm>
#include <cstring>
#include <typeinfo>

namespace kvo::platform_qt {

namespace {

constexpr qreal leastPixelRatio = 2; // letters of a screen's pixels are coarse on paper

QPalette paperColours() {
    QPalette colours(Qt::white);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto ground : {QPalette::Window, QPalette::Base, QPalette::AlternateBase,
                 QPalette::Button, QPalette::Highlight})
            colours.setColor(group, ground, Qt::white);
        for (const auto letters : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                 QPalette::HighlightedText, QPalette::PlaceholderText})
            colours.setColor(group, letters, Qt::black);
        for (const auto edge : {QPalette::Dark, QPalette::Mid, QPalette::Shadow})
            colours.setColor(group, edge, Qt::darkGray);
    }
    return colours;
}

// The window in those colours for as long as the object lives; the screen is painted later, in its
// own again.
class OnPaper {
public:
    explicit OnPaper(QWidget& window) : m_window(window), m_before(window.palette()) {
        m_window.setPalette(paperColours());
    }
    ~OnPaper() { m_window.setPalette(m_before); }
    OnPaper(const OnPaper&) = delete;
    OnPaper& operator=(const OnPaper&) = delete;

private:
    QWidget& m_window;
    QPalette m_before;
};

// A button that is a label of something is a class of its own.
bool isOnlyPressed(const QWidget& widget) {
    return typeid(widget) == typeid(QPushButton) || qobject_cast<const QMenuBar*>(&widget) ||
           qobject_cast<const QScrollBar*>(&widget);
}

void wipeWhatIsOnlyPressed(const QWidget& window, QPainter& painter) {
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window) || !isOnlyPressed(*widget)) continue;
        painter.fillRect(QRect(widget->mapTo(&window, QPoint()), widget->size()), Qt::white);
    }
}

// The lines that are not all white.
QRect inked(const QImage& image) {
    const auto isBlank = [&](int y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        return std::all_of(
            line, line + image.width(), [](QRgb pixel) { return pixel == 0xFFFFFFFF; });
    };
    int top = 0;
    int bottom = image.height() - 1;
    while (top < bottom && isBlank(top)) ++top;
    while (bottom > top && isBlank(bottom)) --bottom;
    return {0, top, image.width(), bottom - top + 1};
}

platform::PixelImage pixelsOf(const QImage& image) {
    platform::PixelImage picture{image.width(), image.height(), {}};
    const auto width = static_cast<std::size_t>(image.width());
    picture.pixels.resize(width * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(picture.pixels.data() + static_cast<std::size_t>(y) * width,
            image.constScanLine(y), width * sizeof(std::uint32_t));
    }
    return picture;
}

} // namespace

platform::PixelImage paperPictureOf(QWidget& window) {
    const qreal ratio = std::max(leastPixelRatio, window.devicePixelRatioF());
    QImage image(window.size() * ratio, QImage::Format_RGB32);
    if (image.isNull()) return {};
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    {
        const OnPaper onPaper(window);
        window.render(&image);
        QPainter painter(&image);
        wipeWhatIsOnlyPressed(window, painter);
    }
    return pixelsOf(image.copy(inked(image)));
}

} // namespace kvo::platform_qt
