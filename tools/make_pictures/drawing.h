#pragma once
// The parts of the pictures, in a frame of 960 by 480 with the road at y = 420.
#include <QColor>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <initializer_list>

class QPainter;

namespace kvo::pictures {

inline constexpr qreal roadY = 420;

void drawStrip(QPainter& painter, const QRectF& frame); // sky, wall, road, lights
void drawDragster(QPainter& painter);
void drawDragBike(QPainter& painter);

// A smooth closed outline through the points (each corner rounded by `radius` at most).
QPainterPath outline(std::initializer_list<QPointF> points, qreal radius = 0);
// A body part: filled from `light` above to `dark` below, with a thin dark edge.
void fillShaded(QPainter& painter, const QPainterPath& path, QColor light, QColor dark);
// A bar or pipe between points, with a lighter core.
void tube(QPainter& painter, std::initializer_list<QPointF> points, qreal width, QColor colour);
void wheel(QPainter& painter, QPointF centre, qreal radius, qreal rimRadius, int spokes);
void helmet(QPainter& painter, QPointF centre, qreal radius, QColor colour);
// What hot rubber leaves behind a wheel that stands on the road at x.
void tyreSmoke(QPainter& painter, qreal x, qreal size);
void shadow(QPainter& painter, qreal left, qreal right);

} // namespace kvo::pictures
