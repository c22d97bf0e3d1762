// A drag bike with its wheelie bar, front wheel to the right.
#include "drawing.h"

#include <QPainter>

namespace kvo::pictures {
namespace {

const QColor blue(0x2f, 0x6f, 0xd6);
const QColor deepBlue(0x12, 0x2c, 0x6b);
const QColor steel(0x9d, 0xa3, 0xab);
const QColor darkSteel(0x4a, 0x4e, 0x55);
const QColor leather(0x2a, 0x2c, 0x33);
const QColor leatherDark(0x12, 0x13, 0x17);

constexpr QPointF rearAxle(300, 336);
constexpr qreal rearRadius = 84;
constexpr QPointF frontAxle(752, 345);
constexpr qreal frontRadius = 75;

void wheelieBar(QPainter& painter) {
    tube(painter, {{300, 332}, {76, 398}}, 7, darkSteel);
    tube(painter, {{352, 372}, {76, 402}}, 7, darkSteel);
    tube(painter, {{226, 354}, {232, 385}}, 5, darkSteel);
    tube(painter, {{156, 375}, {160, 392}}, 5, darkSteel);
    wheel(painter, {76, 402}, 17, 9, 0);
}

void frame(QPainter& painter) {
    tube(painter, {{300, 336}, {470, 352}, {566, 352}}, 11, darkSteel);
    tube(painter, {{300, 330}, {400, 318}, {470, 352}}, 8, darkSteel);
    tube(painter, {{566, 352}, {650, 236}, {430, 262}, {400, 330}}, 9, darkSteel);
    // The fork, raked out.
    tube(painter, {{654, 214}, {752, 345}}, 13, steel);
    tube(painter, {{640, 218}, {668, 206}}, 9, darkSteel);
}

void engine(QPainter& painter) {
    fillShaded(painter,
        outline({{448, 312}, {586, 306}, {596, 362}, {560, 386}, {456, 382}, {438, 352}}, 12),
        QColor(0xa6, 0xac, 0xb5), QColor(0x4b, 0x50, 0x58));
    fillShaded(painter, outline({{490, 232}, {578, 226}, {588, 310}, {486, 316}}, 6),
        QColor(0x8f, 0x96, 0xa0), QColor(0x42, 0x46, 0x4d));
    painter.setPen(QPen(QColor(0x24, 0x26, 0x2b), 2.4));
    for (int i = 0; i < 8; ++i)
        painter.drawLine(QPointF(487, 250 + 8.2 * i), QPointF(585, 245 + 8.2 * i));
    fillShaded(painter, outline({{484, 222}, {580, 215}, {584, 236}, {486, 242}}, 6),
        QColor(0xe6, 0xe8, 0xec), QColor(0x8b, 0x92, 0x9c));
    painter.setPen(QPen(QColor(0x3a, 0x3e, 0x45), 1.5));
    painter.setBrush(QColor(0x74, 0x7a, 0x84));
    painter.drawEllipse(QPointF(482, 350), 30, 30); // clutch cover
    painter.setBrush(QColor(0xc4, 0xc9, 0xd0));
    painter.drawEllipse(QPointF(482, 350), 19, 19);
    painter.setBrush(QColor(0x5a, 0x5f, 0x68));
    painter.drawEllipse(QPointF(482, 350), 6, 6);
    for (int i = 3; i >= 0; --i) {
        const qreal y = 7.0 * i;
        tube(painter,
            {{580, 262 + y}, {606, 276 + y}, {604, 330 + y}, {560, 388 + y / 3},
                {430, 398 + y / 4}},
            9, QColor(0xc2, 0xae, 0x92));
    }
    tube(painter, {{446, 398}, {352, 404}}, 17, QColor(0xa9, 0xae, 0xb6));
}

void chain(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x1e, 0x1f, 0x22), 5, Qt::DashLine));
    painter.drawLine(QPointF(302, 308), QPointF(452, 338));
    painter.drawLine(QPointF(302, 364), QPointF(452, 366));
    painter.setPen(QPen(QColor(0xc9, 0xcd, 0xd3), 3));
    painter.drawEllipse(rearAxle, 28, 28);
}

