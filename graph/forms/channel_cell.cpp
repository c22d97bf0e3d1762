#include "graph/forms/channel_cell.h"

#include "platform/draw/raster.h"
#include "platform/qt/application.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace kvo::forms {
namespace {

constexpr int squareSide = 11;
constexpr int squareGap = 5;
constexpr int cellPadding = 4; // above and below the letters together
constexpr int margin = 2;
constexpr int spareRoom = 70; // that a cell takes beyond what it needs

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
    QString text = caption.trimmed().isEmpty() ? m_standIn : caption.trimmed();
    setToolTip(text);
    setText(text.replace(QLatin1Char('&'), QLatin1String("&&")));
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
    return {squareSide + 2 * squareGap + text + 4, fontMetrics().height() + cellPadding};
}

void ChannelToggle::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const int top = (height() - squareSide) / 2;
    const QRect square(squareGap - 2, top, squareSide, squareSide);
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
    const int textLeft = square.right() + squareGap;
    const QRect textRect(textLeft, 0, width() - textLeft, height());
    const QString shortened = fontMetrics().elidedText(toolTip(), Qt::ElideRight, textRect.width());
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

// --- ValueLabel

ValueLabel::ValueLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFont(platform_qt::tabularFont());
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setContentsMargins(1, 0, 3, 0);
    setAutoFillBackground(true);
}

void ValueLabel::setFore(platform::Colour fore) {
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
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMaximumSize(minimumSizeHint().width() + spareRoom, minimumSizeHint().height() + 6);
}

void ChannelCell::uncoverOverlay(bool on) {
    if (on == m_uncovered) return;
    m_uncovered = on;
    setMaximumWidth(minimumSizeHint().width() + spareRoom);
    updateGeometry();
    place();
}

QSize ChannelCell::minimumSizeHint() const {
    const QSize name = toggle->sizeHint();
    // The longest read-out with the label's margins.
    const int number = value->fontMetrics().horizontalAdvance(QStringLiteral("-00.00 in")) + 5;
    return {name.width() + (m_uncovered ? 2 * number + margin : number), name.height()};
}

void ChannelCell::resizeEvent(QResizeEvent*) {
    place();
}

void ChannelCell::place() {
    const int left = toggle->sizeHint().width();
    const int room = width() - left;
    const int line = height() - margin;
    const int half = (room - margin) / 2;
    toggle->setGeometry(0, 0, left, height());
    value->setGeometry(left, margin / 2, m_uncovered ? half : room, line);
    overlay->setGeometry(left + room - half, margin / 2, half, line);
}

} // namespace kvo::forms
