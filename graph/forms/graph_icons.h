#pragma once
// The pictures on the graph's toolbar, drawn on a grid of 24 by 24 in the pen that is set.
class QPainter;

namespace kvo::forms {

void drawLoadIcon(QPainter& painter);
void drawOverlayIcon(QPainter& painter);
void drawStatisticsIcon(QPainter& painter);
void drawSheetIcon(QPainter& painter);
void drawPrinterIcon(QPainter& painter);
void drawTimesIcon(QPainter& painter);
void drawZoomOutIcon(QPainter& painter);
void drawCancelZoomIcon(QPainter& painter);
void drawZoomInIcon(QPainter& painter);
void drawPreviousIcon(QPainter& painter);
void drawNextIcon(QPainter& painter);

} // namespace kvo::forms