// Seat with its stop, tank and fairing.
void body(QPainter& painter) {
    QPainterPath seat(QPointF(206, 226));
    seat.cubicTo(214, 210, 240, 206, 262, 216);
    seat.cubicTo(296, 236, 350, 250, 430, 246);
    seat.lineTo(440, 282);
    seat.cubicTo(360, 296, 280, 290, 224, 250);
    seat.closeSubpath();
    fillShaded(painter, seat, blue.lighter(130), deepBlue);
    QPainterPath tank(QPointF(424, 248));
    tank.cubicTo(450, 204, 560, 186, 640, 202);
    tank.cubicTo(660, 208, 668, 220, 656, 236);
    tank.cubicTo(590, 252, 500, 262, 430, 282);
    tank.closeSubpath();
    fillShaded(painter, tank, blue.lighter(135), deepBlue);
    QPainterPath nose(QPointF(626, 192));
    nose.cubicTo(664, 158, 712, 166, 744, 214);
    nose.cubicTo(760, 240, 744, 262, 716, 264);
    nose.cubicTo(690, 268, 660, 262, 640, 244);
    nose.closeSubpath();
    fillShaded(painter, nose, blue.lighter(130), deepBlue);
    QPainterPath screen(QPointF(630, 188));
    screen.cubicTo(650, 152, 684, 150, 716, 182);
    screen.cubicTo(690, 178, 660, 180, 630, 188);
    painter.setPen(QPen(QColor(0xe6, 0xee, 0xf6, 200), 1.5));
    painter.setBrush(QColor(0x9c, 0xc4, 0xdf, 130));
    painter.drawPath(screen);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xf5, 0xf5, 0xf2));
    QPainterPath stripe(QPointF(436, 262));
    stripe.cubicTo(500, 236, 590, 222, 752, 236);
    stripe.lineTo(750, 246);
    stripe.cubicTo(600, 236, 510, 250, 434, 274);
    stripe.closeSubpath();
    painter.drawPath(stripe);
}

void fender(QPainter& painter) {
    QPainterPath front(QPointF(684, 306));
    front.cubicTo(700, 262, 780, 252, 816, 292);
    front.lineTo(806, 300);
    front.cubicTo(776, 270, 716, 276, 696, 312);
    front.closeSubpath();
    fillShaded(painter, front, blue.lighter(125), deepBlue);
}

// Lying on the tank, feet back on the pegs.
void rider(QPainter& painter) {
    QPainterPath leg(QPointF(286, 196)); // hip, knee at the tank, foot at the peg
    leg.cubicTo(330, 204, 400, 216, 470, 240);
    leg.cubicTo(488, 250, 484, 268, 466, 276);
    leg.cubicTo(440, 290, 408, 312, 388, 342);
    leg.lineTo(362, 334);
    leg.cubicTo(374, 300, 396, 274, 416, 260);
    leg.cubicTo(366, 252, 310, 246, 276, 232);
    leg.closeSubpath();
    fillShaded(painter, leg, leather.lighter(150), leatherDark);
    fillShaded(painter, outline({{356, 330}, {392, 338}, {422, 356}, {418, 366}, {352, 358}}, 6),
        QColor(0x55, 0x59, 0x62), leatherDark);
    QPainterPath torso(QPointF(262, 212));
    torso.cubicTo(270, 176, 330, 148, 400, 136);
    torso.cubicTo(468, 124, 530, 122, 566, 138);
    torso.cubicTo(586, 150, 584, 176, 564, 184);
    torso.cubicTo(500, 206, 400, 224, 320, 234);
    torso.cubicTo(284, 238, 264, 230, 262, 212);
    torso.closeSubpath();
    fillShaded(painter, torso, leather.lighter(165), leatherDark);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blue);
    QPainterPath flash(QPointF(292, 204));
    flash.cubicTo(370, 176, 460, 154, 560, 154);
    flash.lineTo(560, 166);
    flash.cubicTo(460, 168, 370, 192, 298, 220);
    flash.closeSubpath();
    painter.drawPath(flash);
    QPainterPath arm(QPointF(530, 146));
    arm.cubicTo(552, 138, 570, 148, 574, 164);
    arm.cubicTo(580, 186, 600, 200, 640, 204);
    arm.lineTo(644, 224);
    arm.cubicTo(594, 228, 548, 208, 534, 176);
    arm.closeSubpath();
    fillShaded(painter, arm, leather.lighter(180), leatherDark);
    fillShaded(painter, outline({{632, 200}, {662, 202}, {664, 222}, {634, 226}}, 8),
        QColor(0xd8, 0xda, 0xdf), QColor(0x70, 0x75, 0x7e)); // glove
    helmet(painter, {602, 132}, 33, blue);
}

} // namespace

void drawDragBike(QPainter& painter) {
    shadow(painter, 60, 830);
    tyreSmoke(painter, 262, 104);
    wheelieBar(painter);
    wheel(painter, rearAxle, rearRadius, 44, 6);
    wheel(painter, frontAxle, frontRadius, 52, 9);
    frame(painter);
    chain(painter);
    engine(painter);
    fender(painter);
    body(painter);
    rider(painter);
    tyreSmoke(painter, 226, 62);
}

} // namespace kvo::pictures
