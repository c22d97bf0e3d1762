// A rear engine dragster, nose to the right.
#include "drawing.h"

#include <QLinearGradient>
#include <QPainter>

namespace kvo::pictures {
namespace {

const QColor red(0xd8, 0x2a, 0x26);
const QColor deepRed(0x84, 0x12, 0x14);
const QColor steel(0x9d, 0xa3, 0xab);
const QColor darkSteel(0x4a, 0x4e, 0x55);
const QColor carbon(0x2e, 0x31, 0x37);

constexpr QPointF rearAxle(176, 326);
constexpr qreal rearRadius = 94;
constexpr QPointF frontAxle(856, 391);
constexpr qreal frontRadius = 29;

void rearWing(QPainter& painter) {
    tube(painter, {{196, 300}, {128, 132}}, 7, darkSteel);
    tube(painter, {{238, 306}, {150, 134}}, 6, darkSteel);
    tube(painter, {{182, 268}, {212, 258}}, 5, darkSteel);
    fillShaded(painter, outline({{26, 88}, {192, 108}, {202, 138}, {52, 142}}, 8),
        QColor(0xee, 0xf0, 0xf3), QColor(0x9b, 0xa1, 0xaa));
    painter.setPen(Qt::NoPen);
    painter.setBrush(red);
    painter.drawPath(outline({{60, 98}, {150, 109}, {156, 118}, {64, 108}}, 2));
    painter.setBrush(carbon);
    painter.drawPath(outline({{66, 113}, {158, 122}, {162, 129}, {69, 123}}, 2));
}

// The tubes that show between engine and cockpit, and the floor below.
void frameTubes(QPainter& painter) {
    tube(painter, {{176, 352}, {320, 372}, {470, 384}}, 8, darkSteel);
    tube(painter, {{190, 306}, {300, 316}}, 7, darkSteel);
    tube(painter, {{300, 316}, {322, 236}, {350, 214}, {384, 226}, {402, 318}}, 7, darkSteel);
    tube(painter, {{262, 312}, {326, 240}}, 5, darkSteel);
}

void engine(QPainter& painter) {
    fillShaded(painter, outline({{196, 300}, {306, 306}, {300, 362}, {206, 358}}, 6),
        steel.darker(115), darkSteel.darker(130));
    fillShaded(painter, outline({{202, 290}, {302, 296}, {300, 318}, {204, 314}}, 6),
        QColor(0x31, 0x34, 0x3a), QColor(0x15, 0x16, 0x19)); // valve cover
    fillShaded(painter, outline({{216, 258}, {300, 262}, {302, 296}, {212, 292}}, 6),
        QColor(0xf2, 0xf4, 0xf7), QColor(0x7d, 0x84, 0x8e)); // blower case
    painter.setPen(QPen(QColor(0x6a, 0x70, 0x7a), 2));
    for (int i = 0; i < 7; ++i)
        painter.drawLine(QPointF(224 + 11 * i, 263), QPointF(222 + 11 * i, 290));
    fillShaded(painter, outline({{298, 268}, {312, 270}, {316, 346}, {300, 350}}, 6),
        carbon.lighter(140),
        carbon.darker(140)); // drive belt
    // Injector hat, its mouth to the front.
    QPainterPath hat(QPointF(222, 258));
    hat.cubicTo(222, 224, 246, 208, 306, 204);
    hat.lineTo(316, 240);
    hat.cubicTo(310, 252, 300, 260, 294, 260);
    hat.closeSubpath();
    fillShaded(painter, hat, QColor(0xf6, 0xf7, 0xf9), QColor(0x8b, 0x92, 0x9c));
    painter.setPen(QPen(QColor(0x40, 0x44, 0x4b), 1.2));
    painter.setBrush(QColor(0x1a, 0x1b, 0x1e));
    painter.drawPath(outline({{302, 207}, {309, 206}, {318, 240}, {311, 246}}, 4));
}

// Four pipes, swept up and back, each with its flame.
void headers(QPainter& painter) {
    for (int i = 3; i >= 0; --i) {
        const qreal x = 208 + 26 * i;
        const QPointF mouth(x - 44, 236);
        QPainterPath flame(mouth + QPointF(6, 6));
        flame.cubicTo(
            mouth + QPointF(-14, -12), mouth + QPointF(-22, -34), mouth + QPointF(-24, -64));
        flame.cubicTo(mouth + QPointF(-6, -44), mouth + QPointF(4, -24), mouth + QPointF(12, 2));
        flame.closeSubpath();
        QLinearGradient fire(mouth, mouth + QPointF(-22, -62));
        fire.setColorAt(0, QColor(0xff, 0xf3, 0xc0, 240));
        fire.setColorAt(0.35, QColor(0xff, 0xb0, 0x38, 220));
        fire.setColorAt(1, QColor(0xe8, 0x46, 0x18, 0));
        painter.setPen(Qt::NoPen);
        painter.setBrush(fire);
        painter.drawPath(flame);
        tube(painter, {{x + 8, 322}, {x - 4, 330}, {x - 18, 318}, {x - 42, 240}}, 13,
            QColor(0xb9, 0xa6, 0x8c));
    }
}

void body(QPainter& painter) {
    QPainterPath shell(QPointF(300, 322));
    shell.cubicTo(330, 296, 352, 290, 396, 294);
    shell.cubicTo(424, 297, 440, 306, 470, 316);
    shell.cubicTo(600, 340, 760, 366, 912, 392);
    shell.cubicTo(924, 395, 924, 401, 912, 402);
    shell.lineTo(470, 398);
    shell.cubicTo(400, 397, 340, 390, 300, 372);
    shell.closeSubpath();
    fillShaded(painter, shell, red.lighter(125), deepRed);
    painter.save();
    painter.setClipPath(shell, Qt::IntersectClip);
    painter.setPen(Qt::NoPen);
    QPainterPath stripe(QPointF(296, 352));
    stripe.cubicTo(420, 344, 620, 366, 930, 396);
    stripe.lineTo(930, 400);
    stripe.cubicTo(620, 380, 420, 366, 296, 372);
    stripe.closeSubpath();
    painter.setBrush(QColor(0xf5, 0xf5, 0xf2));
    painter.drawPath(stripe);
    QPainterPath shine(QPointF(420, 304));
    shine.cubicTo(560, 336, 740, 362, 912, 391);
    shine.cubicTo(740, 370, 560, 346, 420, 316);
    shine.closeSubpath();
    painter.setBrush(QColor(255, 255, 255, 90));
    painter.drawPath(shine);
    painter.restore();
    QPainterPath screen(QPointF(398, 294));
    screen.cubicTo(410, 272, 420, 268, 428, 270);
    screen.cubicTo(440, 284, 448, 296, 456, 312);
    screen.closeSubpath();
    painter.setPen(QPen(QColor(0xdf, 0xe8, 0xf0, 200), 1.5));
    painter.setBrush(QColor(0x9c, 0xc4, 0xdf, 120));
    painter.drawPath(screen);
}

void numberPlate(QPainter& painter) {
    painter.save();
    painter.translate(424, 336);
    painter.rotate(7);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(24);
    font.setBold(true);
    font.setItalic(true);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    painter.setFont(font);
    painter.setPen(deepRed);
    painter.drawText(QPointF(1.5, 1.5), QStringLiteral("KVO"));
    painter.setPen(QColor(0xf5, 0xf5, 0xf2));
    painter.drawText(QPointF(0, 0), QStringLiteral("KVO"));
    painter.restore();
}

} // namespace

void drawDragster(QPainter& painter) {
    shadow(painter, 70, 935);
    wheel(painter, rearAxle + QPointF(26, -3), rearRadius - 3, 40, 0); // the far side
    tyreSmoke(painter, 130, 110);
    rearWing(painter);
    frameTubes(painter);
    helmet(painter, {354, 262}, 25, QColor(0xf0, 0xf2, 0xf5));
    engine(painter);
    wheel(painter, frontAxle + QPointF(9, -1), frontRadius, 23, 12);
    body(painter);
    numberPlate(painter);
    fillShaded(painter, outline({{880, 398}, {944, 404}, {946, 409}, {880, 407}}, 2), red, deepRed);
    wheel(painter, frontAxle, frontRadius, 23, 14);
    wheel(painter, rearAxle, rearRadius, 43, 5);
    headers(painter);
    tyreSmoke(painter, 84, 64);
}

} // namespace kvo::pictures
