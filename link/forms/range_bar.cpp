#include "link/forms/range_bar.h"

#include "platform/qt/form_kit.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <utility>

namespace kvo::forms {

namespace {

constexpr int barWidth = 30;
constexpr int barHeight = 12;

} // namespace

RangeBar::RangeBar(std::function<QString()> tip) : m_tip(std::move(tip)) {
    setFixedSize(barWidth, barHeight);
}

int RangeBar::filledPx(double place) const {
    return qRound(place * (width() - 2));
}

// Thirty times a second, so it is painted only where a pixel of it changes.
void RangeBar::setPlace(double place) {
    const bool changes = filledPx(place) != filledPx(m_place);
    m_place = place;
    if (changes) update();
}

bool RangeBar::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    QToolTip::showText(
        static_cast<QHelpEvent*>(event)->globalPos(), platform_qt::plainTip(m_tip()), this);
    return true;
}

void RangeBar::paintEvent(QPaintEvent* event) {
    (void)event;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.fillRect(
        QRect(1, 1, filledPx(m_place), height() - 2), palette().color(QPalette::Highlight));
}

} // namespace kvo::forms
