#include "platform/qt/surface_widget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

namespace kvo::platform_qt {

using platform::PixelRect;

namespace {

// Beyond this a widget cannot grow; the surface then says that it has no memory.
constexpr int largestSide = 1000000;

// So far the image reaches beyond the view on the side to which it was scrolled, so that most steps
// of scrolling find their part painted and move no pixel of the image.
constexpr int aheadPx(int viewPx) {
    return viewPx / 4;
}

PixelRect heldFor(
    const PixelRect& view, const PixelRect& held, const platform::SurfaceSize& surface) {
    const int x = aheadPx(view.width());
    const int y = aheadPx(view.height());
    PixelRect next = view;
    if (view.left < held.left) next.left = std::max(0, view.left - x);
    if (view.top < held.top) next.top = std::max(0, view.top - y);
    if (view.right > held.right) next.right = std::min(surface.widthPx, view.right + x);
    if (view.bottom > held.bottom) next.bottom = std::min(surface.heightPx, view.bottom + y);
    return next;
}

} // namespace

SurfaceWidget::SurfaceWidget(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    // All of it is painted by us, and a move of it inside its frame may shift the pixels.
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_surface.setWatcher(this);
}

SurfaceWidget::~SurfaceWidget() {
    m_surface.setWatcher(nullptr);
}

platform::SurfaceSize SurfaceWidget::deviceSize() const {
    const double ratio = devicePixelRatioF();
    return {static_cast<int>(std::lround(width() * ratio)),
        static_cast<int>(std::lround(height() * ratio)),
        std::max(1, static_cast<int>(std::lround(ratio)))};
}

QImage SurfaceWidget::picture(const QSize& sizePx) const {
    QImage image(sizePx, QImage::Format_RGB32);
    if (image.isNull()) return image; // too large for the memory
    const PixelRect area{0, 0, sizePx.width(), sizePx.height()};
    const platform::SurfaceSize surface{sizePx.width(), sizePx.height(), 1};
    const ImagePart part{&image, area};
    paintWhole(part, area, m_surface.kept(), m_surface.backColor(), surface, 1);
    paintOperations(part, area, m_surface.upper(), 0, m_surface.upper().size(), surface, 1);
    return image;
}

// --- What the surface tells

void SurfaceWidget::keptChanged() {
    if (m_updating) return;
    m_updating = true;
    update();
}

void SurfaceWidget::backColorChanged() {
    keptChanged();
}

// The time line is shown at once, so that it keeps up with a key held down: one narrow strip for
// the old line, one for the new.
void SurfaceWidget::upperDrawn(std::size_t place) {
    const QRect rect = widgetRect(m_surface.upper().bounds(place, deviceSize()));
    m_upperRects.push_back(rect);
    if (m_updating) return;
    if (rect.width() <= 4) {
        repaint(rect);
    } else {
        update(rect);
    }
}

void SurfaceWidget::upperWiped() {
    std::vector<QRect> rects;
    rects.swap(m_upperRects);
    if (m_updating) return;
    for (const QRect& rect : rects) {
        if (rects.size() == 1 && rect.width() <= 4) {
            repaint(rect);
        } else {
            update(rect);
        }
    }
}

// --- Painting

// Device pixels that belong to a rectangle of the widget.
PixelRect SurfaceWidget::devicePart(const QRect& rect) const {
    const double ratio = devicePixelRatioF();
    const platform::SurfaceSize size = deviceSize();
    const PixelRect part{static_cast<int>(std::floor(rect.left() * ratio)),
        static_cast<int>(std::floor(rect.top() * ratio)),
        static_cast<int>(std::ceil((rect.left() + rect.width()) * ratio)),
        static_cast<int>(std::ceil((rect.top() + rect.height()) * ratio))};
    return intersection(part, {0, 0, size.widthPx, size.heightPx});
}

QRect SurfaceWidget::widgetRect(const PixelRect& rect) const {
    const double ratio = devicePixelRatioF();
    const int left = static_cast<int>(std::floor(rect.left / ratio));
    const int top = static_cast<int>(std::floor(rect.top / ratio));
    return {left, top, static_cast<int>(std::ceil(rect.right / ratio)) - left,
        static_cast<int>(std::ceil(rect.bottom / ratio)) - top};
}

void SurfaceWidget::paintPart(const PixelRect& part) {
    const ImagePart image{&m_image, m_held};
    const double ratio = devicePixelRatioF();
    paintWhole(image, part, m_surface.kept(), m_surface.backColor(), m_painted, ratio);
}

// Sees to it that the image holds what a scrolled view shows: moves the pixels that stay and paints
// the strips that came in; false where nothing stays or the image is too small.
bool SurfaceWidget::scrollTo(const PixelRect& view) {
    if (intersection(view, m_held) == view) return true;
    const PixelRect held = heldFor(view, m_held, m_painted);
    const PixelRect stays = intersection(held, m_held);
    if (stays.empty() || held.width() > m_image.width() || held.height() > m_image.height()) {
        return false;
    }
    const qsizetype stride = m_image.bytesPerLine();
    uchar* const bits = m_image.bits();
    const auto pixel = [&](const PixelRect& holder, int y) {
        return bits + (y - holder.top) * stride + (stays.left - holder.left) * 4;
    };
    const bool upwards = held.top >= m_held.top;
    for (int i = 0; i < stays.height(); ++i) {
        const int y = upwards ? stays.top + i : stays.bottom - 1 - i;
        std::memmove(pixel(held, y), pixel(m_held, y), static_cast<std::size_t>(stays.width()) * 4);
    }
    m_held = held;
    ++m_stripPaints;
    paintPart({held.left, held.top, held.right, stays.top});
    paintPart({held.left, stays.bottom, held.right, held.bottom});
    paintPart({held.left, stays.top, stays.left, stays.bottom});
    paintPart({stays.right, stays.top, held.right, stays.bottom});
    return true;
}

// Makes m_image the kept picture of the part in view. Work is only done for what has changed.
void SurfaceWidget::bringUpToDate(const PixelRect& view) {
    platform::DisplayList& kept = m_surface.kept();
    kept.seal();
    const bool same = m_painted == deviceSize() && m_generation == kept.generation() &&
                      m_ground == m_surface.backColor();
    if (same && m_operations < kept.size() && !m_held.empty()) {
        paintOperations({&m_image, m_held}, m_held, kept, m_operations, kept.size(), m_painted,
            devicePixelRatioF());
    }
    m_operations = kept.size();
    if (same && scrollTo(view)) return;
    m_painted = deviceSize();
    m_generation = kept.generation();
    m_ground = m_surface.backColor();
    reserveImage(m_image, std::min(view.width() + aheadPx(view.width()), m_painted.widthPx),
        std::min(view.height() + aheadPx(view.height()), m_painted.heightPx));
    m_held = view;
    paintPart(view);
    ++m_fullPaints;
}

void SurfaceWidget::paintUpper(QPainter& painter, const PixelRect& part) {
    const platform::DisplayList& upper = m_surface.upper();
    reserveImage(m_scratch, part.width(), part.height());
    for (int y = part.top; y < part.bottom; ++y) {
        std::memcpy(m_scratch.scanLine(y - part.top),
            m_image.constScanLine(y - m_held.top) + (part.left - m_held.left) * 4,
            static_cast<std::size_t>(part.width()) * 4);
    }
    paintOperations(
        {&m_scratch, part}, part, upper, 0, upper.size(), m_painted, devicePixelRatioF());
    painter.drawImage(
        QPoint(part.left, part.top), m_scratch, QRect(0, 0, part.width(), part.height()));
}

// What is thrown must not leave the window's painting half done: it is thrown again from the loop,
// once until a painting has come to its end, since the box that tells of it uncovers the surface.
void SurfaceWidget::paintEvent(QPaintEvent* event) {
    try {
        paint(*event);
        m_unpainted = false;
    } catch (const std::bad_alloc&) {
        m_held = {}; // nothing of the image counts
        if (std::exchange(m_unpainted, true)) return;
        QTimer::singleShot(0, this, [] { throw std::bad_alloc(); });
    }
}

void SurfaceWidget::paint(const QPaintEvent& event) {
    m_updating = false;
    const PixelRect view = devicePart(visibleRegion().boundingRect().united(event.rect()));
    if (view.empty()) return;
    bringUpToDate(view);
    PixelRect onTop{0, 0, 0, 0};
    for (std::size_t i = 0; i < m_surface.upper().size(); ++i) {
        const PixelRect bounds = m_surface.upper().bounds(i, m_painted);
        onTop = i == 0 ? bounds
                       : PixelRect{std::min(onTop.left, bounds.left),
                             std::min(onTop.top, bounds.top), std::max(onTop.right, bounds.right),
                             std::max(onTop.bottom, bounds.bottom)};
    }
    QPainter painter(this);
    // Device pixels from here on, so that each pixel of the image is one of the screen.
    painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
    for (const QRect& rect : event.region()) {
        const PixelRect part = intersection(devicePart(rect), m_held);
        painter.drawImage(QPoint(part.left, part.top), m_image,
            QRect(part.left - m_held.left, part.top - m_held.top, part.width(), part.height()));
        const PixelRect upperPart = intersection(part, onTop);
        if (!upperPart.empty()) paintUpper(painter, upperPart);
    }
}

void SurfaceWidget::resizeEvent(QResizeEvent*) {
    m_surface.setHeightPx(std::max(1, height()));
    m_surface.setUsable(width() < largestSide && height() < largestSide);
}

// --- Mouse and keys

platform::Point SurfaceWidget::userPoint(const QPointF& position) const {
    const double ratio = devicePixelRatioF();
    const platform::PixelScale scale(m_surface.scale(), deviceSize());
    return scale.user(position.x() * ratio, position.y() * ratio);
}

void SurfaceWidget::mousePressEvent(QMouseEvent* event) {
    const platform::Point at = userPoint(event->position());
    emit mouseDown(event->button(), at.x, at.y);
}

void SurfaceWidget::mouseMoveEvent(QMouseEvent* event) {
    const platform::Point at = userPoint(event->position());
    emit mouseMoved(event->buttons(), at.x, at.y);
}

void SurfaceWidget::mouseReleaseEvent(QMouseEvent* event) {
    const platform::Point at = userPoint(event->position());
    emit mouseUp(event->button(), at.x, at.y);
}

void SurfaceWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    emit mouseDoubleClicked(event->button());
}

void SurfaceWidget::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    emit mouseLeft();
}

void SurfaceWidget::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        emit keyDown(event->key(), event->modifiers());
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace kvo::platform_qt
