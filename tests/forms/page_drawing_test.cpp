// The lines of a page on an image: in pieces, and yet as if drawn in one.
#include "platform/qt/page_drawing.h"
#include "tests/forms/support/form_test_main.h"

#include <QImage>
#include <QPainter>
#include <QPen>

using namespace kvo::platform_qt;

class PageDrawingTest : public QObject {
    Q_OBJECT

    static constexpr QSize size{900, 600};
    static constexpr qreal width = 1.5;

    // A curve of the field, or one that jumps from edge to edge as an open input does.
    static QPolygonF curve(int points, bool noise) {
        QPolygonF line;
        for (int i = 0; i < points; ++i) {
            const qreal part = qreal((i * 7919) % 1000) / 1000;
            const qreal y = noise ? part * size.height() : 300 + 200 * part * i / points;
            line << QPointF(qRound(qreal(i) * size.width() / points), qRound(y));
        }
        return line;
    }
    static QImage painted(const std::function<void(QPainter&)>& draw) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        draw(painter);
        return image;
    }
    static QImage ofPage(const QPolygonF& points, int drawStyle) {
        const PageDrawing page{PageLine{points, Qt::red, width, drawStyle}};
        return painted([&page](QPainter& painter) { paintPage(painter, page); });
    }
    static int ink(const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) != 0xFFFFFFFFU;
        return count;
    }

private slots:
    void aSolidLineLooksAsInOne() {
        const QPolygonF points = curve(200, false);
        const QImage whole = painted([&points](QPainter& painter) {
            painter.setPen(QPen(Qt::red, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPolyline(points);
        });
        QVERIFY(ink(whole) > 1000);
        QCOMPARE(ofPage(points, 0), whole);
    }

    // Straight on over the ends of the pieces, dash and gap stay as long as they are.
    void aDashGoesOnFromPieceToPiece() {
        QPolygonF points;
        for (int x = 0; x <= 800; x += 5) points << QPointF(x, 100);
        const QPolygonF ends{points.front(), points.back()};
        QCOMPARE(ofPage(points, 1), ofPage(ends, 1));
        QCOMPARE(ofPage(points, 3), ofPage(ends, 3));
        QVERIFY(ink(ofPage(ends, 1)) < ink(ofPage(ends, 0)));
    }

    // In one it would take minutes, as its outline crosses itself everywhere.
    void noiseIsDrawn() {
        QVERIFY(ink(ofPage(curve(10000, true), 0)) > size.width() * size.height() / 2);
    }
};

KVO_FORM_TEST_MAIN(PageDrawingTest)
#include "page_drawing_test.moc"
