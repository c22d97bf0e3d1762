// The curve of a mapped input as it is painted.
#include "setup/forms/analog_curve_view.h"
#include "tests/forms/support/form_test_main.h"

#include <QImage>
#include <QPalette>
#include <QPixmap>

#include <limits>

using namespace kvo;
using namespace kvo::setup;
using kvo::forms::AnalogCurveView;

class AnalogCurveViewTest : public QObject {
    Q_OBJECT

    static AnalogTable growing() {
        AnalogTable table{};
        for (std::size_t count = 0; count < 256; ++count) table[count] = static_cast<double>(count);
        return table;
    }
    // Colours that stay apart whatever the desktop has.
    static void setPalette(AnalogCurveView& view, QColor base) {
        QPalette palette;
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, base == Qt::white ? Qt::black : Qt::white);
        palette.setColor(QPalette::Highlight, QColor(0, 0, 255));
        view.setPalette(palette);
    }
    static QImage picture(AnalogCurveView& view, QSize size = {400, 240}) {
        view.resize(size);
        return view.grab().toImage();
    }
    static QColor at(AnalogCurveView& view, double count, double reading) {
        return picture(view).pixelColor(view.place(count, reading).toPoint());
    }
    static int reds(const QImage& image) {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                if (colour.red() > 150 && colour.green() < 130 && colour.blue() < 130) ++found;
            }
        return found;
    }

private slots:
    void theCurveLiesOnItsReadings() {
        AnalogCurveView view;
        setPalette(view, Qt::white);
        view.setCurve(analogCurve(growing(), 1));
        picture(view);
        QVERIFY(view.place(0, 0).x() < view.place(255, 0).x());
        QVERIFY(view.place(0, 0).y() > view.place(0, 255).y());
        for (const int count : {10, 38, 65, 90, 115, 140, 165, 190, 240})
            QVERIFY2(at(view, count, count).blue() > at(view, count, count).red() + 60,
                qPrintable(QString::number(count)));
        QCOMPARE(at(view, 65, 140), QColor(Qt::white));
    }

    void whatADownloadCannotKeepIsRed() {
        AnalogCurveView view;
        for (const QColor base : {QColor(Qt::white), QColor(30, 30, 30)}) {
            setPalette(view, base);
            view.setCurve(analogCurve(growing(), 1));
            QCOMPARE(reds(picture(view)), 0);
            view.setCurve(analogCurve(growing(), 0.5F));
            QVERIFY(reds(picture(view)) > 60);
            const QColor kept = at(view, 90, 90);
            QVERIFY(kept.blue() > kept.red() + 60);
        }
    }

    void thePointThatTheUserIsAtIsLarger() {
        AnalogCurveView view;
        setPalette(view, Qt::white);
        view.setCurve(analogCurve(growing(), 1));
        const QImage plain = picture(view);
        for (int point = 1; point <= tablePoints; ++point) {
            view.mark(point);
            const QImage marked = picture(view);
            const QPoint place = view.place(tableEntry(point), tableEntry(point)).toPoint();
            const QPoint beside = place + QPoint(-3, -3);
            QCOMPARE(marked.pixelColor(beside), QColor(0, 0, 255));
            QVERIFY(plain.pixelColor(beside) != QColor(0, 0, 255));
            const int other = point % tablePoints + 1;
            const QPoint elsewhere = view.place(tableEntry(other), tableEntry(other)).toPoint();
            QCOMPARE(marked.pixelColor(elsewhere + QPoint(-3, -3)),
                plain.pixelColor(elsewhere + QPoint(-3, -3)));
        }
        view.mark(0);
        QCOMPARE(picture(view), plain);
    }

    void aReadingThatIsNoNumberLeavesAGap() {
        AnalogCurveView view;
        setPalette(view, Qt::white);
        AnalogTable table = growing();
        for (std::size_t count = 60; count < 70; ++count)
            table[count] = std::numeric_limits<double>::quiet_NaN();
        view.setCurve(analogCurve(table, 1));
        QCOMPARE(at(view, 65, 65), QColor(Qt::white));
        const QColor behind = at(view, 90, 90);
        QVERIFY(behind.blue() > behind.red() + 60);
    }

    void withoutACurveItSaysSo() {
        AnalogCurveView view;
        setPalette(view, Qt::white);
        const QImage empty = picture(view);
        view.setCurve(analogCurve(growing(), 1));
        QVERIFY(picture(view) != empty);
        view.setCurve(std::nullopt);
        QCOMPARE(picture(view), empty);
        int dark = 0;
        for (int x = 10; x < empty.width() - 10; ++x)
            if (empty.pixelColor(x, empty.height() / 2).lightness() < 128) ++dark;
        QVERIFY2(dark > 5, "the words stand in the middle");
    }

    // Numbers as wide as they like, and no room at all.
    void noSizeAndNoNumberHoldsItUp() {
        AnalogCurveView view;
        AnalogTable table = growing();
        table[51] = 1e300;
        for (const QSize size : {QSize(1, 1), QSize(10, 400), QSize(400, 10), QSize(2000, 1500)}) {
            view.setCurve(analogCurve(growing(), 1));
            picture(view, size);
            view.setCurve(analogCurve(table, 1));
            picture(view, size);
        }
        QVERIFY(view.minimumSizeHint().width() <= view.sizeHint().width());
    }
};

KVO_FORM_TEST_MAIN(AnalogCurveViewTest)
#include "analog_curve_view_test.moc"
