#include "platform/qt/plain_scroll_bar.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>

namespace kvo::platform_qt {
namespace {

using Part = QStyle::SubControl;

// A box with an edge of one pixel.
void paintBox(QPainter& painter, const QRect& box, const QColor& edge, const QColor& inner) {
    if (box.isEmpty()) return;
    painter.fillRect(box, edge);
    painter.fillRect(box.adjusted(1, 1, -1, -1), inner);
}

// A triangle of boxes that points to an end of the bar, in the middle of its button.
void paintArrow(QPainter& painter, const QRect& button, bool flat, bool forward, QColor colour) {
    const int height = std::min(button.width(), button.height()) / 4;
    const QPoint centre = button.center();
    for (int i = 0; i < height; ++i) {
        const int along = forward ? height / 2 - i : i - height / 2;
        const QRect line = flat ? QRect(centre.x() + along, centre.y() - i, 1, 2 * i + 1)
                                : QRect(centre.x() - i, centre.y() + along, 2 * i + 1, 1);
        painter.fillRect(line, colour);
    }
}

} // namespace

PlainScrollBar::PlainScrollBar(Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent) {}

bool PlainScrollBar::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        m_pointer = static_cast<QSinglePointEvent*>(event)->position().toPoint();
        break;
    case QEvent::HoverLeave:
    case QEvent::Leave:
        m_pointer = away;
        break;
    default:
        break;
    }
    return QScrollBar::event(event);
}

void PlainScrollBar::paintEvent(QPaintEvent*) {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto place = [&](Part part) {
        return style()->subControlRect(QStyle::CC_ScrollBar, &option, part, this);
    };
    const QPalette& colours = palette();
    const bool works = isEnabled() && maximum() > minimum();
    const Part under =
        works ? style()->hitTestComplexControl(QStyle::CC_ScrollBar, &option, m_pointer, this)
              : QStyle::SC_None;
    const bool held = (QApplication::mouseButtons() & Qt::LeftButton) != 0;
    const auto inner = [&](Part part, bool down) {
        if (down) return colours.color(QPalette::Mid);
        return colours.color(under == part && !held ? QPalette::Midlight : QPalette::Button);
    };
    const QColor edge = colours.color(QPalette::Mid);
    QPainter painter(this);
    painter.fillRect(rect(), colours.color(QPalette::Window).darker(110));
    const bool flat = orientation() == Qt::Horizontal;
    const bool turned = flat && isRightToLeft();
    for (const Part button : {QStyle::SC_ScrollBarSubLine, QStyle::SC_ScrollBarAddLine}) {
        const QRect box = place(button);
        paintBox(painter, box, edge, inner(button, under == button && held));
        const bool forward = (button == QStyle::SC_ScrollBarAddLine) != turned;
        const auto group = works ? QPalette::Active : QPalette::Disabled;
        paintArrow(painter, box, flat, forward, colours.color(group, QPalette::ButtonText));
    }
    if (works)
        paintBox(painter, place(QStyle::SC_ScrollBarSlider), colours.color(QPalette::Dark),
            inner(QStyle::SC_ScrollBarSlider, isSliderDown()));
}

} // namespace kvo::platform_qt
