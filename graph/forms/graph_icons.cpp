#include "graph/forms/graph_icons.h"

#include <QPainter>
#include <QPolygonF>

#include <initializer_list>

namespace kvo::forms {
namespace {

void polyline(QPainter& painter, std::initializer_list<QPointF> points) {
    painter.drawPolyline(QPolygonF(QList<QPointF>(points)));
}

void lens(QPainter& painter) {
    painter.drawEllipse(QPointF(10, 10), 6.5, 6.5);
    polyline(painter, {{15, 15}, {21, 21}});
}

} // namespace

// An open folder.
void drawLoadIcon(QPainter& painter) {
    polyline(painter, {{3, 20}, {3, 5}, {9, 5}, {11, 8}, {19, 8}, {19, 11}});
    polyline(painter, {{3, 20}, {6.5, 11}, {22, 11}, {18.5, 20}, {3, 20}});
}

// Two curves, one over the other.
void drawOverlayIcon(QPainter& painter) {
    polyline(painter, {{3, 3}, {3, 21}, {21, 21}});
    polyline(painter, {{5, 18}, {9, 10}, {13, 13}, {20, 5}});
    polyline(painter, {{7, 19}, {11, 14}, {15, 17}, {21, 10}});
}

// Columns of different height.
void drawStatisticsIcon(QPainter& painter) {
    polyline(painter, {{3, 21}, {21, 21}});
    painter.drawRect(QRectF(5, 13, 3.5, 8));
    painter.drawRect(QRectF(10.5, 5, 3.5, 16));
    painter.drawRect(QRectF(16, 9, 3.5, 12));
}

// A sheet with lines.
void drawSheetIcon(QPainter& painter) {
    painter.drawRect(QRectF(5, 3, 14, 18));
    for (const qreal y : {7.5, 11.5, 15.5}) polyline(painter, {{8, y}, {16, y}});
}

void drawPrinterIcon(QPainter& painter) {
    polyline(painter, {{7, 9}, {7, 3}, {17, 3}, {17, 9}});
    polyline(painter, {{7, 17}, {3, 17}, {3, 9}, {21, 9}, {21, 17}, {17, 17}});
    painter.drawRect(QRectF(7, 14, 10, 7));
}

// Points of several runs over time.
void drawTimesIcon(QPainter& painter) {
    polyline(painter, {{3, 3}, {3, 21}, {21, 21}});
    polyline(painter, {{6, 16}, {10, 12}, {14, 14}, {20, 6}});
    painter.setBrush(painter.pen().color());
    for (const QPointF point : {QPointF(6, 16), QPointF(10, 12), QPointF(14, 14), QPointF(20, 6)})
        painter.drawEllipse(point, 1.1, 1.1);
}

void drawZoomOutIcon(QPainter& painter) {
    lens(painter);
    polyline(painter, {{7, 10}, {13, 10}});
}

// A lens that shows the size the picture had.
void drawCancelZoomIcon(QPainter& painter) {
    lens(painter);
    polyline(painter, {{7.8, 7.8}, {12.2, 12.2}});
    polyline(painter, {{7.8, 12.2}, {12.2, 7.8}});
}

void drawZoomInIcon(QPainter& painter) {
    lens(painter);
    polyline(painter, {{7, 10}, {13, 10}});
    polyline(painter, {{10, 7}, {10, 13}});
}

void drawPreviousIcon(QPainter& painter) {
    polyline(painter, {{12, 5}, {5, 12}, {12, 19}});
    polyline(painter, {{19, 5}, {12, 12}, {19, 19}});
}

void drawNextIcon(QPainter& painter) {
    polyline(painter, {{5, 5}, {12, 12}, {5, 19}});
    polyline(painter, {{12, 5}, {19, 12}, {12, 19}});
}

} // namespace kvo::forms
