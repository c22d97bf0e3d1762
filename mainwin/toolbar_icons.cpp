#include "mainwin/toolbar_icons.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygonF>

namespace kvo::forms {
namespace {

void polyline(QPainter& painter, std::initializer_list<QPointF> points) {
    painter.drawPolyline(QPolygonF(QList<QPointF>(points)));
}

void polygon(QPainter& painter, std::initializer_list<QPointF> points) {
    painter.drawPolygon(QPolygonF(QList<QPointF>(points)));
}

} // namespace

// An open folder with a curve above it.
void drawOpenIcon(QPainter& painter) {
    polyline(painter, {{3, 20}, {3, 5}, {9, 5}, {11, 8}, {19, 8}, {19, 11}});
    polygon(painter, {{3, 20}, {6.5, 11}, {22, 11}, {18.5, 20}});
}

// Points of several runs over time.
void drawTimeGraphIcon(QPainter& painter) {
    polyline(painter, {{3, 3}, {3, 21}, {21, 21}});
    polyline(painter, {{6, 16}, {10, 12}, {14, 14}, {20, 6}});
    painter.setBrush(painter.pen().color());
    for (const QPointF point : {QPointF(6, 16), QPointF(10, 12), QPointF(14, 14), QPointF(20, 6)})
        painter.drawEllipse(point, 1.1, 1.1);
}

// From the logger down into the tray.
void drawDownloadIcon(QPainter& painter) {
    polyline(painter, {{12, 3}, {12, 15}});
    polyline(painter, {{7, 10.5}, {12, 15.5}, {17, 10.5}});
    polyline(painter, {{3, 15}, {3, 21}, {21, 21}, {21, 15}});
}

// A gauge.
void drawPitRunIcon(QPainter& painter) {
    QPainterPath dial;
    dial.arcMoveTo(QRectF(3, 4, 18, 18), -30);
    dial.arcTo(QRectF(3, 4, 18, 18), -30, 240);
    painter.drawPath(dial);
    polyline(painter, {{12, 13}, {16.5, 8.5}});
    painter.setBrush(painter.pen().color());
    painter.drawEllipse(QPointF(12, 13), 1.4, 1.4);
    polyline(painter, {{7, 20}, {17, 20}});
}

// A sheet with lines and a pencil.
void drawInfoIcon(QPainter& painter) {
    polyline(painter, {{15, 21}, {4, 21}, {4, 3}, {18, 3}, {18, 9}});
    polyline(painter, {{7, 7}, {15, 7}});
    polyline(painter, {{7, 11}, {13, 11}});
    polyline(painter, {{7, 15}, {10, 15}});
    polygon(painter, {{12, 19}, {12.6, 16.4}, {19.5, 9.8}, {21.5, 11.8}, {14.6, 18.4}});
}

void drawCopyIcon(QPainter& painter) {
    painter.drawRoundedRect(QRectF(8, 7, 12, 14), 1.5, 1.5);
    polyline(painter, {{5, 17}, {4, 17}, {4, 3}, {16, 3}, {16, 4}});
}

void drawDeleteIcon(QPainter& painter) {
    polyline(painter, {{4, 6}, {20, 6}});
    polyline(painter, {{9, 6}, {9, 3}, {15, 3}, {15, 6}});
    polyline(painter, {{6, 6}, {7, 21}, {17, 21}, {18, 6}});
    polyline(painter, {{10, 10}, {10.4, 17}});
    polyline(painter, {{14, 10}, {13.6, 17}});
}

void drawHelpIcon(QPainter& painter) {
    painter.drawEllipse(QPointF(12, 12), 9.5, 9.5);
    QPainterPath mark(QPointF(9.2, 9.4));
    mark.cubicTo(9.2, 5.6, 15, 5.8, 14.8, 9.4);
    mark.cubicTo(14.7, 11.6, 12, 11.6, 12, 14.2);
    painter.drawPath(mark);
    painter.setBrush(painter.pen().color());
    painter.drawEllipse(QPointF(12, 17.2), 0.6, 0.6);
}

// Two curves of a run on a dark tile.
QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap tile(size, size);
        tile.fill(Qt::transparent);
        QPainter painter(&tile);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 24.0, size / 24.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0x1b, 0x28, 0x3b));
        painter.drawRoundedRect(QRectF(0.5, 0.5, 23, 23), 5, 5);
        painter.setBrush(Qt::NoBrush);
        const auto curve = [&painter](const QColor& colour) {
            painter.setPen(QPen(colour, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        };
        curve(QColor(0x5c, 0xc8, 0xf0));
        polyline(painter, {{3.5, 19}, {9, 14}, {14, 11}, {20.5, 9}});
        curve(QColor(0xf0, 0x4a, 0x3c));
        polyline(painter, {{3.5, 15}, {8.5, 5}, {10, 13}, {14, 5.5}, {15.5, 12}, {20.5, 5}});
        painter.end();
        icon.addPixmap(tile);
    }
    return icon;
}

} // namespace kvo::forms
