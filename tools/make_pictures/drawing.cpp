#include "drawing.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kvo::pictures {
namespace {

QPointF towards(QPointF from, QPointF to, qreal distance) {
    const QPointF step = to - from;
    const qreal length = std::hypot(step.x(), step.y());
    if (length == 0) return from;
    return from + step * std::min(distance / length, 0.5);
}

void drawSky(QPainter& painter, const QRectF& frame) {
    QLinearGradient sky(0, 0, 0, 300);
    sky.setColorAt(0, QColor(0x1b, 0x28, 0x3b));
    sky.setColorAt(0.55, QColor(0x4b, 0x5d, 0x78));
    sky.setColorAt(1, QColor(0xe0, 0x9a, 0x6a));
    painter.fillRect(frame, sky);
    painter.setPen(Qt::NoPen);
    QPainterPath hills(QPointF(0, 290));
    hills.cubicTo(120, 240, 210, 262, 330, 250);
    hills.cubicTo(470, 236, 560, 268, 680, 256);
    hills.cubicTo(800, 244, 880, 262, 960, 246);
    hills.lineTo(960, 310);
    hills.lineTo(0, 310);
    painter.setBrush(QColor(0x2c, 0x33, 0x42));
    painter.drawPath(hills);
}

void drawRoad(QPainter& painter, const QRectF& frame) {
    QLinearGradient wall(0, 296, 0, 340);
    wall.setColorAt(0, QColor(0xb9, 0xbd, 0xc2));
    wall.setColorAt(1, QColor(0x7d, 0x82, 0x89));
    painter.fillRect(QRectF(0, 298, frame.width(), 44), wall);
    QLinearGradient road(0, 340, 0, 480);
    road.setColorAt(0, QColor(0x56, 0x59, 0x5e));
    road.setColorAt(0.5, QColor(0x45, 0x48, 0x4d));
    road.setColorAt(1, QColor(0x2f, 0x31, 0x36));
    painter.fillRect(QRectF(0, 340, frame.width(), 140), road);
    painter.fillRect(QRectF(0, 348, frame.width(), 3), QColor(0xe8, 0xe4, 0xd8, 150));
    painter.fillRect(QRectF(0, 452, frame.width(), 7), QColor(0xe8, 0xc4, 0x4a, 210));
    // The groove of rubber that the runs before have laid.
    QLinearGradient rubber(0, 396, 0, 436);
    rubber.setColorAt(0, QColor(0, 0, 0, 0));
    rubber.setColorAt(0.5, QColor(0, 0, 0, 120));
    rubber.setColorAt(1, QColor(0, 0, 0, 0));
    painter.fillRect(QRectF(0, 396, frame.width(), 40), rubber);
}

// The starting lights, far behind the wall.
void drawLights(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x20, 0x22, 0x26));
    painter.drawRoundedRect(QRectF(842, 168, 26, 134), 5, 5);
    const QColor amber(0xff, 0xb4, 0x30);
    const QColor off(0x4a, 0x44, 0x38);
    const std::initializer_list<QColor> lamps{off, off, off, QColor(0x4c, 0xe0, 0x6a)};
    qreal y = 186;
    for (const QColor& lamp : lamps) {
        if (lamp != off) {
            QRadialGradient glow(QPointF(855, y), 34);
            glow.setColorAt(0, QColor(lamp.red(), lamp.green(), lamp.blue(), 150));
            glow.setColorAt(1, QColor(lamp.red(), lamp.green(), lamp.blue(), 0));
            painter.setBrush(glow);
            painter.drawEllipse(QPointF(855, y), 34, 34);
        }
        painter.setBrush(lamp);
        painter.drawEllipse(QPointF(855, y), 8, 8);
        y += 26;
    }
    painter.setBrush(amber);
    for (const qreal x : {848.0, 862.0}) painter.drawEllipse(QPointF(x, 287), 3.2, 3.2);
}

} // namespace

void drawStrip(QPainter& painter, const QRectF& frame) {
    QPainterPath card;
    card.addRoundedRect(frame, 14, 14);
    painter.setClipPath(card);
    drawSky(painter, frame);
    drawRoad(painter, frame);
    drawLights(painter);
}

QPainterPath outline(std::initializer_list<QPointF> points, qreal radius) {
    const QVector<QPointF> corner(points);
    const qsizetype count = corner.size();
    QPainterPath path;
    for (qsizetype i = 0; i < count; ++i) {
        const QPointF before = corner[(i + count - 1) % count];
        const QPointF here = corner[i];
        const QPointF after = corner[(i + 1) % count];
        const QPointF in = towards(here, before, radius);
        const QPointF out = towards(here, after, radius);
        if (i == 0)
            path.moveTo(in);
        else
            path.lineTo(in);
        path.quadTo(here, out);
    }
    path.closeSubpath();
    return path;
}

void fillShaded(QPainter& painter, const QPainterPath& path, QColor light, QColor dark) {
    const QRectF box = path.boundingRect();
    QLinearGradient shade(box.topLeft(), box.bottomLeft());
    shade.setColorAt(0, light);
    shade.setColorAt(1, dark);
    painter.setPen(QPen(dark.darker(170), 1.2));
    painter.setBrush(shade);
    painter.drawPath(path);
}

