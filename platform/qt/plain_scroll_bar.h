#pragma once
// PlainScrollBar: a scroll bar that does all that the toolkit's does and is laid out as it is, but
// paints itself with a few plain boxes in the palette's colours. The toolkit's own painting, with
// its gradients, takes several times as long as scrolling a large surface by a step.
#include <QPoint>
#include <QScrollBar>

namespace kvo::platform_qt {

class PlainScrollBar : public QScrollBar {
    Q_OBJECT

public:
    explicit PlainScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    static constexpr QPoint away{-1, -1};
    // Kept from the events: asking the screen for it is a round trip to another process.
    QPoint m_pointer = away;
};

} // namespace kvo::platform_qt
