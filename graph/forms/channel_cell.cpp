#include "graph/forms/channel_cell.h"

#include "graph/layout.h"
#include "platform/draw/raster.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace kvo::forms {
namespace {

void placeAtBox(QWidget& widget, const graph::BoxPx& box) {
    widget.setGeometry(box.left, box.top, box.width, box.height);
}

QColor shownColour(platform::Colour colour) {
    return QColor::fromRgb(platform::rgb32(colour));
}

QString objectNameOf(const channels::ControlName& control) {
    const QString name =
        QString::fromLatin1(control.name.data(), static_cast<qsizetype>(control.name.size()));
    return control.index < 0 ? name : QStringLiteral("%1(%2)").arg(name).arg(control.index);
}

} // namespace

// --- ChannelToggle

ChannelToggle::ChannelToggle(QWidget* parent) : QCheckBox(parent) {}

void ChannelToggle::setCaption(const QString& caption) {
    m_caption = caption;
    QString text = shownCaption();
    setToolTip(platform_qt::plainTip(text));
    setText(text.replace(QLatin1Char('&'), QLatin1String("&&")));
}

QString ChannelToggle::shownCaption() const {
    const QString own = m_caption.trimmed();
    return own.isEmpty() ? m_standIn : own;
}

void ChannelToggle::setStandIn(const QString& standIn) {
    m_standIn = standIn;
    setCaption(m_caption);
}

void ChannelToggle::setColour(platform::Colour colour) {
    m_colour = colour;
    update();
}

QSize ChannelToggle::sizeHint() const {
    // Room for the longest name of a channel that the program gives itself.
    const int text = fontMetrics().horizontalAdvance(QStringLiteral("Tyre Growth"));
    return {graph::toggleWidthPx(text), fontMetrics().height() + graph::cellPaddingPx};
}

void ChannelToggle::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const int top = (height() - graph::squareSidePx) / 2;
    const QRect square(graph::squareLeftPx, top, graph::squareSidePx, graph::squareSidePx);
    const QColor line = palette().color(QPalette::WindowText);
    painter.setPen(line);
    if (isChecked()) {
        painter.setBrush(shownColour(m_colour));
        painter.drawRect(square.adjusted(0, 0, -1, -1));
    } else {
        QColor faint = line;
        faint.setAlphaF(0.45F);
        painter.setPen(faint);
        painter.drawRect(square.adjusted(0, 0, -1, -1));
    }
    const int textLeft = square.right() + graph::squareGapPx;
    const QRect textRect(textLeft, 0, width() - textLeft, height());
    const QString shortened =
        fontMetrics().elidedText(shownCaption(), Qt::ElideRight, textRect.width());
    const auto group = isChecked() && isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(group, QPalette::WindowText));
    painter.drawText(textRect, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft), shortened);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect();
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void ChannelToggle::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_C && event->modifiers() == Qt::NoModifier) {
        emit colourWanted();
    } else {
        QCheckBox::keyPressEvent(event);
    }
}

// --- ValueLabel

ValueLabel::ValueLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFont(platform_qt::tabularFont());
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setContentsMargins(graph::valueLeftPx, 0, graph::valueRightPx, 0);
    setAutoFillBackground(true);
}

void ValueLabel::setFore(platform::Colour fore) {
    if (fore == m_fore) return;
    m_fore = fore;
    applyColours();
}

void ValueLabel::setBack(platform::Colour back) {
    m_back = back;
    applyColours();
}

void ValueLabel::applyColours() {
    if (m_back == platform::systemButtonFace) {
        setPalette({});
        setBackgroundRole(QPalette::Button);
        return;
    }
    QPalette colours = palette();
    colours.setColor(QPalette::Window, shownColour(m_back));
    colours.setColor(QPalette::WindowText, shownColour(m_fore));
    setPalette(colours);
    setBackgroundRole(QPalette::Window);
}

void ValueLabel::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) emit doubleClicked();
}

// --- ChannelCell

ChannelCell::ChannelCell(const channels::ChannelFacts& facts, QWidget* parent)
    : QWidget(parent), toggle(new ChannelToggle(this)), value(new ValueLabel(this)),
      overlay(new ValueLabel(this)) {
    toggle->setObjectName(objectNameOf(facts.toggle));
    value->setObjectName(objectNameOf(facts.valueLabel));
    overlay->setObjectName(objectNameOf(facts.overlayLabel));
    overlay->lower(); // the value label covers it
    overlay->setCovered(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    const QSize least = ChannelCell::minimumSizeHint();
    setMaximumSize(least.width() + graph::cellSparePx, least.height() + graph::cellGrowthPx);
}

void ChannelCell::uncoverOverlay(bool on) {
    if (on == !overlay->isCovered()) return;
    overlay->setCovered(!on);
    setMaximumWidth(minimumSizeHint().width() + graph::cellSparePx);
    updateGeometry();
    place();
}

QSize ChannelCell::minimumSizeHint() const {
    const QSize name = toggle->sizeHint();
    const int longest = value->fontMetrics().horizontalAdvance(QStringLiteral("-00.00 in"));
    return {graph::cellWidthPx(name.width(), longest, !overlay->isCovered()), name.height()};
}

void ChannelCell::resizeEvent(QResizeEvent*) {
    place();
}

void ChannelCell::place() {
    const graph::CellPlaces places =
        graph::cellPlaces(width(), height(), toggle->sizeHint().width(), !overlay->isCovered());
    placeAtBox(*toggle, places.toggle);
    placeAtBox(*value, places.value);
    placeAtBox(*overlay, places.overlay);
}

} // namespace kvo::forms
