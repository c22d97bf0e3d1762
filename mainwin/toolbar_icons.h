#pragma once
// The pictures on the main window's toolbar, drawn on a grid of 24 by 24 in the pen that is set.
class QIcon;
class QPainter;

namespace kvo::forms {

void drawOpenIcon(QPainter& painter);
void drawTimeGraphIcon(QPainter& painter);
void drawDownloadIcon(QPainter& painter);
void drawPitRunIcon(QPainter& painter);
void drawInfoIcon(QPainter& painter);
void drawCopyIcon(QPainter& painter);
void drawDeleteIcon(QPainter& painter);
void drawHelpIcon(QPainter& painter);

// The program's own icon, for windows and task bars.
QIcon programIcon();

} // namespace kvo::forms