void tube(QPainter& painter, std::initializer_list<QPointF> points, qreal width, QColor colour) {
    const QVector<QPointF> corners(points);
    painter.setBrush(Qt::NoBrush);
    for (const auto& [pixels, shade] : {std::pair(width, colour.darker(160)),
             std::pair(width * 0.62, colour), std::pair(width * 0.22, colour.lighter(150))}) {
        painter.setPen(QPen(shade, pixels, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(corners.constData(), static_cast<int>(corners.size()));
    }
}

void wheel(QPainter& painter, QPointF centre, qreal radius, qreal rimRadius, int spokes) {
    QRadialGradient rubber(centre, radius);
    rubber.setColorAt(0, QColor(0x30, 0x31, 0x34));
    rubber.setColorAt(0.86, QColor(0x1b, 0x1c, 0x1e));
    rubber.setColorAt(0.94, QColor(0x3c, 0x3d, 0x41));
    rubber.setColorAt(1, QColor(0x17, 0x17, 0x19));
    painter.setPen(QPen(QColor(0x0c, 0x0c, 0x0d), 1.2));
    painter.setBrush(rubber);
    painter.drawEllipse(centre, radius, radius);
    QLinearGradient metal(centre - QPointF(0, rimRadius), centre + QPointF(0, rimRadius));
    metal.setColorAt(0, QColor(0xf4, 0xf5, 0xf7));
    metal.setColorAt(0.5, QColor(0x9a, 0x9f, 0xa7));
    metal.setColorAt(1, QColor(0xd4, 0xd7, 0xdc));
    painter.setPen(QPen(QColor(0x50, 0x54, 0x5b), 1.2));
    painter.setBrush(metal);
    painter.drawEllipse(centre, rimRadius, rimRadius);
    painter.setBrush(QColor(0x2a, 0x2c, 0x30));
    painter.drawEllipse(centre, rimRadius * 0.82, rimRadius * 0.82);
    painter.setPen(QPen(QColor(0xc9, 0xcd, 0xd3), rimRadius * 0.13, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < spokes; ++i) {
        const qreal angle = 2 * std::numbers::pi * i / spokes + 0.3;
        painter.drawLine(
            centre, centre + QPointF(std::cos(angle), std::sin(angle)) * rimRadius * 0.8);
    }
    painter.setPen(QPen(QColor(0x50, 0x54, 0x5b), 1));
    painter.setBrush(metal);
    painter.drawEllipse(centre, rimRadius * 0.24, rimRadius * 0.24);
}

void helmet(QPainter& painter, QPointF centre, qreal radius, QColor colour) {
    QRadialGradient shell(centre - QPointF(radius * 0.3, radius * 0.45), radius * 1.6);
    shell.setColorAt(0, colour.lighter(165));
    shell.setColorAt(0.5, colour);
    shell.setColorAt(1, colour.darker(190));
    painter.setPen(QPen(colour.darker(230), 1.2));
    painter.setBrush(shell);
    QPainterPath head;
    head.addEllipse(centre, radius, radius * 0.98);
    QPainterPath chin;
    chin.addRoundedRect(
        QRectF(centre.x() - radius * 0.1, centre.y() + radius * 0.2, radius * 1.22, radius * 0.75),
        radius * 0.25, radius * 0.25);
    painter.drawPath(head.united(chin));
    QPainterPath visor(centre + QPointF(radius * 0.1, -radius * 0.32));
    visor.lineTo(centre + QPointF(radius * 0.98, -radius * 0.3));
    visor.lineTo(centre + QPointF(radius * 1.08, radius * 0.22));
    visor.lineTo(centre + QPointF(radius * 0.2, radius * 0.22));
    visor.closeSubpath();
    QLinearGradient glass(visor.boundingRect().topLeft(), visor.boundingRect().bottomRight());
    glass.setColorAt(0, QColor(0x7f, 0xb6, 0xd8));
    glass.setColorAt(0.4, QColor(0x22, 0x2d, 0x3a));
    glass.setColorAt(1, QColor(0x10, 0x14, 0x1a));
    painter.setBrush(glass);
    painter.drawPath(visor);
}

void tyreSmoke(QPainter& painter, qreal x, qreal size) {
    struct Puff {
        qreal dx, dy, radius;
        int alpha;
    };
    const std::initializer_list<Puff> puffs{{-0.1, -0.12, 0.34, 120}, {-0.45, -0.2, 0.42, 110},
        {-0.85, -0.32, 0.5, 95}, {-1.3, -0.42, 0.58, 75}, {-1.8, -0.5, 0.62, 50},
        {-0.6, -0.55, 0.36, 60}, {-1.1, -0.78, 0.42, 45}, {-2.2, -0.4, 0.5, 40}};
    painter.setPen(Qt::NoPen);
    for (const Puff& puff : puffs) {
        const QPointF centre(x + puff.dx * size, roadY + puff.dy * size);
        QRadialGradient cloud(centre, puff.radius * size);
        cloud.setColorAt(0, QColor(235, 235, 238, puff.alpha));
        cloud.setColorAt(0.6, QColor(225, 226, 230, puff.alpha / 2));
        cloud.setColorAt(1, QColor(220, 222, 226, 0));
        painter.setBrush(cloud);
        painter.drawEllipse(centre, puff.radius * size, puff.radius * size);
    }
}

void shadow(QPainter& painter, qreal left, qreal right) {
    painter.save();
    const qreal half = (right - left) / 2;
    painter.translate(left + half, roadY + 4);
    painter.scale(half, 13);
    QRadialGradient dark(QPointF(0, 0), 1);
    dark.setColorAt(0, QColor(0, 0, 0, 170));
    dark.setColorAt(0.75, QColor(0, 0, 0, 110));
    dark.setColorAt(1, QColor(0, 0, 0, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(dark);
    painter.drawEllipse(QPointF(0, 0), 1, 1);
    painter.restore();
}

} // namespace kvo::pictures
