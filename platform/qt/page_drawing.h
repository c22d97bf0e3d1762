#pragma once
// What is on a page of paper, in the pixels of the device that prints it: kept until the page is
// whole, then painted in one go.
#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>

#include <variant>
#include <vector>

class QPainter;

namespace kvo::platform_qt {

struct PageLine {
    QPolygonF points; // two or more
    QColor colour;
    qreal widthPx = 1;
    int drawStyle = 0; // 0 to 4, as a surface has it
};
struct PageBox {
    QRectF place;
    QColor colour;
};
struct PageText {
    QPointF baseLine; // at the left end of the text
    QString text;
    QFont font;
    QColor colour;
};
struct PageImage {
    QRectF place;
    QImage image;
};
// From here on only what lies inside is printed; all of the paper where it is empty.
struct PageClip {
    QRectF place;
};

using PageOperation = std::variant<PageLine, PageBox, PageText, PageImage, PageClip>;
using PageDrawing = std::vector<PageOperation>;

// Dashes and gaps of a draw style in widths of the line, as on the screen; none for a solid line.
QList<qreal> dashesOf(int drawStyle);

// Paints the operations in their order, without a scale factor: one unit is a pixel.
void paintPage(QPainter& painter, const PageDrawing& page);

// The font of printed text, narrowed until a digit is so wide, in parts of the font's height; 0 for
// letters as they are.
QFont pageFont(int fontPx, float digitWidth);

} // namespace kvo::platform_qt
