#pragma once
// SurfaceWidget, the surface of the graph: a widget that may be many times its frame. It keeps its
// picture as a list of drawings and pixels only of what is in view. Mouse and keys come as signals
// in the user scale.
#include "platform/draw/display_list.h"
#include "platform/qt/display_list_image.h"

#include <QImage>
#include <QWidget>

#include <vector>

namespace kvo::platform_qt {

class SurfaceWidget : public QWidget, private platform::DisplayListWatcher {
    Q_OBJECT

public:
    explicit SurfaceWidget(QWidget* parent = nullptr);
    ~SurfaceWidget() override;

    platform::DisplayListSurface& surface() { return m_surface; }
    // The whole picture as kept, at any size, one device pixel to a pixel; with what lies on top.
    QImage picture(const QSize& sizePx) const;
    // Device pixels of the surface and how wide its lines are.
    platform::SurfaceSize deviceSize() const;
    // How often the kept picture has been painted from its beginning, for tests of the speed.
    int fullPaints() const { return m_fullPaints; }
    // How often strips that a scroll brought in were painted, likewise.
    int stripPaints() const { return m_stripPaints; }

signals:
    // X and Y in the user scale.
    void mouseDown(Qt::MouseButton button, float x, float y);
    void mouseMoved(Qt::MouseButtons buttons, float x, float y);
    void mouseUp(Qt::MouseButton button, float x, float y);
    // Behind the mouseDown of a second click.
    void mouseDoubleClicked(Qt::MouseButton button);
    void mouseLeft();
    // Left and right arrow only; other keys go on to the window.
    void keyDown(int key, Qt::KeyboardModifiers modifiers);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void keptChanged() override;
    void upperDrawn(std::size_t place) override;
    void upperWiped() override;
    void backColorChanged() override;

    platform::Point userPoint(const QPointF& position) const;
    platform::PixelRect devicePart(const QRect& rect) const;
    QRect widgetRect(const platform::PixelRect& rect) const;
    void paint(const QPaintEvent& event);
    void bringUpToDate(const platform::PixelRect& view);
    void paintPart(const platform::PixelRect& part);
    bool scrollTo(const platform::PixelRect& view);
    void paintUpper(QPainter& painter, const platform::PixelRect& part);

    platform::DisplayListSurface m_surface;
    QImage m_image;                  // the kept picture in view and a little beside it
    QImage m_scratch;                // a piece of it with what lies on top
    platform::PixelRect m_held;      // part of the surface that m_image holds
    platform::SurfaceSize m_painted; // surface it was painted for
    platform::Colour m_ground = 0;
    std::uint32_t m_generation = 0;
    std::size_t m_operations = 0; // so many are in m_image
    std::vector<QRect> m_upperRects;
    bool m_unpainted = false; // the last painting was broken off
    bool m_updating = false;  // an update of everything is on its way
    int m_fullPaints = 0;
    int m_stripPaints = 0;
};

} // namespace kvo::platform_qt
